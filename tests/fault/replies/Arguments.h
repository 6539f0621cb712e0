// Arguments for any exported function, drawn by their types: texts and buffers of the caller lie against memory that
// nobody may touch, and behind a buffer comes the pointer to its capacity.
#pragma once

#include <windows.h>

#include <deque>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "kxframework.h"
#include "support/fuzzing.h"
#include "support/guardedMemory.h"

class Arguments
{
 public:
    explicit Arguments(fuzzing::Random& random);
    ~Arguments();

    // Drops what the last call was given and what it handed back.
    void beginAnew();

    // A caller's text, or one that it lets the call change; sometimes none.
    const char* text();
    char* changeableText();

    // A caller's buffer of a capacity that the next length tells; of at least one byte, which the interface demands.
    char* buffer();
    char* bufferOf(std::size_t capacity);
    template <typename Length = unsigned long>
    Length* length()
    {
        auto* const place = reinterpret_cast<Length*>(take(sizeof(Length)));
        *place = static_cast<Length>(capacity_);
        return place;
    }

    // Of all buffers since the arguments began anew.
    const std::vector<std::size_t>& capacities() const { return capacities_; }

    // Mostly the next of an enumeration.
    unsigned long number();
    CString& string();
    CStringList& list();
    HKEY key();
    HKEY& openedKey();
    HANDLE* openedEvent();

    // Room for raw data without a size of its own: no function can write more than a reply holds.
    static constexpr std::size_t largestRecord = 8192;
    void* record(std::size_t size) { return take(size); }

    template <typename T>
    T draw();

 private:
    std::uint8_t* take(std::size_t count);

    fuzzing::Random& random_;
    std::deque<GuardedMemory> memory_;
    std::size_t used_ = 0;
    std::deque<CString> strings_;
    std::deque<CStringList> lists_;
    std::deque<HKEY> keys_;
    std::deque<HANDLE> events_;
    std::size_t capacity_ = 0;
    std::vector<std::size_t> capacities_;
    unsigned long next_ = 0;
    HKEY ownKey_ = nullptr;
    std::string ownKeyName_;
};

template <typename T>
T Arguments::draw()
{
    using Value = std::remove_cvref_t<T>;
    if constexpr (std::is_same_v<T, const char*>) {
        return text();
    } else if constexpr (std::is_same_v<T, char*>) {
        return buffer();
    } else if constexpr (std::is_same_v<T, unsigned long*> || std::is_same_v<T, long*>) {
        return length<std::remove_pointer_t<T>>();
    } else if constexpr (std::is_same_v<T, unsigned long&>) {
        return *length();
    } else if constexpr (std::is_same_v<T, CString*>) {
        return &string();
    } else if constexpr (std::is_same_v<Value, CString>) {
        return string();
    } else if constexpr (std::is_same_v<T, CStringList*>) {
        return &list();
    } else if constexpr (std::is_same_v<T, CStringList&>) {
        return list();
    } else if constexpr (std::is_same_v<T, HKEY>) {
        return key();
    } else if constexpr (std::is_same_v<T, HKEY&>) {
        return openedKey();
    } else if constexpr (std::is_same_v<T, HKEY*>) {
        return &openedKey();
    } else if constexpr (std::is_same_v<T, HANDLE*>) {
        return openedEvent();
    } else if constexpr (std::is_same_v<T, bool>) {
        return random_.oneIn(2);
    } else if constexpr (std::is_enum_v<T>) {
        return static_cast<T>(random_.below(2));
    } else if constexpr (std::is_integral_v<T>) {
        return static_cast<T>(number());
    } else if constexpr (std::is_same_v<T, HWND> || std::is_same_v<T, CWnd*> || std::is_same_v<T, CPropertySheet*>) {
        return nullptr;
    } else if constexpr (std::is_void_v<std::remove_pointer_t<T>> || std::is_same_v<T, unsigned char*>) {
        return static_cast<T>(record(largestRecord));
    } else {
        static_assert(std::is_pointer_v<T>);
        return static_cast<T>(record(sizeof(std::remove_pointer_t<T>)));
    }
}
