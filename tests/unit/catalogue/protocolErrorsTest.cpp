#include "catalogueText.h"

namespace {

CatalogueText withProtocol(const std::string& more)
{
    CatalogueText text;
    text.protocols = protocol(more);
    return text;
}

}  // namespace

TEST(CatalogueProtocol, MisspelledKey_isSuggested)
{
    expectError(withProtocol(", @@\"busprofile\": {}"),
                L"\"busprofile\" is no key of a protocol; did you mean \"busProfiles\"?");
}

TEST(CatalogueProtocol, OwnCpType_isRefused)
{
    CatalogueText text;
    text.protocols = R"({"MPI": {"values": {"Alias": "Multi", "DescText": "multipoint", @@"CP_TYPE": "MPI"}}})";
    expectError(text, L"The value \"CP_TYPE\" follows from the entry and is not written here.");
}

TEST(CatalogueProtocol, ParamsAsPlainKey_isRefused)
{
    expectError(withProtocol(R"(, "keys": {@@"params": {}})"),
                L"What is below \"Params\" is written as \"params\", \"busProfiles\" and \"baudRates\".");
}

TEST(CatalogueProtocol, UnknownBusProfile_isNamed)
{
    expectError(withProtocol(R"(, "busProfiles": {"dp": {}, @@"1": {}})"), L"\"1\" is no key of the bus profiles.");
}

TEST(CatalogueProtocol, ProfilesAndRatesBesideThem_areRefused)
{
    expectError(withProtocol(R"(, "busProfiles": {}, "baudRates": @@{})"),
                L"A protocol has either \"busProfiles\" or \"baudRates\", not both.");
}

TEST(CatalogueProtocol, RateThatIsNoNumber_isRefused)
{
    for (const char* const rate : {"fast", "0", "-9600", "09600", "9600.0", "9600 "}) {
        SCOPED_TRACE(rate);
        const std::string name = rate;
        expectError(withProtocol(R"(, "baudRates": {@@")" + name + R"(": {}})"),
                    L'"' + std::wstring(name.begin(), name.end()) + L"\" is no baud rate in bit/s.");
    }
}

TEST(CatalogueProtocol, ProfileValueOutsideItsDescription_isRefused)
{
    expectError(
        withProtocol(R"(, "parameters": {"tslot": {"type": "word", "min": 37, "max": 16383}},
        "busProfiles": {"dp": {"baudRates": {"9600": {"tslot": @@36}}}})"),
        L"The value \"36\" of \"tslot\" is not allowed: it must be a number of the type \"word\", min 37, max "
        L"16383.");
}

TEST(CatalogueProtocol, ParamsOutsideTheGeneralDescription_areRefused)
{
    expectError(
        withProtocol(R"(, "params": {"baudrate": @@9601})"),
        L"The value \"9601\" of \"baudrate\" is not allowed: it is not in the parameter's enumeration; did you "
        L"mean \"9600\"?");
}

TEST(CatalogueProtocol, OwnDescription_replacesTheGeneralOne)
{
    EXPECT_NE(parseGood(withProtocol(R"(, "params": {"baudrate": 9601},
        "parameters": {"baudrate": {"type": "dword"}})")),
              nullptr);
}
