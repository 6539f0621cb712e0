// The length of a text of 16-bit units, in place of the machine's own function, which counts wider ones.
#include <cstddef>

extern "C" std::size_t __wrap_wcslen(const wchar_t* text)
{
    static_assert(sizeof(wchar_t) == 2);
    std::size_t count = 0;
    while (text[count])
        ++count;
    return count;
}
