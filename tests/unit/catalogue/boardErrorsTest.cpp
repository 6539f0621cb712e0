#include "catalogueText.h"

namespace {

CatalogueText withBoards(const std::string& boards)
{
    CatalogueText text;
    text.boards = boards;
    return text;
}

const std::string second = R"("*TVRA002": {"values": {"BoardName": "NX 2", "Alias": "NX2", "Asic_Type": "none",
    "DescText": "another", "BusType": "USB"}, "maps": ["one"]})";

}  // namespace

TEST(CatalogueBoard, MisspelledKey_isSuggested)
{
    expectError(withBoards(board(",\n@@\"notSuported\": []")),
                L"\"notSuported\" is no key of a board; did you mean \"notSupported\"?");
}

TEST(CatalogueBoard, NoObject_isRefused)
{
    CatalogueText text = withBoards("{\"*TVRA001\": @@7}");
    text.devices = "{}";
    expectError(text, L"The description of a board must be an object, not a number.");
}

TEST(CatalogueBoard, WithoutItsValues_namesThem)
{
    expectError(withBoards(R"({"*TVRA001": @@{"maps": ["one"]}})"), L"The key \"values\" of a board is missing.");
}

TEST(CatalogueBoard, WithoutAlias_isRefused)
{
    expectError(withBoards(R"({"*TVRA001": {"values":
        @@{"BoardName": "NX 1", "Asic_Type": "none", "DescText": "a board", "BusType": "PCI"}, "maps": ["one"]}})"),
                L"The value \"Alias\" is missing here.");
}

TEST(CatalogueBoard, PlugAndPlayWithoutHardwareId_isRefused)
{
    CatalogueText text = withBoards(board(R"(, "plugAndPlay": true)"));
    text.boards.insert(text.boards.find("{\"BoardName\""), "@@");
    expectError(text, L"The value \"HardwareId\" is missing here.");
}

TEST(CatalogueBoard, OwnDeviceId_isRefused)
{
    CatalogueText text = withBoards(board(""));
    text.boards.insert(text.boards.find("\"BoardName\""), "@@\"deviceid\": \"*TVRA001\", ");
    expectError(text, L"The value \"DeviceID\" follows from the entry and is not written here.");
}

TEST(CatalogueBoard, PlugAndPlayOfAnotherKind_isRefused)
{
    expectError(withBoards(board(R"(, "plugAndPlay": @@"yes")")),
                L"\"plugAndPlay\" must be true or false, not a text.");
}

TEST(CatalogueBoard, NoMaps_isRefused)
{
    CatalogueText text = withBoards(board(""));
    text.boards.replace(text.boards.find("[\"one\", \"two\"]"), 14, "@@[]");
    expectError(text, L"A board needs at least one map, the name of its first instance.");
}

TEST(CatalogueBoard, SameMapTwice_isRefused)
{
    CatalogueText text = withBoards(board(""));
    text.boards.replace(text.boards.find("\"two\""), 5, "@@\"ONE\"");
    expectError(text, L"\"ONE\" stands twice in this list.");
}

TEST(CatalogueBoard, EntryOfListThatIsNoText_isRefused)
{
    expectError(withBoards(board(R"(, "notSupported": ["DP", @@7])")),
                L"Each entry of this list must be a text, not a number.");
}

TEST(CatalogueBoard, UnknownSetOfTexts_isSuggested)
{
    expectError(withBoards(board(R"(, "texts": ["rates", @@"rate"])")),
                L"There is no set of texts \"rate\"; did you mean \"rates\"?");
}

TEST(CatalogueBoard, AliasOfAnotherBoard_isRefused)
{
    std::string boards = board("");
    boards.insert(boards.size() - 1, ", " + second);
    boards.replace(boards.find("\"NX2\""), 5, "@@\"nx1\"");
    expectError(withBoards(boards), L"The \"Alias\" \"nx1\" is that of the board \"*TVRA001\" already.");
}

TEST(CatalogueBoard, NamesDifferingInCaseOnly_areRefused)
{
    std::string boards = board("");
    boards.insert(boards.size() - 1, ", " + second);
    boards.replace(boards.find("\"*TVRA002\""), 10, "@@\"*tvra001\"");
    expectError(
        withBoards(boards),
        L"The name \"*tvra001\" stands here a second time, after line 6 (upper and lower case are the same).");
}

TEST(CatalogueBoard, UnknownKeyOfARegistryKey_isSuggested)
{
    expectError(withBoards(board(R"(, "keys": {"Resources": {@@"value": {"IRQ": 5}}})")),
                L"\"value\" is no key of a registry key; did you mean \"values\"?");
}

TEST(CatalogueBoard, ErrorsOfSeveralEntries_areAllReported)
{
    const catalogue::LoadResult result =
        parseText(withBoards(board(R"(, "plugAndPlay": 1, "notSupported": 2, "texts": 3, "maps2": 4)")).text());
    EXPECT_EQ(result.errors.size(), 4u);
}
