#include "catalogueText.h"

#include <algorithm>

using testing::ElementsAre;

std::string CatalogueText::text() const
{
    return "{\n" + head + ",\n\"texts\": " + texts + ",\n\"parameters\": " + parameters +
           ",\n\"protocols\": " + protocols + ",\n\"boards\": " + boards +
           ",\n\"defaultLogicalDevices\": " + devices + more + "\n}\n";
}

std::string board(const std::string& more)
{
    return R"({"*TVRA001": {"values": {"BoardName": "NX 1", "Alias": "NX1", "Asic_Type": "none", "DescText": "a board",
        "BusType": "PCI"}, "maps": ["one", "two"])" +
           more + "}}";
}

std::string protocol(const std::string& more)
{
    return R"({"MPI": {"values": {"Alias": "Multi", "DescText": "multipoint"})" + more + "}}";
}

catalogue::LoadResult parseText(const std::string& text)
{
    return catalogue::parse(text, textName);
}

std::vector<std::wstring> sentences(const catalogue::LoadResult& result)
{
    std::vector<std::wstring> found;
    for (const catalogue::LoadError& error : result.errors)
        found.push_back(error.message);
    return found;
}

std::shared_ptr<const catalogue::Catalogue> parseGood(const CatalogueText& text)
{
    catalogue::LoadResult result = parseText(text.text());
    EXPECT_THAT(sentences(result), ElementsAre());
    return result.catalogue;
}

void expectError(std::string markedText, std::wstring_view sentence)
{
    const std::size_t mark = markedText.find("@@");
    ASSERT_NE(mark, std::string::npos);
    markedText.erase(mark, 2);
    const std::string before = markedText.substr(0, mark);
    const auto line = static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n')) + 1;
    const std::size_t column = mark - (before.rfind('\n') + 1) + 1;

    const catalogue::LoadResult result = parseText(markedText);
    EXPECT_EQ(result.catalogue, nullptr);
    ASSERT_THAT(sentences(result), ElementsAre(std::wstring(sentence)));
    EXPECT_EQ(result.errors[0].line, line);
    EXPECT_EQ(result.errors[0].column, column);
}

void expectError(const CatalogueText& markedText, std::wstring_view sentence)
{
    expectError(markedText.text(), sentence);
}
