// String objects of another module, as strings meet them: one that takes 8-bit text alone, and one for both widths.
// Both live on the stack; reference counts are kept for the tests to look at.
#pragma once

#include "foundation/text/IStringResult.h"

#include <string>

namespace tessera::test {

class ByteStringObject final : public IStringSource {
public:
    FResult queryInterface(const FUIDBytes& uid, void** out) override {
        *out = uid == IStringSource::iid ? static_cast<IStringSource*>(this) : nullptr;
        references += *out != nullptr ? 1 : 0;
        return *out != nullptr ? kResultOk : kNoInterface;
    }
    std::uint32_t addRef() override { return static_cast<std::uint32_t>(++references); }
    std::uint32_t release() override { return static_cast<std::uint32_t>(--references); }
    void setText8(const char* text) override { received = text; }

    std::string received;
    int references = 1;
};

class StringObject final : public IStringResult {
public:
    FResult queryInterface(const FUIDBytes& uid, void** out) override {
        *out = uid == IStringResult::iid ? static_cast<IStringResult*>(this) : nullptr;
        references += *out != nullptr ? 1 : 0;
        return *out != nullptr ? kResultOk : kNoInterface;
    }
    std::uint32_t addRef() override { return static_cast<std::uint32_t>(++references); }
    std::uint32_t release() override { return static_cast<std::uint32_t>(--references); }
    void setText8(const char* text) override {
        text8 = text;
        wide = false;
    }
    void setText16(const char16_t* text) override {
        text16 = text;
        wide = true;
    }
    const char* getText8() override { return text8.c_str(); }
    const char16_t* getText16() override { return text16.c_str(); }
    bool isWide() override { return wide; }
    bool isEmpty() override { return wide ? text16.empty() : text8.empty(); }

    std::string text8;
    std::u16string text16;
    bool wide = false;
    int references = 1;
};

} // namespace tessera::test
