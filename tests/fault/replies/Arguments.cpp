#include "Arguments.h"

#include <algorithm>

namespace {

constexpr std::size_t largestBuffer = 8192;

// Texts that steer functions into their branches.
const char* const knownTexts[] = {"",
                                  "Dev",
                                  "Dummy",
                                  "MPI",
                                  "busparam",
                                  "soft_entry",
                                  "baudrate",
                                  "Protocols",
                                  "Boards",
                                  "Protocols\\a\\b\\c\\d\\e\\f",
                                  "*TVRA010",
                                  "DE",
                                  "default",
                                  "12",
                                  "LPT",
                                  "Prüfstand Größe",
                                  "SOFTWARE\\TAVRONE\\NORIX\\LogDevices\\Dev",
                                  "SOFTWARE\\TAVRONE\\NORIX\\LogNames\\Name",
                                  "SOFTWARE\\TAVRONE\\NORIX\\DefDevices\\CP_TYPE\\MPI\\Params\\baudrate",
                                  "SOFTWARE\\TAVRONE\\NORIX\\DefDevices\\DeviceID\\*TVRA010",
                                  "busparam\\dp\\x",
                                  "App=Talun LangExt=A -x \"a b\""};

}  // namespace

Arguments::Arguments(fuzzing::Random& random)
    : random_(random), ownKeyName_("Software\\KxovaTests\\fuzz" + std::to_string(GetCurrentProcessId()))
{
    RegCreateKeyExA(HKEY_CURRENT_USER, ownKeyName_.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &ownKey_,
                    nullptr);
}

Arguments::~Arguments()
{
    beginAnew();
    RegCloseKey(ownKey_);
    RegDeleteTreeA(HKEY_CURRENT_USER, ownKeyName_.c_str());
}

void Arguments::beginAnew()
{
    for (const HKEY key : keys_)
        if (key) RegCloseKey(key);
    for (const HANDLE event : events_)
        if (event) CloseHandle(event);
    keys_.clear();
    events_.clear();
    strings_.clear();
    lists_.clear();
    capacities_.clear();
    used_ = 0;
    capacity_ = 0;
}

std::uint8_t* Arguments::take(std::size_t count)
{
    if (used_ == memory_.size()) memory_.emplace_back(largestBuffer);
    return memory_[used_++].last(count).data();
}

const char* Arguments::text()
{
    return random_.oneIn(24) ? nullptr : changeableText();
}

char* Arguments::changeableText()
{
    std::string text = random_.of(knownTexts);
    if (random_.oneIn(4)) {
        text.resize(random_.below(random_.oneIn(8) ? 4500 : 40));
        for (char& character : text)
            character = static_cast<char>(1 + random_.below(255));
    }
    char* const place = reinterpret_cast<char*>(take(text.size() + 1));
    std::copy_n(text.c_str(), text.size() + 1, place);
    return place;
}

char* Arguments::buffer()
{
    static constexpr std::size_t capacities[] = {0,   1,   2,   3,   8,   32,   255,  259,
                                                 260, 260, 260, 261, 300, 2048, 8160, 8192};
    capacity_ = random_.oneIn(4) ? random_.below(300) : random_.of(capacities);
    return bufferOf(capacity_);
}

char* Arguments::bufferOf(std::size_t capacity)
{
    capacities_.push_back(capacity);
    char* const place = reinterpret_cast<char*>(take(std::max<std::size_t>(capacity, 1)));
    std::fill_n(place, std::max<std::size_t>(capacity, 1), 'U');
    return place;
}

unsigned long Arguments::number()
{
    switch (random_.below(8)) {
        case 0:
            return fuzzing::awkwardNumber(random_);
        case 1:
        case 2:
            return next_ = 0;
        default:
            return ++next_ % 12;
    }
}

CString& Arguments::string()
{
    const char* const content = text();
    return strings_.emplace_back(content ? content : "");
}

CStringList& Arguments::list()
{
    CStringList& list = lists_.emplace_back();
    for (std::uint32_t count = random_.below(3); count > 0; --count)
        list.AddTail("\\Device\\Serial0,COM1");
    return list;
}

HKEY Arguments::key()
{
    return random_.oneIn(8) ? nullptr : ownKey_;
}

HKEY& Arguments::openedKey()
{
    return keys_.emplace_back(nullptr);
}

HANDLE* Arguments::openedEvent()
{
    return &events_.emplace_back(nullptr);
}
