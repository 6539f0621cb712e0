// CString: a text of 8-bit characters in the system's ANSI code page.
//
// The object is one pointer wide and points at its zero-terminated characters, which a CStringData precedes. Copies
// share the characters until one of them is written to. Copies may be used, changed and destroyed by different
// threads at once; one object may not.
//
// A string is freed by the module that made its characters, so a module must outlive the strings it gave away:
// destroy a string that a library returned before unloading that library. Assigning to an existing string copies the
// characters when they come from another module, so such a string stays with its own.
//
// NULL stands for the empty text wherever a const char* is read. Members throw CMemoryException when there is no
// memory and CInvalidArgException for an index or length that the text does not have; the string is then unchanged.
#pragma once

#include <windows.h>

#include <compare>
#include <cstdarg>
#include <cstddef>

#include "StringManager.h"

class CString
{
 public:
    CString() noexcept : CString(AfxGetStringManager()) {}
    explicit CString(IAtlStringMgr* manager) noexcept;
    CString(std::nullptr_t) noexcept : CString() {}
    CString(const CString& other);
    CString(CString&& other) noexcept;
    CString(const char* text);
    CString(const char* characters, int length);
    explicit CString(char character, int repeat = 1);
    explicit CString(const wchar_t* text);  // converted to the ANSI code page
    ~CString() { data()->Release(); }

    CString& operator=(const CString& other);
    CString& operator=(CString&& other);
    CString& operator=(const char* text);
    CString& operator=(const wchar_t* text);
    CString& operator=(char character);

    CString& operator+=(const CString& other);
    CString& operator+=(const char* text);
    CString& operator+=(char character);

    friend CString operator+(const CString& left, const CString& right);
    friend CString operator+(const CString& left, const char* right);
    friend CString operator+(const char* left, const CString& right);
    friend CString operator+(const CString& left, char right);
    friend CString operator+(char left, const CString& right);

    // Case-sensitive, by character value.
    friend bool operator==(const CString& left, const CString& right) noexcept;
    friend bool operator==(const CString& left, const char* right) noexcept { return left.Compare(right) == 0; }
    friend bool operator==(const CString& left, char right) noexcept;
    friend std::strong_ordering operator<=>(const CString& left, const CString& right) noexcept;
    friend std::strong_ordering operator<=>(const CString& left, const char* right) noexcept;

    // Reading
    int GetLength() const noexcept { return data()->nDataLength; }
    int GetAllocLength() const noexcept { return data()->nAllocLength; }
    bool IsEmpty() const noexcept { return GetLength() == 0; }
    char GetAt(int index) const;  // the terminator too has an index
    char operator[](int index) const { return GetAt(index); }
    operator const char*() const noexcept { return text_; }
    const char* GetString() const noexcept { return text_; }
    IAtlStringMgr* GetManager() const noexcept { return data()->pStringMgr->Clone(); }

    // -1, 0 or 1. Without case: letters of the ANSI code page are equal to their other case.
    int Compare(const char* other) const noexcept;
    int CompareNoCase(const char* other) const noexcept;
    int Collate(const char* other) const noexcept;  // the user's sorting order
    int CollateNoCase(const char* other) const noexcept;

    // Index of the first (ReverseFind: last) occurrence at or behind start; -1: none.
    int Find(char character, int start = 0) const noexcept;
    int Find(const char* text, int start = 0) const noexcept;
    int ReverseFind(char character) const noexcept;
    int FindOneOf(const char* set) const noexcept;

    // Parts. Positions and counts outside the text are cut to what there is.
    CString Mid(int first) const;
    CString Mid(int first, int count) const;
    CString Left(int count) const;
    CString Right(int count) const;
    CString SpanIncluding(const char* set) const;
    CString SpanExcluding(const char* set) const;
    // The next run of characters that are not in the set, from start, which moves behind it; at the end start is -1.
    CString Tokenize(const char* separators, int& start) const;

    // Writing
    void SetString(const char* text);
    void SetString(const char* characters, int length);
    void SetAt(int index, char character);
    void Empty() noexcept;
    void Truncate(int length);
    void Append(const CString& other) { *this += other; }
    void Append(const char* text);
    void Append(const char* characters, int length);
    void AppendChar(char character) { Append(&character, 1); }

    CString& MakeUpper();
    CString& MakeLower();
    CString& MakeReverse();

    // Without an argument: white space.
    CString& TrimLeft() { return TrimLeft(whiteSpace); }
    CString& TrimLeft(char character);
    CString& TrimLeft(const char* set);
    CString& TrimRight() { return TrimRight(whiteSpace); }
    CString& TrimRight(char character);
    CString& TrimRight(const char* set);
    CString& Trim() { return TrimRight().TrimLeft(); }
    CString& Trim(char character) { return TrimRight(character).TrimLeft(character); }
    CString& Trim(const char* set);

    // The number of replacements; nothing is replaced for an empty text.
    int Replace(char from, char to);
    int Replace(const char* from, const char* to);
    int Remove(char character);  // the number removed
    // The new length. Positions outside the text are cut to it.
    int Insert(int index, char character);
    int Insert(int index, const char* text);
    int Delete(int index, int count = 1);

    // printf of the platform's C run-time. The arguments may point into this string.
    __attribute__((format(ms_printf, 2, 3))) void Format(const char* format, ...);
    __attribute__((format(ms_printf, 2, 3))) void AppendFormat(const char* format, ...);
    void FormatV(const char* format, va_list arguments);
    void AppendFormatV(const char* format, va_list arguments);

    // Loads a string resource; FALSE, and nothing changed, when there is none. Without an instance: this module's.
    BOOL LoadString(UINT id);
    BOOL LoadString(HINSTANCE instance, UINT id);
    BOOL LoadString(HINSTANCE instance, UINT id, WORD language);

    // Direct writing. GetBuffer makes the characters this string's alone, with room for at least minimum of them;
    // ReleaseBuffer takes over what was written: up to the terminator, or the given length. Until then do nothing
    // else with the string. A string whose buffer is to stay where it is while copies are made is locked: a locked
    // string is copied by its characters and never shares them.
    char* GetBuffer();
    char* GetBuffer(int minimum);
    char* GetBufferSetLength(int length);
    void ReleaseBuffer(int length = -1);
    void ReleaseBufferSetLength(int length);
    char* LockBuffer();
    void UnlockBuffer() noexcept { data()->Unlock(); }

    void Preallocate(int length) { prepareWrite(length); }
    void FreeExtra();  // gives back capacity that is not in use

    static int StringLength(const char* text) noexcept;

 private:
    static const char whiteSpace[];

    CStringData* data() const noexcept { return reinterpret_cast<CStringData*>(text_) - 1; }
    void attach(CStringData* block) noexcept { text_ = block->data(); }
    static CStringData* share(CStringData* block);

    char* prepareWrite(int length);
    void fork(int length);
    void setLength(int length);
    void erase(int first, int count);
    void insert(int index, const char* characters, int count);
    void replace(int first, int count, const char* characters, int length);
    CString part(int first, int count) const;

    char* text_;
};

static_assert(sizeof(CString) == sizeof(char*));
