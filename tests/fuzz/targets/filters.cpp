#include "Input.h"
#include "targets.h"
#include "trcFilter.h"

void fuzzFilters(const std::uint8_t* data, std::size_t size)
{
    Input input(data, size);
    const std::string patterns = input.line().substr(0, 400);
    const std::string subject = input.line().substr(0, 400);

    const bool whole = trc::patternMatches(patterns, subject, trc::Match::whole);
    const bool beginning = trc::patternMatches(patterns, subject, trc::Match::beginning);
    require(beginning || !whole, "what matches the whole matches a beginning");

    const trc::FilterList list(patterns);
    require(list.size() <= trc::FilterList::maxEntries, "a list has a bound");
    list.passes(subject, trc::Match::whole);
    const trc::FilterList copy = list;
    require(copy.passes(subject, trc::Match::beginning) == list.passes(subject, trc::Match::beginning),
            "a copied list lets the same pass");
}
