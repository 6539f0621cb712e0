#include "catalogueText.h"

namespace {

CatalogueText withDevices(const std::string& devices)
{
    CatalogueText text;
    text.devices = devices;
    return text;
}

}  // namespace

TEST(CatalogueDevice, UnknownBoard_isSuggested)
{
    expectError(withDevices("{\"NX1.MPI\": {\"protocol\": \"MPI\",\n\"board\": @@\"*TVRA01\"}}"),
                L"There is no board \"*TVRA01\"; did you mean \"*TVRA001\"?");
}

TEST(CatalogueDevice, UnknownProtocol_isSuggested)
{
    expectError(withDevices(R"({"NX1.MPI": {"board": "*TVRA001", "protocol": @@"MPII"}})"),
                L"There is no protocol \"MPII\"; did you mean \"MPI\"?");
}

TEST(CatalogueDevice, WithoutBoard_isRefused)
{
    expectError(withDevices(R"({"NX1.MPI": @@{"protocol": "MPI"}})"),
                L"The key \"board\" of a default logical device is missing.");
}

TEST(CatalogueDevice, MisspelledKey_isSuggested)
{
    expectError(withDevices(R"({"NX1.MPI": {"board": "*TVRA001", "protocol": "MPI", @@"vlaues": {}}})"),
                L"\"vlaues\" is no key of a default logical device; did you mean \"values\"?");
}

TEST(CatalogueDevice, OwnDeviceIdOrType_isRefused)
{
    expectError(
        withDevices(R"({"NX1.MPI": {"board": "*TVRA001", "protocol": "MPI", "values": {@@"DEVICEID": "x"}}})"),
        L"The value \"DeviceID\" follows from the entry and is not written here.");
    expectError(withDevices(R"({"NX1.MPI": {"board": "*TVRA001", "protocol": "MPI", "values": {@@"CP_TYPE": "x"}}})"),
                L"The value \"CP_TYPE\" follows from the entry and is not written here.");
}

TEST(CatalogueDevice, ValueOutsideTheMostSpecialDescription_isRefused)
{
    CatalogueText text =
        withDevices(R"({"NX1.MPI": {"board": "*TVRA001", "protocol": "MPI", "values": {"baudrate": @@19200}}})");
    text.boards = board(R"(, "parameters": {"baudrate": {"type": "enum", "items": [9600]}})");
    expectError(text,
                L"The value \"19200\" of \"baudrate\" is not allowed: it is not in the parameter's enumeration.");
}

TEST(CatalogueDevice, BooleanOutsideItsDescription_isRefused)
{
    expectError(withDevices(R"({"NX1.MPI": {"board": "*TVRA001", "protocol": "MPI", "values": {"DP_MODE": @@"YES"},
        "parameters": {"DP_MODE": {"type": "bool"}}}})"),
                L"The value \"YES\" of \"DP_MODE\" is not allowed: it must be true or false.");
}

TEST(CatalogueDevice, BusProfileThatTheProtocolLacks_isRefused)
{
    CatalogueText text =
        withDevices(R"({"NX1.MPI": {"board": "*TVRA001", "protocol": "MPI", "values": {"busparam": @@3}}})");
    text.protocols = protocol(R"(, "busProfiles": {"dp": {}})");
    expectError(text, L"The protocol \"MPI\" has no bus profile \"3\".");
}

TEST(CatalogueDevice, RateThatTheBusProfileLacks_isRefused)
{
    CatalogueText text = withDevices(
        R"({"NX1.MPI": {"board": "*TVRA001", "protocol": "MPI", "values": {"busparam": 0, "baudrate": @@9600}}})");
    text.protocols = protocol(R"(, "busProfiles": {"dp": {"baudRates": {"19200": {}}}})");
    expectError(text, L"The protocol \"MPI\" has no baud rate \"9600\" in this bus profile.");
}

TEST(CatalogueDevice, RateThatTheProtocolLacks_isRefused)
{
    CatalogueText text =
        withDevices(R"({"NX1.MPI": {"board": "*TVRA001", "protocol": "MPI", "values": {"baudrate": @@9600}}})");
    text.protocols = protocol(R"(, "baudRates": {"19200": {}})");
    expectError(text, L"The protocol \"MPI\" has no baud rate \"9600\".");
}

TEST(CatalogueDevice, ProtocolThatTheBoardDoesNotSupport_isRefused)
{
    CatalogueText text = withDevices(R"({"NX1.MPI": {"board": "*TVRA001", "protocol": @@"MPI"}})");
    text.boards = board(R"(, "notSupported": ["mpi"])");
    expectError(text, L"The board \"*TVRA001\" does not support the protocol \"MPI\", says its \"notSupported\".");
}

TEST(CatalogueDevice, NdiValueByLanguage_isRefused)
{
    expectError(
        withDevices(
            R"({"NX1.MPI": {"board": "*TVRA001", "protocol": "MPI", "ndi": {"hidden": @@{"DE": "a", "EN": "b"}}}})"),
        L"The value \"hidden\" must be a text, a whole number, true or false, not an object.");
}
