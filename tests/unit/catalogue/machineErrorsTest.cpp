// Adapters, installed boards, logical names, special values, versions.
#include "catalogueText.h"

namespace {

CatalogueText withMore(const std::string& sections)
{
    CatalogueText text;
    text.more = ",\n" + sections;
    return text;
}

CatalogueText withInstalled(const std::string& boards)
{
    return withMore(R"("adapters": [{"name": "A", "id": "{1}"}], "installedBoards": [)" + boards + "]");
}

}  // namespace

TEST(CatalogueMachine, VersionsOfAnotherCount_areRefused)
{
    CatalogueText text;
    text.head = R"("format": 1, "runtimeVersions": @@["1", "2", "3", "4"])";
    expectError(text, L"\"runtimeVersions\" must hold five texts, not 4.");
}

TEST(CatalogueMachine, VersionThatIsNoText_isRefused)
{
    CatalogueText text;
    text.head = R"("format": 1, "runtimeVersions": ["1", "2", @@3, "4", "5"])";
    expectError(text, L"A version of the runtime must be a text, not a number.");
}

TEST(CatalogueMachine, AdapterFlagBeyondAByte_isRefused)
{
    expectError(withMore(R"("adapters": [{"name": "A", "id": "{1}", "flag": @@256}])"),
                L"\"flag\" must be a number from 0 to 255.");
}

TEST(CatalogueMachine, AdapterIdTwice_isRefused)
{
    expectError(withMore(R"("adapters": [{"name": "A", "id": "{a}"}, {"name": "B", "id": @@"{A}"}])"),
                L"An entry before this one has the same \"id\".");
}

TEST(CatalogueMachine, AdapterWithoutName_isRefused)
{
    expectError(withMore(R"("adapters": [@@{"id": "{1}"}])"), L"The key \"name\" of an adapter is missing.");
}

TEST(CatalogueMachine, SectionOfAnotherKind_isRefused)
{
    expectError(withMore(R"("adapters": @@{})"), L"\"adapters\" must be a list, not an object.");
    expectError(withMore(R"("installedBoards": @@true)"), L"\"installedBoards\" must be a list, not true or false.");
    expectError(withMore(R"("logicalNames": @@[])"), L"\"logicalNames\" must be an object, not a list.");
    expectError(withMore(R"("specialValues": @@"x")"), L"\"specialValues\" must be an object, not a text.");
}

TEST(CatalogueInstalledBoard, Good_isAccepted)
{
    EXPECT_NE(
        parseGood(withInstalled(R"({"board": "*tvra001", "map": "two", "netType": "mpi", "hardwareInstanceId": "P\\1",
        "adapter": "{1}", "state": 22})")),
        nullptr);
}

TEST(CatalogueInstalledBoard, UnknownBoard_isSuggested)
{
    expectError(
        withInstalled(R"({"board": @@"*TVRA0001", "map": "one", "netType": "MPI", "hardwareInstanceId": "P\\1"})"),
        L"There is no board \"*TVRA0001\"; did you mean \"*TVRA001\"?");
}

TEST(CatalogueInstalledBoard, UnknownMap_isSuggested)
{
    expectError(
        withInstalled(R"({"board": "*TVRA001", "map": @@"twoo", "netType": "MPI", "hardwareInstanceId": "P\\1"})"),
        L"The board \"*TVRA001\" has no map \"twoo\"; did you mean \"two\"?");
}

TEST(CatalogueInstalledBoard, UnknownNetType_isNamed)
{
    expectError(
        withInstalled(R"({"board": "*TVRA001", "map": "one", "netType": @@"DP", "hardwareInstanceId": "P\\1"})"),
        L"There is no protocol \"DP\".");
}

TEST(CatalogueInstalledBoard, NetTypeThatNoDeviceOfTheBoardUses_isRefused)
{
    CatalogueText text =
        withInstalled(R"({"board": "*TVRA001", "map": "one", "netType": @@"MPI", "hardwareInstanceId": "P\\1"})");
    text.devices = "{}";
    expectError(text, L"No default logical device uses the board \"*TVRA001\" with the protocol \"MPI\".");
}

TEST(CatalogueInstalledBoard, UnknownAdapter_isNamed)
{
    expectError(withInstalled(R"({"board": "*TVRA001", "map": "one", "netType": "MPI", "hardwareInstanceId": "P\\1",
        "adapter": @@"{22}"})"),
                L"There is no adapter with the id \"{22}\".");
}

TEST(CatalogueInstalledBoard, StateThatIsNoNumber_isRefused)
{
    expectError(withInstalled(R"({"board": "*TVRA001", "map": "one", "netType": "MPI", "hardwareInstanceId": "P\\1",
        "state": @@"ok"})"),
                L"\"state\" must be a whole number, not a text.");
}

TEST(CatalogueInstalledBoard, InstanceIdTwice_isRefused)
{
    expectError(withInstalled(R"({"board": "*TVRA001", "map": "one", "netType": "MPI", "hardwareInstanceId": "P\\1"},
        {"board": "*TVRA001", "map": "two", "netType": "MPI", "hardwareInstanceId": @@"p\\1"})"),
                L"An entry before this one has the same \"hardwareInstanceId\".");
}

TEST(CatalogueInstalledBoard, MapTwice_isRefused)
{
    expectError(withInstalled(R"({"board": "*TVRA001", "map": "one", "netType": "MPI", "hardwareInstanceId": "P\\1"},
        {"board": "*TVRA001", "map": @@"one", "netType": "MPI", "hardwareInstanceId": "P\\2"})"),
                L"An entry before this one has the same board and map.");
}
