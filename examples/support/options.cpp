#include "examples/support/options.h"

#include <charconv>
#include <utility>

namespace rastel::example {

bool OptionReader::Next() {
    value_.reset();
    if (next_ < count_ && !onlyArguments_ && std::string(arguments_[next_]) == "--") {
        onlyArguments_ = true;
        ++next_;
    }
    if (next_ >= count_) {
        return false;
    }
    text_ = arguments_[next_++];
    isOption_ = !onlyArguments_ && text_.size() > 1 && text_[0] == '-';
    const std::size_t equals = text_.find('=');
    if (isOption_ && equals != std::string::npos) {
        value_ = text_.substr(equals + 1);
        text_.resize(equals);
    }
    return true;
}

std::optional<std::string> OptionReader::Value() {
    if (value_) {
        return std::exchange(value_, std::nullopt);
    }
    if (next_ >= count_) {
        return std::nullopt;
    }
    return std::string(arguments_[next_++]);
}

std::optional<int> ParseNumber(const std::string& text, int least, int most) {
    int number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, failure] = std::from_chars(text.data(), end, number);
    if (failure != std::errc() || stop != end || number < least || number > most) {
        return std::nullopt;
    }
    return number;
}

}   // namespace rastel::example
