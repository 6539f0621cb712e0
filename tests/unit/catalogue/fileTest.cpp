// From the file's bytes to a JSON document.
#include <windows.h>

#include <fstream>
#include <iterator>

#include "catalogueText.h"

using catalogue::LoadResult;
using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

class CatalogueFile : public testing::Test
{
 protected:
    CatalogueFile()
    {
        wchar_t folder[MAX_PATH];
        GetTempPathW(MAX_PATH, folder);
        path_ = std::filesystem::path(folder) / (L"kxova-catalogue-" + std::to_wstring(GetCurrentProcessId()));
    }
    ~CatalogueFile() override
    {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    void write(const std::string& bytes) const { std::ofstream(path_, std::ios::binary) << bytes; }

    std::filesystem::path path_;
};

}  // namespace

TEST_F(CatalogueFile, Good_isLoaded)
{
    write(CatalogueText{}.text());
    EXPECT_TRUE(catalogue::load(path_));
}

TEST_F(CatalogueFile, ExampleOfTheManual_isGood)
{
    std::ifstream stream(KXOVA_CATALOGUE_MANUAL, std::ios::binary);
    const std::string manual{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    const std::string fence = "```json\n";
    const std::size_t begin = manual.find(fence);
    ASSERT_NE(begin, std::string::npos);
    const std::size_t from = begin + fence.size();
    write(manual.substr(from, manual.find("```", from) - from));
    const LoadResult result = catalogue::load(path_);
    EXPECT_THAT(sentences(result), IsEmpty());
    ASSERT_TRUE(result);
    EXPECT_EQ(result.catalogue->boards.size(), 2u);
}

TEST_F(CatalogueFile, Missing_isNamed)
{
    const LoadResult result = catalogue::load(path_);
    ASSERT_THAT(sentences(result), ElementsAre(L"There is no such file."));
    EXPECT_EQ(result.errors[0].text(), path_.wstring() + L": There is no such file.");
}

TEST_F(CatalogueFile, Folder_isRefused)
{
    std::filesystem::create_directory(path_);
    EXPECT_THAT(sentences(catalogue::load(path_)), ElementsAre(L"This is a folder, not a file."));
}

TEST_F(CatalogueFile, LargerThanAnyCatalogue_isRefused)
{
    write(std::string(4 * 1024 * 1024 + 1, ' '));
    EXPECT_THAT(sentences(catalogue::load(path_)),
                ElementsAre(L"The file is larger than 4 MiB, which no catalogue is."));
}

TEST_F(CatalogueFile, LockedByAnother_isNamed)
{
    write(CatalogueText{}.text());
    const HANDLE lock = CreateFileW(path_.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(lock, INVALID_HANDLE_VALUE);
    EXPECT_THAT(sentences(catalogue::load(path_)), ElementsAre(L"The file cannot be opened for reading."));
    CloseHandle(lock);
}

TEST(CatalogueFileText, ByteOrderMark_isAccepted)
{
    EXPECT_TRUE(parseText("\xEF\xBB\xBF" + CatalogueText{}.text()));
}

TEST(CatalogueFileText, ByteOrderMark_doesNotMoveColumns)
{
    CatalogueText text;
    text.head = R"("formt": 1, "format": 1, "runtimeVersions": ["1", "2", "3", "4", "5"])";
    std::string bytes = text.text();
    bytes.erase(1, 1);
    const LoadResult result = parseText("\xEF\xBB\xBF" + bytes);
    ASSERT_EQ(result.errors.size(), 1u);
    EXPECT_EQ(result.errors[0].line, 1u);
    EXPECT_EQ(result.errors[0].column, 2u);
}

TEST(CatalogueFileText, WindowsLineEnds_countOnce)
{
    CatalogueText text;
    text.head =
        "\"format\": 1,\r\n\r\n\"runtimeVersion\": 0,\r\n\"runtimeVersions\": [\"1\", \"2\", \"3\", \"4\", \"5\"]";
    const LoadResult result = parseText(text.text());
    ASSERT_EQ(result.errors.size(), 1u);
    EXPECT_EQ(result.errors[0].line, 4u);
    EXPECT_EQ(result.errors[0].column, 1u);
}

TEST(CatalogueFileText, ColumnsCountCharactersNotBytes)
{
    CatalogueText text;
    text.protocols = R"({"MPI": {"values": {"Alias": ")"
                     "\xC3\xA4\xC3\xB6"
                     R"(", "DescText": null}}})";
    const LoadResult result = parseText(text.text());
    ASSERT_FALSE(result.errors.empty());
    EXPECT_EQ(result.errors[0].where, L"/protocols/MPI/values");
    EXPECT_EQ(result.errors[1].where, L"/protocols/MPI/values/DescText");
    const std::string line = "\"protocols\": {\"MPI\": {\"values\": {\"Alias\": \"..\", \"DescText\": ";
    EXPECT_EQ(result.errors[1].column, line.size() + 1);
}

TEST(CatalogueFileText, Empty_isNoJson)
{
    const LoadResult result = parseText("");
    ASSERT_EQ(result.errors.size(), 1u);
    EXPECT_EQ(result.errors[0].line, 1u);
    EXPECT_THAT(result.errors[0].message, StartsWith(L"This is no JSON: "));
}

TEST(CatalogueFileText, MissingComma_isFoundInItsLine)
{
    const LoadResult result = parseText("{\n\"format\": 1\n\"boards\": {}\n}");
    ASSERT_THAT(sentences(result),
                ElementsAre(L"This is no JSON: syntax error while parsing object - unexpected string literal; "
                            L"expected '}'."));
    EXPECT_EQ(result.errors[0].line, 3u);
}

TEST(CatalogueFileText, UnclosedText_isFoundInItsLine)
{
    const LoadResult result = parseText("{\n\"format: 1,\n\"boards\": {}\n}");
    ASSERT_EQ(result.errors.size(), 1u);
    EXPECT_EQ(result.errors[0].line, 2u);
    EXPECT_THAT(result.errors[0].message, EndsWith(L"expected string literal."));
}

TEST(CatalogueFileText, TextAfterTheDocument_isRefused)
{
    const LoadResult result = parseText(CatalogueText{}.text() + "{");
    ASSERT_EQ(result.errors.size(), 1u);
    EXPECT_THAT(result.errors[0].message, StartsWith(L"This is no JSON: "));
}

TEST(CatalogueFileText, NumberBeyondAllBounds_isRefused)
{
    EXPECT_THAT(sentences(parseText("{\"format\": 1e9999}")),
                ElementsAre(L"This is no JSON: number overflow parsing '1e9999'."));
}

TEST(CatalogueFileText, BytesThatAreNoUtf8_areFoundLineByLine)
{
    const LoadResult result = parseText("{\n\"a\": \"\xFC\xFC\",\n\"b\": 1,\n\"c\": \"x\xE4\"\n}");
    ASSERT_EQ(result.errors.size(), 2u);
    EXPECT_EQ(result.errors[0].line, 2u);
    EXPECT_EQ(result.errors[0].column, 7u);
    EXPECT_EQ(result.errors[1].line, 4u);
    EXPECT_EQ(result.errors[1].message, L"This line holds a byte that is no UTF-8; the file must be saved as UTF-8.");
}

TEST(CatalogueFileText, MalformedUtf8_isRefusedInEachForm)
{
    for (const char* const bytes : {"\xC0\x80", "\xE0\x80\x80", "\xED\xA0\x80", "\xF0\x80\x80\x80",
                                    "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\x80", "\xC3", "\xE2\x82", "\xFE"}) {
        const LoadResult result = parseText(std::string("{\"comment\": \"") + bytes + "\"}");
        ASSERT_EQ(result.errors.size(), 1u) << bytes;
        EXPECT_EQ(result.errors[0].message,
                  L"This line holds a byte that is no UTF-8; the file must be saved as UTF-8.");
    }
}

TEST(CatalogueFileText, Utf16_isRefused)
{
    const LoadResult result = parseText(std::string("\xFF\xFE{\0}\0", 6));
    ASSERT_EQ(result.errors.size(), 1u);
    EXPECT_EQ(result.errors[0].line, 1u);
}

TEST(CatalogueFileText, DeepNesting_isRefused)
{
    const LoadResult result = parseText("{\"comment\":\n" + std::string(100000, '['));
    ASSERT_THAT(sentences(result), ElementsAre(L"Objects and lists are nested deeper than 32 levels."));
    EXPECT_EQ(result.errors[0].line, 2u);
}

TEST(CatalogueFileText, NoObject_isRefused)
{
    expectError("@@[]", L"The description of a catalogue must be an object, not a list.");
}

TEST(CatalogueFileText, UnknownKey_isSuggested)
{
    CatalogueText text;
    text.more = ",\n@@\"adapter\": []";
    expectError(text, L"\"adapter\" is no key of a catalogue; did you mean \"adapters\"?");
}

TEST(CatalogueFileText, UnknownKeyLikeNothing_isNotSuggested)
{
    CatalogueText text;
    text.more = ", @@\"zzz\": []";
    expectError(text, L"\"zzz\" is no key of a catalogue.");
}

TEST(CatalogueFileText, TextWithQuotesAndBackslashes_isFoundAtItsBeginning)
{
    CatalogueText text;
    text.devices = R"({"A": {"protocol": "MPI", "board": @@"x\"y\\"}})";
    expectError(text, L"There is no board \"x\"y\\\".");
    text.devices = R"({"A": {"protocol": "MPI", "board": "*TVRA001", @@"x\\\"\"y": 1}})";
    expectError(text, L"\"x\\\"\"y\" is no key of a default logical device.");
}

TEST(CatalogueFileText, Comment_isAllowedWhereKeysAreFixed)
{
    CatalogueText text;
    text.more = R"(, "comment": "for people")";
    text.boards = board(R"(, "comment": "for people")");
    EXPECT_TRUE(parseText(text.text()));
}

TEST(CatalogueFileText, MissingSection_isNamed)
{
    expectError(R"(@@{"format": 1, "runtimeVersions": ["1", "2", "3", "4", "5"], "protocols": {}, "boards": {}})",
                L"The key \"defaultLogicalDevices\" of a catalogue is missing.");
}

TEST(CatalogueFileText, UnknownFormat_isRefused)
{
    CatalogueText text;
    text.head = R"("format": @@2, "runtimeVersions": ["1", "2", "3", "4", "5"])";
    expectError(text, L"\"format\" must be a number from 0 to 1.");
}

TEST(CatalogueFileText, SameNameTwice_isFoundWhateverTheCase)
{
    CatalogueText text;
    text.more = ",\n\"specialValues\": {\"Name\": 1,\n@@\"NAME\": 2}";
    const std::string marked = text.text();
    const auto first =
        std::count(marked.begin(), marked.begin() + static_cast<std::ptrdiff_t>(marked.find("@@")), '\n');
    expectError(text, L"The name \"NAME\" stands here a second time, after line " + std::to_wstring(first) +
                          L" (upper and lower case are the same).");
}

TEST(CatalogueFileText, ManyErrors_areAllFoundUpToABound)
{
    CatalogueText text;
    text.more = ", \"specialValues\": {";
    for (int i = 0; i < 30; ++i)
        text.more += (i ? ",\n\"v" : "\n\"v") + std::to_string(i) + "\": []";
    text.more += "}";
    const LoadResult result = parseText(text.text());
    ASSERT_EQ(result.errors.size(), catalogue::maximumErrors);
    EXPECT_EQ(result.omitted, 10u);
    for (std::size_t i = 0; i < result.errors.size(); ++i)
        EXPECT_EQ(result.errors[i].where, L"/specialValues/v" + std::to_wstring(i));
}

TEST(CatalogueFileText, ErrorText_hasFileLineAndColumn)
{
    const LoadResult result = parseText("{}");
    ASSERT_FALSE(result.errors.empty());
    EXPECT_THAT(result.errors[0].text(), StartsWith(L"test.json:1:1: The key "));
    EXPECT_THAT(result.errors[0].where, IsEmpty());
}
