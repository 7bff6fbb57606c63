// The printf conventions over wide text, one engine for every system: the systems' own wide functions disagree on
// whether %s is wide. Numbers are handed to snprintf one at a time, text is placed here.
#pragma once

#include <algorithm>
#include <climits>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <utility>

#include "rastel/platform/framework/characters.h"

namespace rastel::platform {

class WideFormatter {
public:
    // Writes `format` into the result; `arguments` is left as it was.
    static std::wstring Run(const wchar_t* format, va_list arguments) {
        WideFormatter formatter(format);
        va_copy(formatter.arguments_, arguments);
        formatter.WriteAll();
        va_end(formatter.arguments_);
        return std::move(formatter.out_);
    }

private:
    enum class Length { Usual, Char, Short, Long, LongLong, Pointer, LongDouble };

    // What stands between '%' and the conversion letter. A precision of -1 is none.
    struct Field {
        std::string flags;
        int width = 0, precision = -1;
        Length length = Length::Usual;
        bool IsLeft() const { return flags.find('-') != std::string::npos; }
    };

    explicit WideFormatter(const wchar_t* format) : next_(format) {}

    void WriteAll() {
        while (*next_) {
            if (*next_ != L'%') {
                out_ += *next_++;
                continue;
            }
            const wchar_t* const start = next_++;
            const Field field = ReadField();
            if (!*next_) {
                return;
            }
            if (!WriteConversion(*next_++, field)) {
                out_.append(start, next_);   // no conversion: the text stands for itself
            }
        }
    }

    Field ReadField() {
        Field field;
        for (; *next_ == L'-' || *next_ == L'+' || *next_ == L' ' || *next_ == L'#' || *next_ == L'0'; ++next_) {
            const char flag = static_cast<char>(*next_);
            if (field.flags.find(flag) == std::string::npos) {
                field.flags += flag;
            }
        }
        field.width = ReadNumber();
        if (field.width < 0) {
            field.flags += '-';
            field.width = -field.width;
        }
        if (*next_ == L'.') {
            ++next_;
            field.precision = std::max(ReadNumber(), -1);
        }
        field.length = ReadLength();
        return field;
    }

    // Digits or '*', cut to what a line of text can want.
    int ReadNumber() {
        constexpr int most = 65535;
        if (*next_ == L'*') {
            ++next_;
            return std::clamp(va_arg(arguments_, int), -most, most);
        }
        int number = 0;
        for (; *next_ >= L'0' && *next_ <= L'9'; ++next_) {
            number = std::min(number * 10 + static_cast<int>(*next_ - L'0'), most);
        }
        return number;
    }

    bool Take(std::wstring_view word) {
        for (std::size_t i = 0; i < word.size(); ++i) {
            if (next_[i] != word[i]) {
                return false;
            }
        }
        next_ += word.size();
        return true;
    }

    Length ReadLength() {
        if (Take(L"hh")) {
            return Length::Char;
        }
        if (Take(L"h")) {
            return Length::Short;
        }
        if (Take(L"ll") || Take(L"I64") || Take(L"j")) {
            return Length::LongLong;
        }
        if (Take(L"l") || Take(L"w") || Take(L"I32")) {
            return Length::Long;
        }
        if (Take(L"I") || Take(L"z") || Take(L"t")) {
            return Length::Pointer;
        }
        return Take(L"L") ? Length::LongDouble : Length::Usual;
    }

    bool WriteConversion(wchar_t letter, const Field& field) {
        switch (letter) {
            case L'd':
            case L'i':
                WriteNumber(field, "lld", Signed(field.length));
                return true;
            case L'u':
                WriteNumber(field, "llu", Unsigned(field.length));
                return true;
            case L'x':
                WriteNumber(field, "llx", Unsigned(field.length));
                return true;
            case L'X':
                WriteNumber(field, "llX", Unsigned(field.length));
                return true;
            case L'o':
                WriteNumber(field, "llo", Unsigned(field.length));
                return true;
            case L'e':
            case L'E':
            case L'f':
            case L'F':
            case L'g':
            case L'G':
            case L'a':
            case L'A':
                WriteReal(field, static_cast<char>(letter));
                return true;
            case L'p':
                WritePointer(field);
                return true;
            case L'c':
            case L'C':
                WriteUnit(field, IsNarrow(field, letter == L'C'));
                return true;
            case L's':
            case L'S':
                WriteText(field, IsNarrow(field, letter == L'S'));
                return true;
            case L'n':
                static_cast<void>(va_arg(arguments_, void*));
                return true;
            case L'%':
                out_ += L'%';
                return true;
            default:
                return false;
        }
    }

    static bool IsNarrow(const Field& field, bool isCapital) {
        const bool saysNarrow = field.length == Length::Short || field.length == Length::Char;
        return saysNarrow || (isCapital && field.length != Length::Long);
    }

    long long Signed(Length length) {
        switch (length) {
            case Length::Char:
                return static_cast<signed char>(va_arg(arguments_, int));
            case Length::Short:
                return static_cast<short>(va_arg(arguments_, int));
            case Length::LongLong:
                return va_arg(arguments_, long long);
            case Length::Pointer:
                return va_arg(arguments_, std::intptr_t);
            default:
                return va_arg(arguments_, int);
        }
    }

    unsigned long long Unsigned(Length length) {
        switch (length) {
            case Length::Char:
                return static_cast<unsigned char>(va_arg(arguments_, int));
            case Length::Short:
                return static_cast<unsigned short>(va_arg(arguments_, int));
            case Length::LongLong:
                return va_arg(arguments_, unsigned long long);
            case Length::Pointer:
                return va_arg(arguments_, std::uintptr_t);
            default:
                return va_arg(arguments_, unsigned);
        }
    }

    template <typename Number>
    void WriteNumber(const Field& field, std::string_view conversion, Number number) {
        std::string pattern = "%" + field.flags + "*.*";
        pattern += conversion;
        const int count = std::snprintf(nullptr, 0, pattern.c_str(), field.width, field.precision, number);
        if (count <= 0) {
            return;
        }
        std::string text(static_cast<std::size_t>(count), '\0');
        std::snprintf(text.data(), text.size() + 1, pattern.c_str(), field.width, field.precision, number);
        AppendNarrow(out_, text);
    }

    void WriteReal(const Field& field, char letter) {
        if (field.length == Length::LongDouble) {
            WriteNumber(field, std::string{'L', letter}, va_arg(arguments_, long double));
        } else {
            WriteNumber(field, std::string_view(&letter, 1), va_arg(arguments_, double));
        }
    }

    void WritePointer(const Field& field) {
        Field digits;
        digits.precision = static_cast<int>(2 * sizeof(void*));
        digits.width = field.width;
        digits.flags = field.IsLeft() ? "-" : "";
        WriteNumber(digits, "llX",
                    static_cast<unsigned long long>(reinterpret_cast<std::uintptr_t>(va_arg(arguments_, void*))));
    }

    void WriteUnit(const Field& field, bool isNarrow) {
        const int given = va_arg(arguments_, int);
        const wchar_t unit =
            isNarrow ? static_cast<wchar_t>(static_cast<unsigned char>(given)) : static_cast<wchar_t>(given);
        Place(field, std::wstring(1, unit));
    }

    void WriteText(const Field& field, bool isNarrow) {
        const std::size_t most = field.precision < 0 ? SIZE_MAX : static_cast<std::size_t>(field.precision);
        std::wstring text;
        if (isNarrow) {
            if (const char* const given = va_arg(arguments_, const char*)) {
                AppendNarrow(text, std::string_view(given, LengthUpTo(given, most)));
                return Place(field, text);
            }
        } else if (const wchar_t* const given = va_arg(arguments_, const wchar_t*)) {
            return Place(field, std::wstring(given, LengthUpTo(given, most)));
        }
        Place(field, std::wstring(L"(null)").substr(0, most));
    }

    // A precision bounds what is read, so that text without a closing null can be printed.
    template <typename Unit>
    static std::size_t LengthUpTo(const Unit* text, std::size_t most) {
        std::size_t length = 0;
        while (length < most && text[length] != Unit()) {
            ++length;
        }
        return length;
    }

    static void AppendNarrow(std::wstring& out, std::string_view bytes) {
        while (!bytes.empty()) {
            char32_t codePoint = 0;
            const bool isText = TakeUtf8(bytes, codePoint) && !IsSurrogate(codePoint);
            AppendWide(out, isText ? codePoint : 0xFFFD);
        }
    }

    void Place(const Field& field, const std::wstring& text) {
        const std::size_t width = static_cast<std::size_t>(field.width);
        const std::size_t gap = width > text.size() ? width - text.size() : 0;
        if (!field.IsLeft()) {
            out_.append(gap, L' ');
        }
        out_ += text;
        if (field.IsLeft()) {
            out_.append(gap, L' ');
        }
    }

    const wchar_t* next_;
    va_list arguments_;
    std::wstring out_;
};

}   // namespace rastel::platform
