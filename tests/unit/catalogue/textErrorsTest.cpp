// Names, values and texts by language.
#include "catalogueText.h"

namespace {

CatalogueText withValue(const std::string& value)
{
    CatalogueText text;
    text.more = ", \"specialValues\": {\"Name\":\n" + value + "}";
    return text;
}

CatalogueText withText(const std::string& languages)
{
    CatalogueText text;
    text.texts = "{\"rates\": {\"BaudrateResource\": {\"9600\":\n" + languages + "}}}";
    return text;
}

}  // namespace

TEST(CatalogueValue, LongestPossible_isAccepted)
{
    EXPECT_NE(parseGood(withValue('"' + std::string(259, 'x') + '"')), nullptr);
}

TEST(CatalogueValue, OneCharacterLonger_isRefused)
{
    expectError(withValue("@@\"" + std::string(260, 'x') + '"'),
                L"The value is 260 characters long, but at most 259 are possible.");
}

TEST(CatalogueValue, UmlautsCountAsOneCharacter)
{
    std::string umlauts;
    for (int i = 0; i < 259; ++i)
        umlauts += "\xC3\xBC";
    EXPECT_NE(parseGood(withValue('"' + umlauts + '"')), nullptr);
}

TEST(CatalogueValue, CharacterBeyondTheCodePage_isRefused)
{
    expectError(
        withValue("@@\"\xE6\xA8\x99\""),
        L"The text \"\u6A19\" holds a character that clients cannot get, for it is not in the Windows code page "
        L"of the language \"EN\".");
}

TEST(CatalogueValue, LineBreak_isRefused)
{
    expectError(withValue(R"(@@"a\nb")"), L"A value holds no control characters such as line breaks.");
}

TEST(CatalogueValue, ZeroCharacter_isRefused)
{
    expectError(withValue(R"(@@"a\u0000b")"), L"A value holds no control characters such as line breaks.");
}

TEST(CatalogueValue, List_isRefused)
{
    expectError(withValue("@@[1]"), L"The value \"Name\" must be a text, a whole number, true or false, not a list.");
}

TEST(CatalogueValue, Fraction_isRefused)
{
    expectError(withValue("@@1.5"),
                L"The value \"Name\" must be a text, a whole number, true or false, not a fraction.");
}

TEST(CatalogueValue, NumbersAndTruth_becomeText)
{
    CatalogueText text;
    text.more = R"(, "specialValues": {"n": -15, "u": 18446744073709551615, "t": true, "f": false})";
    const auto catalogue = parseGood(text);
    ASSERT_NE(catalogue, nullptr);
    const catalogue::Values expected{
        {L"n", L"-15"}, {L"u", L"18446744073709551615"}, {L"t", L"true"}, {L"f", L"false"}};
    EXPECT_EQ(catalogue->specialValues, expected);
}

TEST(CatalogueName, Backslash_isRefused)
{
    CatalogueText text;
    text.more = R"(, "specialValues": {@@"a\\b": 1})";
    expectError(text, L"The name \"a\\b\" must not hold a backslash or a control character.");
}

TEST(CatalogueName, Empty_isRefused)
{
    CatalogueText text;
    text.more = R"(, "specialValues": {@@"": 1})";
    expectError(text, L"A name must not be empty.");
}

TEST(CatalogueName, LongerThanAKeyCanBe_isRefused)
{
    CatalogueText text;
    text.more = ", \"specialValues\": {@@\"" + std::string(256, 'n') + "\": 1}";
    expectError(text, L"The name is 256 characters long, but at most 255 are possible.");
}

TEST(CatalogueName, CharacterBeyondTheCodePage_isRefused)
{
    CatalogueText text;
    text.more = ", \"specialValues\": {@@\"\xE6\xA8\x99\": 1}";
    expectError(text,
                L"The name \"\u6A19\" holds a character that clients cannot send, for it is not in the Windows code "
                L"page 1252.");
}

TEST(CatalogueTexts, AllLanguages_areAccepted)
{
    const auto catalogue = parseGood(
        withText("{\"DE\": \"\xC3\xBC\", \"EN\": \"u\", \"FR\": \"\xC3\xA9\", \"ES\": \"\xC3\xB1\", \"IT\": \"i\", "
                 "\"JA\": \"\xE6\xA8\x99\xE6\xBA\x96\", \"ZH\": \"\xE6\xA0\x87\xE5\x87\x86\"}"));
    EXPECT_NE(catalogue, nullptr);
}

TEST(CatalogueTexts, MissingGerman_isNamed)
{
    expectError(withText(R"(@@{"EN": "9.6"})"), L"The text in the language \"DE\" is missing.");
}

TEST(CatalogueTexts, MissingEnglish_isNamed)
{
    expectError(withText(R"(@@{"DE": "9,6", "FR": "9,6"})"), L"The text in the language \"EN\" is missing.");
}

TEST(CatalogueTexts, UnknownLanguage_isNamed)
{
    expectError(withText(R"({"DE": "9,6", "EN": "9.6", @@"PL": "9,6"})"),
                L"\"PL\" is no language (DE, EN, FR, ES, IT, JA, ZH).");
}

TEST(CatalogueTexts, LowerCaseLanguage_isSuggested)
{
    expectError(withText(R"({"DE": "9,6", "EN": "9.6", @@"fr": "9,6"})"),
                L"\"fr\" is no language (DE, EN, FR, ES, IT, JA, ZH); did you mean \"FR\"?");
}

TEST(CatalogueTexts, NoObject_isRefused)
{
    expectError(withText(R"(@@"9,6")"),
                L"A text by language must be an object such as {\"DE\": \"...\", \"EN\": \"...\"}, not a text.");
}

TEST(CatalogueTexts, NoText_isRefused)
{
    expectError(withText(R"({"DE": "9,6", "EN": @@96})"), L"The text of a language must be a text, not a number.");
}

TEST(CatalogueTexts, JapaneseCountsTwoBytesACharacter)
{
    std::string japanese;
    for (int i = 0; i < 130; ++i)
        japanese += "\xE6\xA8\x99";
    expectError(withText("{\"DE\": \"x\", \"EN\": \"x\", \"JA\": @@\"" + japanese + "\"}"),
                L"The value is 260 characters long, but at most 259 are possible.");
}

TEST(CatalogueTexts, CharacterOfAnotherLanguage_isRefused)
{
    expectError(
        withText("{\"DE\": @@\"\xD0\x96\", \"EN\": \"x\"}"),
        L"The text \"\u0416\" holds a character that clients cannot get, for it is not in the Windows code page of "
        L"the language \"DE\".");
}
