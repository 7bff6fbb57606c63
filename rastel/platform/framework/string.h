// Wide text as a value. Positions and lengths count units of wchar_t, whatever their width.
//
// What a position or length outside the text means is said at each function; nothing reads beyond the text.
#pragma once

#include <compare>
#include <cstdarg>
#include <string>
#include <utility>

#include "rastel/platform/export.h"
#include "rastel/platform/types.h"

class RASTEL_API CString {
public:
    CString() = default;
    CString(const wchar_t* text) : text_(text ? text : L"") {}   // null: empty
    CString(const wchar_t* text, int length);                    // up to `length` units, fewer at a closing null
    explicit CString(wchar_t unit, int repeat = 1);

    int GetLength() const { return static_cast<int>(text_.size()); }
    BOOL IsEmpty() const { return text_.empty(); }
    void Empty() { text_.clear(); }
    wchar_t GetAt(int index) const;   // 0 outside the text
    wchar_t operator[](int index) const { return GetAt(index); }
    void SetAt(int index, wchar_t unit);
    const wchar_t* GetString() const { return text_.c_str(); }
    operator const wchar_t*() const { return text_.c_str(); }

    // Parts are cut to the text: a negative start or count is 0.
    CString Mid(int first) const { return Mid(first, GetLength()); }
    CString Mid(int first, int count) const;
    CString Left(int count) const { return Mid(0, count); }
    CString Right(int count) const;

    // The first index at or after `start`, or -1. Empty text is never found.
    int Find(const wchar_t* part, int start = 0) const;
    int Find(wchar_t unit, int start = 0) const;
    int ReverseFind(wchar_t unit) const;

    // How many were replaced.
    int Replace(const wchar_t* from, const wchar_t* to);
    int Replace(wchar_t from, wchar_t to);
    CString& MakeUpper();
    CString& MakeLower();
    CString& Trim() { return TrimLeft().TrimRight(); }
    CString& TrimLeft();
    CString& TrimRight();

    // Below, at or above 0, by units; null is empty text.
    int Compare(const wchar_t* other) const;
    int CompareNoCase(const wchar_t* other) const;

    // The conventions of printf, the same on every system: %s and %c take wide text, as %ls and %ws do, %S, %C and %hs
    // narrow text (UTF-8). %d, %i, %u, %x and %o take 32 bits, with "l" too; "ll" and "I64" take 64, "I", "z", "t" and
    // "j" the width of a pointer or 64. %p, %e, %f, %g and %a as usual; %n writes nothing. Widths and precisions stop
    // at 65535. Arguments may point into this text.
    void Format(const wchar_t* format, ...);
    void FormatV(const wchar_t* format, va_list arguments);
    void AppendFormat(const wchar_t* format, ...);

    CString& operator+=(const CString& other);
    CString& operator+=(const wchar_t* other);
    CString& operator+=(wchar_t unit);

    friend CString operator+(CString a, const CString& b) { return a += b; }
    friend CString operator+(CString a, const wchar_t* b) { return a += b; }
    friend CString operator+(const wchar_t* a, const CString& b) { return CString(a) += b; }
    friend CString operator+(CString a, wchar_t b) { return a += b; }
    friend CString operator+(wchar_t a, const CString& b) { return CString(a) += b; }

    friend bool operator==(const CString& a, const CString& b) { return a.text_ == b.text_; }
    friend bool operator==(const CString& a, const wchar_t* b) { return a.Compare(b) == 0; }
    friend std::strong_ordering operator<=>(const CString& a, const CString& b) {
        return a.Compare(b.GetString()) <=> 0;
    }
    friend std::strong_ordering operator<=>(const CString& a, const wchar_t* b) { return a.Compare(b) <=> 0; }

private:
    explicit CString(std::wstring text) : text_(std::move(text)) {}

    std::wstring text_;
};
