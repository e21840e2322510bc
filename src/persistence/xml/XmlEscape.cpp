#include "persistence/xml/XmlEscape.h"

#include "foundation/containers/FByteBuffer.h"
#include "foundation/text/FUtf8.h"
#include "persistence/xml/XmlEntities.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <limits>

namespace tessera {

namespace {

// "apos" is in the table and switched off: values stand in double quotes.
struct BasicEntity {
    char character;
    std::string_view text;
    bool active;
};
constexpr BasicEntity kBasic[] = {
    {'&', "&amp;", true}, {'<', "&lt;", true}, {'>', "&gt;", true}, {'\'', "&apos;", false}, {'"', "&quot;", true}};

// Empty for a character that passes.
std::string_view basicEntity(std::uint32_t character) {
    if (character > '>') {
        return {};
    }
    for (const BasicEntity& entity : kBasic) {
        if (entity.active && character == static_cast<std::uint8_t>(entity.character)) {
            return entity.text;
        }
    }
    return {};
}

// Room for so many more bytes, growing in proportion: a long text has many pieces.
std::uint8_t* reserve(FByteBuffer& buffer, std::size_t count) {
    const std::size_t needed = static_cast<std::size_t>(buffer.getFill()) + count;
    constexpr std::size_t kMost = std::numeric_limits<std::int32_t>::max();
    if (needed > kMost) {
        return nullptr;
    }
    const auto size = static_cast<std::size_t>(buffer.getSize());
    if (needed > size && !buffer.setSize(static_cast<std::int32_t>(
                             std::min(kMost, std::max(needed, size + std::max<std::size_t>(size / 2, 256)))))) {
        return nullptr;
    }
    return buffer.getData() + buffer.getFill();
}

bool append(FByteBuffer& buffer, std::string_view text) {
    std::uint8_t* target = reserve(buffer, text.size());
    if (target == nullptr) {
        return text.empty();
    }
    std::copy(text.begin(), text.end(), target);
    return buffer.setFill(buffer.getFill() + static_cast<std::int32_t>(text.size()));
}

bool append(FByteBuffer& buffer, std::u16string_view text) {
    const std::size_t count = FUtf8::narrowedLength(text.data(), text.size());
    std::uint8_t* target = reserve(buffer, count);
    if (target == nullptr) {
        return text.empty();
    }
    FUtf8::narrow(text.data(), text.size(), reinterpret_cast<char*>(target), count);
    return buffer.setFill(buffer.getFill() + static_cast<std::int32_t>(count));
}

// What a character is written as in the full form, or nothing.
class FullEscape {
public:
    std::string_view operator()(char character) {
        const auto byte = static_cast<std::uint8_t>(character);
        const char* name = writableXmlEntity(byte);
        if (name == nullptr && byte < 0x80) {
            return {};
        }
        const int length = name != nullptr ? std::snprintf(text_, sizeof text_, "&%s;", name)
                                           : std::snprintf(text_, sizeof text_, "&#x%x;", unsigned{byte});
        return {text_, static_cast<std::size_t>(length)};
    }

private:
    char text_[16];
};

// Runs of characters that pass are appended as a whole.
template <class Character, class Escape>
bool escapeText(FByteBuffer& buffer, std::basic_string_view<Character> text, Escape escape) {
    std::size_t start = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const std::string_view entity = escape(text[at]);
        if (entity.empty()) {
            continue;
        }
        if (!append(buffer, text.substr(start, at - start)) || !append(buffer, entity)) {
            return false;
        }
        start = at + 1;
    }
    return append(buffer, text.substr(start));
}

} // namespace

bool escape8(FByteBuffer& buffer, std::string_view text, bool basicOnly) {
    return basicOnly ? escapeText(buffer, text, [](char byte) { return basicEntity(static_cast<std::uint8_t>(byte)); })
                     : escapeText(buffer, text, FullEscape());
}

bool escapeWide(FByteBuffer& buffer, std::u16string_view text) {
    return escapeText(buffer, text, [](char16_t unit) { return basicEntity(unit); });
}

} // namespace tessera
