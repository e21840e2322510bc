// Bytes that are UTF-8 come back from 16 bits as they were, and any 16-bit text comes back from UTF-8 with its lone
// halves of pairs replaced. A plain decoder, one character at a time, agrees on what is UTF-8.
#include "foundation/text/FUtf8.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

using namespace tessera;

namespace {

void check(bool holds) {
    if (!holds) {
        std::abort();
    }
}

// The whole definition in a table: lead byte, second byte, how many more bytes continue.
bool isUtf8(const std::string& text) {
    struct Form {
        std::uint8_t leadFrom, leadTo, secondFrom, secondTo, length;
    };
    constexpr Form kForms[] = {{0x00, 0x7f, 0, 0, 1},       {0xc2, 0xdf, 0x80, 0xbf, 2}, {0xe0, 0xe0, 0xa0, 0xbf, 3},
                               {0xe1, 0xec, 0x80, 0xbf, 3}, {0xed, 0xed, 0x80, 0x9f, 3}, {0xee, 0xef, 0x80, 0xbf, 3},
                               {0xf0, 0xf0, 0x90, 0xbf, 4}, {0xf1, 0xf3, 0x80, 0xbf, 4}, {0xf4, 0xf4, 0x80, 0x8f, 4}};
    const auto at = [&](std::size_t i) { return i < text.size() ? static_cast<std::uint8_t>(text[i]) : 0; };
    for (std::size_t i = 0; i < text.size();) {
        const Form* found = nullptr;
        for (const Form& form : kForms) {
            if (at(i) >= form.leadFrom && at(i) <= form.leadTo) {
                found = &form;
            }
        }
        if (found == nullptr || (found->length > 1 && (at(i + 1) < found->secondFrom || at(i + 1) > found->secondTo))) {
            return false;
        }
        for (std::size_t k = 2; k < found->length; ++k) {
            if ((at(i + k) & 0xc0) != 0x80) {
                return false;
            }
        }
        i += found->length;
    }
    return true;
}

std::string narrow(const std::u16string& text) {
    std::string result(FUtf8::narrowedLength(text.data(), text.size()), '#');
    FUtf8::narrow(text.data(), text.size(), result.data(), result.size());
    return result;
}

bool widen(const std::string& text, std::u16string& result) {
    result.assign(FUtf8::widenedLength(text.data(), text.size()), u'#');
    return FUtf8::widen(text.data(), text.size(), result.data(), result.size());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    std::u16string units;
    check(widen(bytes, units) == isUtf8(bytes));
    if (isUtf8(bytes)) {
        check(narrow(units) == bytes);
    }

    std::u16string any(size / 2, u'\0');
    if (!any.empty()) {
        std::memcpy(any.data(), data, any.size() * sizeof(char16_t));
    }
    const std::string narrowed = narrow(any);
    check(isUtf8(narrowed));
    std::u16string back;
    check(widen(narrowed, back) && back.size() == any.size());
    for (std::size_t i = 0; i < any.size(); ++i) {
        check(back[i] == any[i] || (back[i] == 0xfffd && (any[i] & 0xf800) == 0xd800));
    }
    return 0;
}
