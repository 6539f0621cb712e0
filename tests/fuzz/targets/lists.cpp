#include <cstring>

#include "frame/textList.h"
#include "Input.h"
#include "kxLegacy/kxLegacyRoute.h"
#include "kxLegacy/kxLegacyWow64.h"
#include "kxstring32x.h"
#include "targets.h"

namespace {

void block(const std::string& bytes)
{
    const auto memory = exactly<char>(bytes.size());
    std::copy(bytes.begin(), bytes.end(), memory.get());
    std::size_t length = 0;
    for (const std::string& text : splitList(memory.get(), bytes.size())) {
        length += text.size() + 1;
        for (unsigned long capacity : {text.size(), text.size() + 1}) {
            const auto buffer = exactly<char>(capacity);
            unsigned long told = capacity;
            const bool copied = copyOut(text, buffer.get(), &told) == 0;
            require(copied == (capacity > text.size()), "a text is copied where its terminator fits");
        }
    }
    require(length == bytes.size() || length == bytes.size() + 1, "a block's texts and ends are the block");
    require(splitNames(memory.get(), bytes.size()).size() <= splitList(memory.get(), bytes.size()).size(),
            "there are no more names than texts");
}

void separated(const std::string& text, const std::string& separators)
{
    CString list(text.c_str());
    for (int left = list.GetLength() + 1; !list.IsEmpty(); --left) {
        require(left > 0, "a list comes to its end");
        const int before = list.GetLength();
        const CString first = sFirstFromSeperatedListOneOf(&list, separators.c_str());
        require(first.GetLength() + list.GetLength() <= before, "an item is taken off its list");
    }
}

void path(const std::string& text)
{
    const std::string key = text.c_str();
    const Route route(key.c_str());
    require(std::strchr(route.name, '\\') == nullptr, "a name is the last part");
    if (route.is("Protocols"))
        for (const std::string& part : protocolPath(key.c_str()))
            require(part.find('\\') == std::string::npos, "a part holds no backslash");
    std::string mapped = key;
    getWoW64Node(mapped);
    require(mapped.size() >= key.size(), "mapping a path only adds to it");
}

}  // namespace

void fuzzLists(const std::uint8_t* data, std::size_t size)
{
    Input input(data, size);
    const std::string first = input.line();
    const std::string second = input.line();
    block(first);
    separated(first, second);
    path(first);
    path("SOFTWARE\\TAVRONE\\NORIX\\DefDevices\\" + second);
    const CString joined = sKeyConcat(first.c_str(), second.c_str());
    require(joined.GetLength() <= static_cast<int>(first.size() + second.size() + 1), "a key is its parts");
}
