// Paths of registry keys, and lists in a text.
#include "exported.h"
#include "kxstring32x.h"

namespace {

CString keyOf(const CString& a, const CString& b)
{
    if (a.IsEmpty() || b.IsEmpty()) return a + b;
    return a + "\\" + b;
}

template <typename... More>
CString keyOf(const CString& a, const CString& b, const CString& c, const More&... more)
{
    return keyOf(keyOf(a, b), c, more...);
}

CString takeFirst(CString& list, const CString& separators)
{
    const int end = list.FindOneOf(separators);
    if (end < 0) {
        const CString whole = list;
        list.Empty();
        return whole;
    }
    const char* const separator = list.GetString() + end;
    CString first = list.Left(end);
    CString rest = list.Mid(end + static_cast<int>(CharNextA(separator) - separator));
    list = rest;
    return first;
}

}  // namespace

CString sKeyConcat(CString a, CString b)
{
    return exported([&] { return keyOf(a, b); });
}

CString sKeyConcat(CString a, CString b, CString c)
{
    return exported([&] { return keyOf(a, b, c); });
}

CString sKeyConcat(CString a, CString b, CString c, CString d)
{
    return exported([&] { return keyOf(a, b, c, d); });
}

CString sKeyConcat(CString a, CString b, CString c, CString d, CString e)
{
    return exported([&] { return keyOf(a, b, c, d, e); });
}

CString sFirstFromSeperatedListOneOf(CString* list, CString separators)
{
    return exported([&] { return list ? takeFirst(*list, separators) : CString(); });
}

CString sFirstFromSeperatedListOneOf(CString list, CString separators)
{
    return exported([&] { return takeFirst(list, separators); });
}
