#include "catalogue/number.h"
#include "Input.h"
#include "keys/KeyPath.h"
#include "targets.h"

namespace {

constexpr std::wstring_view product = L"SOFTWARE\\WOW6432Node\\TAVRONE\\";

void look(std::wstring_view text)
{
    const std::optional<srv::KeyPath> path = srv::allowedPath(text);
    if (!path) return;
    for (const std::wstring& part : path->parts) {
        require(!part.empty() && part.size() <= 255, "a part is a key's name");
        require(part.find(L'\\') == std::wstring::npos && part.find(L'\0') == std::wstring::npos,
                "a part is one key's name");
        require(part != L"." && part != L"..", "nobody gets anywhere else");
    }
    if (path->place != srv::KeyPath::Place::Product) {
        require(path->rights == srv::KeyPath::Rights::Read, "only the product's keys are written");
        return;
    }
    const std::optional<srv::KeyPath> again = srv::allowedPath(std::wstring(product) + path->joined());
    require(again && again->parts == path->parts && again->rights == path->rights,
            "a path means the same when it is put together anew");
}

}  // namespace

void fuzzServerTexts(const std::uint8_t* data, std::size_t size)
{
    Input input(data, size);
    const int base = 2 + input.byte() % 34;
    std::wstring text;
    while (!input.empty() && text.size() < 1000)
        text += static_cast<wchar_t>(input.byte());
    look(text);
    look(std::wstring(product) + text);
    const std::optional<long long> number = catalogue::parseNumber(text, base);
    require(!number || (*number <= 1LL << 40 && *number >= -(1LL << 40)), "a number has at most 40 bits");
}
