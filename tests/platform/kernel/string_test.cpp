// Wide text: parts and searches with wild positions, and printf conventions that are the same everywhere.
#include <gtest/gtest.h>

#include <climits>
#include <clocale>
#include <cstdint>

#include "rastel/platform/framework.h"

namespace {

template <typename... Arguments>
std::wstring Formatted(const wchar_t* format, Arguments... arguments) {
    CString text;
    text.Format(format, arguments...);
    return text.GetString();
}

TEST(StringFormat, TextIsWideUnlessItSaysOtherwise) {
    EXPECT_EQ(Formatted(L"%s|%ls|%ws|%S|%hs", L"w\u00e9", L"l", L"x", "n", "\xC3\xA9"), L"w\u00e9|l|x|n|\u00e9");
    EXPECT_EQ(Formatted(L"%c%C%hc", L'\u4e2d', 'a', 'b'), L"\u4e2dab");
    EXPECT_EQ(Formatted(L"[%5s][%-5s][%.2s][%*.*s]", L"abc", L"abc", L"abc", -4, 1, L"xyz"),
              L"[  abc][abc  ][ab][x   ]");
    EXPECT_EQ(Formatted(L"%s %S", static_cast<wchar_t*>(nullptr), static_cast<char*>(nullptr)), L"(null) (null)");
    EXPECT_EQ(Formatted(L"%S", "a\xFF\xC3z\xED\xA0\x80"), L"a\uFFFD\uFFFDz\uFFFD");   // no text in UTF-8
    const wchar_t open[] = {L'a', L'b'};
    const char narrowOpen[] = {'c', 'd'};
    EXPECT_EQ(Formatted(L"%.2s%.2S", open, narrowOpen), L"abcd");   // a precision bounds what is read
}

TEST(StringFormat, NumbersKeepTheirWidth) {
    EXPECT_EQ(Formatted(L"%s %ix%i %i bits (%i Hz)", L"Memory display", 1024, 768, 32, 60),
              L"Memory display 1024x768 32 bits (60 Hz)");
    EXPECT_EQ(Formatted(L"%d %u %x %X %o", INT_MIN, UINT_MAX, 0xABCDu, 0xABCDu, 8u),
              L"-2147483648 4294967295 abcd ABCD 10");
    EXPECT_EQ(Formatted(L"%I64d %lld %I64u", INT64_MIN, INT64_MAX, UINT64_MAX),
              L"-9223372036854775808 9223372036854775807 18446744073709551615");
    EXPECT_EQ(Formatted(L"%ld %lu %I32d", LONG{-5}, DWORD{0xFFFFFFFF}, 7), L"-5 4294967295 7");
    EXPECT_EQ(Formatted(L"%hd %hhu %zu %Iu", 65537, 257, std::size_t{9}, std::uintptr_t{10}), L"1 1 9 10");
    EXPECT_EQ(Formatted(L"%05d|%+d|% d|%-4d|%#x|%.3d", 42, 42, 42, 42, 42, 7), L"00042|+42| 42|42  |0x2a|007");
    EXPECT_EQ(Formatted(L"%.2f %8.3e %g %Lg", 1.005, 12345.678, 0.1, 2.5L), L"1.00 1.235e+04 0.1 2.5");
    EXPECT_EQ(Formatted(L"%p", static_cast<void*>(nullptr)), std::wstring(2 * sizeof(void*), L'0'));
}

TEST(StringFormat, HostileFormatsDoNoHarm) {
    int untouched = 5;
    EXPECT_EQ(Formatted(L"%n%d", &untouched, 3), L"3");
    EXPECT_EQ(untouched, 5);
    EXPECT_EQ(Formatted(L"100%"), L"100");
    EXPECT_EQ(Formatted(L"%"), L"");
    EXPECT_EQ(Formatted(L"%5"), L"");
    EXPECT_EQ(Formatted(L"%%%q%!"), L"%%q%!");
    EXPECT_EQ(Formatted(nullptr), L"");
    EXPECT_EQ(Formatted(L"%999999999999d", 1).size(), 65535u);
    EXPECT_EQ(Formatted(L"%*d", INT_MIN, 1).size(), 65535u);
    EXPECT_EQ(Formatted(L"%.*d", INT_MAX, 1).size(), 65535u);
    EXPECT_EQ(Formatted(L"%.*s", INT_MIN, L"all"), L"all");
}

TEST(StringFormat, ArgumentsMayPointIntoTheTextItself) {
    CString text(L"abc");
    text.Format(L"%s-%s", text.GetString(), text.GetString());
    EXPECT_EQ(text, L"abc-abc");
    text.AppendFormat(L"%s", text.GetString());
    EXPECT_EQ(text, L"abc-abcabc-abc");
    text += text;
    EXPECT_EQ(text.GetLength(), 28);
}

TEST(String, PartsAreCutToTheText) {
    const CString text(L"abcde");
    EXPECT_EQ(text.Mid(1, 2), L"bc");
    EXPECT_EQ(text.Mid(3), L"de");
    for (const int far : {5, 6, INT_MAX}) {
        EXPECT_EQ(text.Mid(far), L"");
        EXPECT_EQ(text.Left(far), text);
        EXPECT_EQ(text.Right(far), text);
        EXPECT_EQ(text.Find(L"a", far), -1);
        EXPECT_EQ(text.GetAt(far), L'\0');
    }
    EXPECT_EQ(text.Mid(INT_MIN, INT_MAX), text);
    EXPECT_EQ(text.Mid(2, INT_MIN), L"");
    EXPECT_EQ(text.Left(-1), L"");
    EXPECT_EQ(text.Right(-1), L"");
    EXPECT_EQ(text.Right(2), L"de");
    EXPECT_EQ(text[-1], L'\0');
    EXPECT_EQ(text[4], L'e');
    EXPECT_EQ(CString(L"abc", 2), L"ab");
    EXPECT_EQ(CString(L"abc", 9), L"abc");
    EXPECT_EQ(CString(nullptr, 9), L"");
    EXPECT_EQ(CString(L'x', 3), L"xxx");
    EXPECT_EQ(CString(L'x', -3), L"");
}

TEST(String, SearchesAndReplacements) {
    CString text(L"one/two/three");
    EXPECT_EQ(text.Find(L'/'), 3);
    EXPECT_EQ(text.Find(L'/', 4), 7);
    EXPECT_EQ(text.Find(L'/', -9), 3);
    EXPECT_EQ(text.ReverseFind(L'/'), 7);
    EXPECT_EQ(text.Find(L"four"), -1);
    EXPECT_EQ(text.Find(L""), -1);
    EXPECT_EQ(text.Find(nullptr), -1);
    EXPECT_EQ(text.Replace(L"/", L"//"), 2);   // does not meet its own result
    EXPECT_EQ(text, L"one//two//three");
    EXPECT_EQ(text.Replace(L"//", nullptr), 2);
    EXPECT_EQ(text, L"onetwothree");
    EXPECT_EQ(text.Replace(L"", L"x"), 0);
    EXPECT_EQ(text.Replace(L'e', L'E'), 3);
    EXPECT_EQ(CString(L" \t\u3000a b\r\n").Trim(), L"a b");
    EXPECT_EQ(CString(L" \n ").Trim(), L"");
}

TEST(String, CaseDoesNotDependOnTheLocale) {
    const std::string old = std::setlocale(LC_ALL, nullptr);
    for (const char* const locale : {"C", "C.UTF-8"}) {
        std::setlocale(LC_ALL, locale);
        EXPECT_EQ(CString(L"a\u00e9\u0444\u03c3\u00df1\u0131").MakeUpper(), L"A\u00c9\u0424\u03a3\u00df1\u0131");
        EXPECT_EQ(CString(L"A\u00c9\u0424\u03a3\u0130").MakeLower(), L"a\u00e9\u0444\u03c3\u0130");
        EXPECT_EQ(CString(L"\u00c9T\u00c9").CompareNoCase(L"\u00e9t\u00e9"), 0);
        EXPECT_EQ(CString(L"\u00d7\u00f7").MakeLower(), L"\u00d7\u00f7");   // signs among letters
    }
    std::setlocale(LC_ALL, old.c_str());
}

TEST(String, OrderIsThatOfTheUnits) {
    const CString a(L"a"), b(L"b"), empty;
    EXPECT_TRUE(a < b && b > a && a <= a && empty < a);
    EXPECT_TRUE(a < L"b" && L"a" < b && a != L"b" && L"a" == a);
    EXPECT_TRUE(empty == static_cast<const wchar_t*>(nullptr));
    EXPECT_LT(CString(L"z").Compare(L"\uFFFD"), 0);
    EXPECT_GT(CString(std::wstring(1, static_cast<wchar_t>(WCHAR_MIN < 0 ? -1 : 0xFFFF)).c_str()).Compare(L"z"), 0);
    EXPECT_LT(CString(L"ab").Compare(L"abc"), 0);
    EXPECT_EQ(L"x" + a + L'y' + b, L"xayb");
}

}   // namespace
