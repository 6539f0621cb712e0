#include "catalogueText.h"

namespace {

CatalogueText withDescription(const std::string& description)
{
    CatalogueText text;
    text.parameters = "{\"p\":\n" + description + "}";
    return text;
}

}  // namespace

TEST(CatalogueParameter, WithoutType_isRefused)
{
    expectError(withDescription(R"(@@{"default": 1})"), L"The key \"type\" of a parameter description is missing.");
}

TEST(CatalogueParameter, UnknownType_isSuggested)
{
    expectError(
        withDescription(R"({"type": @@"wrod"})"),
        L"\"wrod\" is no type of a parameter (int, long, word, dword, bool, string, enum); did you mean \"word\"?");
}

TEST(CatalogueParameter, UnknownAttribute_isSuggested)
{
    expectError(withDescription(R"({"type": "word", @@"mni": 1})"),
                L"\"mni\" is no key of a parameter description; did you mean \"min\"?");
}

TEST(CatalogueParameter, LimitOfATypeWithoutLimits_isRefused)
{
    expectError(withDescription(R"({"type": "bool", "min": @@0})"),
                L"A parameter of the type \"bool\" has no \"min\".");
    expectError(withDescription(R"({"type": "string", "step": @@2})"),
                L"A parameter of the type \"string\" has no \"step\".");
    expectError(withDescription(R"({"type": "enum", "items": ["a"], "base": @@16})"),
                L"A parameter of the type \"enum\" has no \"base\".");
}

TEST(CatalogueParameter, LimitBeyondItsType_isRefused)
{
    expectError(withDescription(R"({"type": "word", "max": @@65536})"),
                L"\"65536\" is no number of the type \"word\" in base 10.");
    expectError(withDescription(R"({"type": "word", "min": @@-1})"),
                L"\"-1\" is no number of the type \"word\" in base 10.");
    expectError(withDescription(R"({"type": "dword", "max": @@4294967296})"),
                L"\"4294967296\" is no number of the type \"dword\" in base 10.");
    expectError(withDescription(R"({"type": "long", "max": @@2147483648})"),
                L"\"2147483648\" is no number of the type \"long\" in base 10.");
    expectError(withDescription(R"({"type": "int", "min": @@-2147483649})"),
                L"\"-2147483649\" is no number of the type \"int\" in base 10.");
}

TEST(CatalogueParameter, LimitThatIsNoNumber_isRefused)
{
    expectError(withDescription(R"({"type": "word", "min": @@"few"})"),
                L"\"few\" is no number of the type \"word\" in base 10.");
}

TEST(CatalogueParameter, DigitBeyondTheBase_isRefused)
{
    expectError(withDescription(R"({"type": "word", "base": 8, "min": @@"8"})"),
                L"\"8\" is no number of the type \"word\" in base 8.");
}

TEST(CatalogueParameter, PlainNumberInAnotherBase_isRefused)
{
    expectError(withDescription(R"({"type": "word", "base": 16, "min": @@10})"),
                L"With the base 16, a number is written as a text, since a plain number would be decimal.");
}

TEST(CatalogueParameter, BaseThatClientsTakeForTen_isRefused)
{
    expectError(withDescription(R"({"type": "word", "base": @@1})"),
                L"The base of a number must be a number from 2 to 35.");
    expectError(withDescription(R"({"type": "word", "base": @@36})"),
                L"The base of a number must be a number from 0 to 35.");
}

TEST(CatalogueParameter, MaximumBelowMinimum_isRefused)
{
    expectError(withDescription(R"({"type": "word", "min": 5, "max": @@4})"),
                L"The maximum is less than the minimum.");
}

TEST(CatalogueParameter, StepOfZero_isRefused)
{
    expectError(withDescription(R"({"type": "word", "step": @@0})"), L"The step must be at least 1.");
}

TEST(CatalogueParameter, DefaultOffTheStepGrid_isRefused)
{
    expectError(withDescription(R"({"type": "word", "min": 1, "max": 9, "step": 4, "default": @@6})"),
                L"The value \"6\" of \"default\" is not allowed: it must be a number of the type \"word\", min 1, "
                L"max 9, step "
                L"4.");
}

TEST(CatalogueParameter, EnumerationWithoutItems_isRefused)
{
    expectError(withDescription(R"(@@{"type": "enum"})"),
                L"The key \"items\" of a parameter description is missing.");
    expectError(withDescription(R"({"type": "enum", "items": @@[]})"), L"An enumeration needs at least one value.");
    expectError(withDescription(R"({"type": "enum", "items": @@"a"})"), L"\"items\" must be a list, not a text.");
}

TEST(CatalogueParameter, ItemsOfAnotherType_areRefused)
{
    expectError(withDescription(R"({"type": "word", "items": @@[1]})"),
                L"A parameter of the type \"word\" has no \"items\".");
}

TEST(CatalogueParameter, DefaultOutsideTheEnumeration_isRefused)
{
    expectError(
        withDescription(R"({"type": "enum", "default": @@"COM9", "items": ["COM1", "COM2"]})"),
        L"The value \"COM9\" of \"default\" is not allowed: it is not in the parameter's enumeration; did you mean "
        L"\"COM1\"?");
}

TEST(CatalogueParameter, ItemTwice_isRefused)
{
    expectError(withDescription(R"({"type": "enum", "items": ["a", @@"A"]})"),
                L"\"A\" stands twice in this enumeration.");
}

TEST(CatalogueParameter, ItemWithTheSeparator_isRefused)
{
    expectError(withDescription(R"({"type": "enum", "items": [@@"a/b"]})"),
                L"A value of an enumeration must not hold \"/\", which separates it from its text.");
}

TEST(CatalogueParameter, ItemWithoutText_isRefused)
{
    expectError(withDescription(R"({"type": "enum", "items": [@@{"value": 1}]})"),
                L"The key \"text\" of a value of an enumeration is missing.");
}

TEST(CatalogueParameter, EmptyItem_isRefused)
{
    expectError(withDescription(R"({"type": "enum", "items": ["a", @@""]})"),
                L"A value of an enumeration must not be empty.");
}
