// A command line, one argument at a time: options with their values, and what is no option.
#pragma once

#include <optional>
#include <string>

namespace rastel::example {

class OptionReader {
public:
    OptionReader(int count, char** arguments) : count_(count), arguments_(arguments) {}

    // Steps to the next argument. False: there is none.
    bool Next();

    bool IsOption() const { return isOption_; }                  // begins with "-" and no "--" came before
    const std::string& Text() const { return text_; }            // the option's name, "=value" cut off, or the argument
    std::optional<std::string> Value();                          // what follows "=", else the next argument
    bool HasUnusedValue() const { return value_.has_value(); }   // "=value" that nobody asked for

private:
    int count_;
    char** arguments_;
    int next_ = 1;
    bool onlyArguments_ = false;
    bool isOption_ = false;
    std::string text_;
    std::optional<std::string> value_;
};

// A decimal number from `least` to `most`, and nothing else in the text.
std::optional<int> ParseNumber(const std::string& text, int least, int most);

}   // namespace rastel::example
