// Texts made from formats, resources and UTF-16.
#include <climits>
#include <cstdio>
#include <cwchar>
#include <utility>

#include "CString.h"
#include "Exceptions.h"
#include "ModuleState.h"

namespace {

// Appends UTF-16 in the ANSI code page.
void appendWide(CString& target, const wchar_t* text, int length)
{
    if (length == 0) return;
    const int size = WideCharToMultiByte(CP_ACP, 0, text, length, nullptr, 0, nullptr, nullptr);
    const int before = target.GetLength();
    if (size > INT_MAX - before) AfxThrowMemoryException();
    WideCharToMultiByte(CP_ACP, 0, text, length, target.GetBuffer(before + size) + before, size, nullptr, nullptr);
    target.ReleaseBufferSetLength(before + size);
}

int lengthOf(const wchar_t* text) noexcept
{
    return text ? static_cast<int>(std::wcslen(text)) : 0;
}

struct ArgumentsEnd
{
    va_list& arguments;
    ~ArgumentsEnd() { va_end(arguments); }
};

// The text of a string resource where it lies in the module: not terminated; NULL when there is none. A string
// resource is one of sixteen in a block, each behind its length.
const wchar_t* findString(HINSTANCE instance, UINT id, WORD language, int& length) noexcept
{
    const auto block = MAKEINTRESOURCEW((id >> 4) + 1);
    const auto resource = FindResourceExW(instance, reinterpret_cast<LPCWSTR>(RT_STRING), block, language);
    if (!resource) return nullptr;
    const auto loaded = LoadResource(instance, resource);
    const auto* at = loaded ? static_cast<const wchar_t*>(LockResource(loaded)) : nullptr;
    if (!at) return nullptr;
    const auto* end = at + SizeofResource(instance, resource) / sizeof(wchar_t);
    for (UINT skip = id & 15; skip > 0 && at < end; --skip)
        at += 1 + *at;
    if (at >= end || *at == 0 || at + 1 + *at > end) return nullptr;
    length = *at;
    return at + 1;
}

}  // namespace

CString::CString(const wchar_t* text) : CString()
{
    appendWide(*this, text, lengthOf(text));
}

CString& CString::operator=(const wchar_t* text)
{
    return *this = CString(text);
}

void CString::FormatV(const char* format, va_list arguments)
{
    CString result(data()->pStringMgr->Clone());  // the arguments may point into this string
    result.AppendFormatV(format, arguments);
    *this = std::move(result);
}

void CString::AppendFormatV(const char* format, va_list arguments)
{
    if (!format) AfxThrowInvalidArgException();
    va_list counting;
    va_copy(counting, arguments);
    const int length = _vscprintf(format, counting);
    va_end(counting);
    if (length < 0 || length == INT_MAX) AfxThrowInvalidArgException();
    CString added;
    // Room for the terminator, which the platform's printf writes when it fits.
    _vsnprintf(added.GetBuffer(length + 1), static_cast<std::size_t>(length) + 1, format, arguments);
    added.ReleaseBufferSetLength(length);
    *this += added;
}

void CString::Format(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const ArgumentsEnd end{arguments};
    FormatV(format, arguments);
}

void CString::AppendFormat(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const ArgumentsEnd end{arguments};
    AppendFormatV(format, arguments);
}

BOOL CString::LoadString(UINT id)
{
    return LoadString(AfxGetResourceHandle(), id);
}

BOOL CString::LoadString(HINSTANCE instance, UINT id)
{
    return LoadString(instance, id, MAKELANGID(LANG_NEUTRAL, SUBLANG_NEUTRAL));
}

BOOL CString::LoadString(HINSTANCE instance, UINT id, WORD language)
{
    int length = 0;
    const wchar_t* resource = findString(instance, id, language, length);
    if (!resource) return FALSE;
    CString text(data()->pStringMgr->Clone());
    appendWide(text, resource, length);
    *this = std::move(text);
    return TRUE;
}
