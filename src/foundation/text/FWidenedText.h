// FWidenedText: 16-bit text of a string for the length of one operation. Internal to the text folder.
//
// 16-bit text is looked at where it lies; 8-bit text is widened with the system's code page, short text into a buffer
// on the stack. Like every widened string it ends at its first NUL.
#pragma once

#include "foundation/text/FStringRef.h"

#include <string_view>

namespace tessera {

class FWidenedText {
public:
    explicit FWidenedText(const FStringRef& source);
    FWidenedText(const FWidenedText&) = delete;
    FWidenedText& operator=(const FWidenedText&) = delete;
    ~FWidenedText();

    // False when the bytes mean nothing in the code page, or without memory.
    bool isValid() const { return valid_; }
    std::u16string_view view() const { return view_; }

private:
    static constexpr std::ptrdiff_t kShort = 256;

    std::u16string_view view_;
    char16_t* heap_ = nullptr;
    bool valid_ = true;
    char16_t local_[kShort];
};

// Calls work with both texts in one width. Text whose widening fails gives aFails or bFails instead, depending on whose
// it was.
template <class Result, class Work>
Result inCommonWidth(const FStringRef& a, const FStringRef& b, Result aFails, Result bFails, Work work) {
    if (!a.isWide() && !b.isWide()) {
        return work(a.view8(), b.view8());
    }
    if (a.isWide() && b.isWide()) {
        return work(a.view16(), b.view16());
    }
    const FWidenedText widened(a.isWide() ? b : a);
    if (!widened.isValid()) {
        return a.isWide() ? bFails : aFails;
    }
    return a.isWide() ? work(a.view16(), widened.view()) : work(widened.view(), b.view16());
}

} // namespace tessera
