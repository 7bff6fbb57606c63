#include "rastel/platform/framework.h"

#include <algorithm>
#include <string_view>
#include <type_traits>
#include <utility>

#include "rastel/platform/framework/characters.h"
#include "rastel/platform/framework/format.h"

namespace {

std::wstring_view ViewOf(const wchar_t* text) {
    return text ? std::wstring_view(text) : std::wstring_view();
}

std::size_t CountOf(int count) {
    return static_cast<std::size_t>(std::max(count, 0));
}

int IndexOf(std::size_t position) {
    return position == std::wstring::npos ? -1 : static_cast<int>(position);
}

// By value of the units: wchar_t is signed on some systems, and the order of text must not depend on that.
int CompareUnits(std::wstring_view a, std::wstring_view b, wchar_t (*fold)(wchar_t)) {
    for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
        const auto left = static_cast<std::make_unsigned_t<wchar_t>>(fold(a[i]));
        const auto right = static_cast<std::make_unsigned_t<wchar_t>>(fold(b[i]));
        if (left != right) {
            return left < right ? -1 : 1;
        }
    }
    return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

}   // namespace

CString::CString(const wchar_t* text, int length) {
    for (int i = 0; text && i < length && text[i]; ++i) {
        text_ += text[i];
    }
}

CString::CString(wchar_t unit, int repeat) : text_(unit ? CountOf(repeat) : 0, unit) {}

wchar_t CString::GetAt(int index) const {
    return index >= 0 && index < GetLength() ? text_[static_cast<std::size_t>(index)] : L'\0';
}

void CString::SetAt(int index, wchar_t unit) {
    if (index >= 0 && index < GetLength()) {
        text_[static_cast<std::size_t>(index)] = unit;
    }
}

CString CString::Mid(int first, int count) const {
    const std::size_t start = std::min(CountOf(first), text_.size());
    return CString(text_.substr(start, CountOf(count)));
}

CString CString::Right(int count) const {
    const std::size_t kept = std::min(CountOf(count), text_.size());
    return CString(text_.substr(text_.size() - kept));
}

int CString::Find(const wchar_t* part, int start) const {
    const std::wstring_view wanted = ViewOf(part);
    return wanted.empty() ? -1 : IndexOf(text_.find(wanted, CountOf(start)));
}

int CString::Find(wchar_t unit, int start) const {
    return IndexOf(text_.find(unit, CountOf(start)));
}

int CString::ReverseFind(wchar_t unit) const {
    return IndexOf(text_.rfind(unit));
}

int CString::Replace(const wchar_t* from, const wchar_t* to) {
    const std::wstring_view wanted = ViewOf(from);
    if (wanted.empty()) {
        return 0;
    }
    std::wstring replaced;
    int count = 0;
    std::size_t done = 0;
    for (std::size_t found; (found = text_.find(wanted, done)) != std::wstring::npos; done = found + wanted.size()) {
        replaced.append(text_, done, found - done).append(ViewOf(to));
        ++count;
    }
    replaced.append(text_, done);
    text_ = std::move(replaced);
    return count;
}

int CString::Replace(wchar_t from, wchar_t to) {
    const auto count = std::count(text_.begin(), text_.end(), from);
    std::replace(text_.begin(), text_.end(), from, to);
    return static_cast<int>(count);
}

CString& CString::MakeUpper() {
    std::transform(text_.begin(), text_.end(), text_.begin(), rastel::platform::UpperUnit);
    return *this;
}

CString& CString::MakeLower() {
    std::transform(text_.begin(), text_.end(), text_.begin(), rastel::platform::LowerUnit);
    return *this;
}

CString& CString::TrimLeft() {
    text_.erase(text_.begin(), std::find_if_not(text_.begin(), text_.end(), rastel::platform::IsSpaceUnit));
    return *this;
}

CString& CString::TrimRight() {
    text_.erase(std::find_if_not(text_.rbegin(), text_.rend(), rastel::platform::IsSpaceUnit).base(), text_.end());
    return *this;
}

int CString::Compare(const wchar_t* other) const {
    return CompareUnits(text_, ViewOf(other), [](wchar_t unit) { return unit; });
}

int CString::CompareNoCase(const wchar_t* other) const {
    return CompareUnits(text_, ViewOf(other), rastel::platform::LowerUnit);
}

void CString::FormatV(const wchar_t* format, va_list arguments) {
    text_ = rastel::platform::WideFormatter::Run(format ? format : L"", arguments);
}

void CString::Format(const wchar_t* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    FormatV(format, arguments);
    va_end(arguments);
}

void CString::AppendFormat(const wchar_t* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    text_ += rastel::platform::WideFormatter::Run(format ? format : L"", arguments);
    va_end(arguments);
}

CString& CString::operator+=(const CString& other) {
    text_ += other.text_;
    return *this;
}

CString& CString::operator+=(const wchar_t* other) {
    text_ += ViewOf(other);
    return *this;
}

CString& CString::operator+=(wchar_t unit) {
    text_ += unit;
    return *this;
}
