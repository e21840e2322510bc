// LanguageCode: the code of a language as files spell it: at most two bytes, kept with a terminator.
#pragma once

#include <algorithm>
#include <string_view>

namespace tessera {

class LanguageCode {
public:
    constexpr LanguageCode() = default;
    // What is beyond two bytes is dropped.
    constexpr explicit LanguageCode(std::string_view code) {
        std::copy_n(code.begin(), std::min(code.size(), kLength), text_);
    }

    const char* text() const { return text_; }
    std::string_view view() const { return text_; }
    bool isEmpty() const { return text_[0] == '\0'; }
    bool isComplete() const { return view().size() == kLength; }
    friend bool operator==(const LanguageCode& a, const LanguageCode& b) { return a.view() == b.view(); }

private:
    static constexpr std::size_t kLength = 2;

    char text_[kLength + 1] = {};
};

} // namespace tessera
