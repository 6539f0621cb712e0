#include <gtest/gtest.h>

#include <string>

#include "trcFilter.h"

namespace {

using trc::FilterList;
using trc::Match;
using trc::patternMatches;

struct Case
{
    const char* pattern;
    const char* subject;
    bool whole;      // the pattern covers the whole subject
    bool beginning;  // the pattern matches a beginning of it
};

constexpr Case cases[] = {
    // literal text
    Case{"abc", "abc", true, true}, Case{"abc", "abcdef", false, true}, Case{"abc", "ab", false, false},
    Case{"abc", "xabc", false, false}, Case{"abc", "abd", false, false}, Case{"", "", true, true},
    Case{"", "a", false, true}, Case{"a", "", false, false},
    // any run
    Case{"*", "", true, true}, Case{"*", "abc", true, true}, Case{"a*", "a", true, true},
    Case{"a*", "abc", true, true}, Case{"a*", "ba", false, false}, Case{"*c", "abc", true, true},
    Case{"*c", "abcd", false, true}, Case{"a*c", "ac", true, true}, Case{"a*c", "abbbc", true, true},
    Case{"a*c", "abcb", false, true}, Case{"*b*", "abc", true, true}, Case{"*x*", "abc", false, false},
    Case{"**", "abc", true, true}, Case{"a**c", "abc", true, true},
    // a run has to give back what it took
    Case{"*ab", "aab", true, true}, Case{"*abc", "ababc", true, true}, Case{"a*b*c", "aXbYbZc", true, true},
    Case{"*ab*ab", "abab", true, true}, Case{"*ab*ab", "aba", false, false}, Case{"*aaab", "aaaaaaaa", false, false},
    // any one
    Case{"?", "a", true, true}, Case{"?", "", false, false}, Case{"?", "ab", false, true},
    Case{"a?c", "abc", true, true}, Case{"a?c", "ac", false, false}, Case{"??", "ab", true, true},
    Case{"*?", "", false, false}, Case{"*?", "abc", true, true}, Case{"?*", "a", true, true},
    // literal by escape
    Case{"\\*", "*", true, true}, Case{"\\*", "a", false, false}, Case{"\\?", "?", true, true},
    Case{"\\?", "a", false, false}, Case{"\\\\", "\\", true, true}, Case{"\\a", "a", true, true},
    Case{"a\\*c", "a*c", true, true}, Case{"a\\*c", "abc", false, false}, Case{"*\\*", "ab*", true, true},
    Case{"*\\*", "abc", false, false}, Case{"\\", "\\", true, true}, Case{"a\\", "a\\", true, true},
    Case{"a\\", "a", false, false},
    // cases differ down here
    Case{"ABC", "abc", false, false}};

TEST(PatternMatches, WholeSubject_asTheTableSays)
{
    for (const Case& c : cases) {
        EXPECT_EQ(patternMatches(c.pattern, c.subject, Match::whole), c.whole)
            << "pattern \"" << c.pattern << "\" subject \"" << c.subject << '"';
    }
}

TEST(PatternMatches, BeginningOfSubject_asTheTableSays)
{
    for (const Case& c : cases) {
        EXPECT_EQ(patternMatches(c.pattern, c.subject, Match::beginning), c.beginning)
            << "pattern \"" << c.pattern << "\" subject \"" << c.subject << '"';
    }
}

TEST(FilterList, Empty_everythingPasses)
{
    EXPECT_TRUE(FilterList().passes("anything", Match::whole));
    EXPECT_TRUE(FilterList("").passes("anything", Match::whole));
    EXPECT_TRUE(FilterList("").passes("", Match::whole));
}

TEST(FilterList, FirstEntryEmpty_everythingPasses)
{
    EXPECT_TRUE(FilterList(" abc").passes("other", Match::whole));
}

TEST(FilterList, OneEntry_onlyThatPasses)
{
    const FilterList list("abc");
    EXPECT_TRUE(list.passes("abc", Match::whole));
    EXPECT_FALSE(list.passes("abcdef", Match::whole));
    EXPECT_TRUE(list.passes("abcdef", Match::beginning));
    EXPECT_FALSE(list.passes("xabc", Match::beginning));
}

TEST(FilterList, SeveralEntries_anyLetsPass)
{
    const FilterList list("abc x* ?z");
    EXPECT_EQ(list.size(), 3u);
    EXPECT_TRUE(list.passes("abc", Match::whole));
    EXPECT_TRUE(list.passes("xyz", Match::whole));
    EXPECT_TRUE(list.passes("az", Match::whole));
    EXPECT_FALSE(list.passes("abcd", Match::whole));
}

TEST(FilterList, UpperAndLowerCase_doNotMatter)
{
    EXPECT_TRUE(FilterList("LogDev*").passes("LOGDEVICEDEL", Match::whole));
    EXPECT_TRUE(FilterList("LOGDEV*").passes("logdevicedel", Match::whole));
}

TEST(FilterList, TwoBlanksInARow_anEmptyEntry)
{
    const FilterList list("a  b");
    EXPECT_EQ(list.size(), 3u);
    EXPECT_TRUE(list.passes("", Match::whole));
    EXPECT_TRUE(list.passes("b", Match::whole));
    EXPECT_FALSE(list.passes("c", Match::whole));
}

TEST(FilterList, MoreThan100Entries_theRestIsIgnored)
{
    std::string text;
    for (int i = 0; i < 100; ++i)
        text += "a ";
    text += "b c";
    const FilterList list(text);
    EXPECT_EQ(list.size(), 100u);
    EXPECT_TRUE(list.passes("a", Match::whole));
    EXPECT_FALSE(list.passes("b", Match::whole));
}

TEST(FilterList, TextOf260Characters_isCutTo255)
{
    const std::string text(260, 'a');
    const FilterList list(text);
    EXPECT_TRUE(list.passes(text.substr(0, 255), Match::whole));
    EXPECT_FALSE(list.passes(text.substr(0, 256), Match::whole));
}

TEST(FilterList, SubjectLongerThan256_isComparedWithItsBeginningOnly)
{
    const std::string subject = std::string(256, 'a') + "b";
    EXPECT_FALSE(FilterList("*b").passes(subject, Match::whole));
    EXPECT_TRUE(FilterList("*a").passes(subject, Match::whole));
}

TEST(FilterList, Copy_isIndependentOfItsOrigin)
{
    FilterList origin("abc");
    const FilterList copy = origin;
    origin = FilterList("xyz");
    EXPECT_TRUE(copy.passes("abc", Match::whole));
    EXPECT_FALSE(copy.passes("xyz", Match::whole));
}

}  // namespace
