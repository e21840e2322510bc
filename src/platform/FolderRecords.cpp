#include "platform/FolderRecords.h"

#include "platform/Utf8Text.h"

#include <algorithm>
#include <cstring>
#include <optional>

namespace tessera::platform {

namespace {

constexpr std::size_t kNameOffset = 12;
// A record with a name of one character, padded: none is shorter.
constexpr std::size_t kSmallestRecord = 16;
constexpr char32_t kReplacement = 0xfffd;

std::uint32_t read32(std::span<const std::byte> bytes, std::size_t at) {
    std::uint32_t value = 0;
    std::memcpy(&value, bytes.data() + at, sizeof value);
    return value;
}

char16_t unitAt(std::span<const std::byte> name, std::size_t index) {
    char16_t unit = 0;
    std::memcpy(&unit, name.data() + 2 * index, sizeof unit);
    return unit;
}

// Half a surrogate pair has no UTF-8: it shows as a replacement character, so that the change isn't lost.
std::string nameOf(std::span<const std::byte> name) {
    const std::size_t count = name.size() / 2;
    std::string text;
    text.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        const char16_t unit = unitAt(name, i);
        if (isHighSurrogate(unit) && i + 1 < count && isLowSurrogate(unitAt(name, i + 1))) {
            ++i;
            appendUtf8(text, joined(unit, unitAt(name, i)));
        } else if (isHighSurrogate(unit) || isLowSurrogate(unit)) {
            appendUtf8(text, kReplacement);
        } else {
            appendUtf8(text, unit == u'\\' ? U'/' : char32_t(unit));
        }
    }
    return text;
}

struct Record {
    std::uint32_t next;
    FolderChange change;
};

std::optional<Record> recordAt(std::span<const std::byte> received, std::size_t offset) {
    if (offset > received.size() || received.size() - offset < kNameOffset) {
        return std::nullopt;
    }
    const std::uint32_t action = read32(received, offset + 4);
    if (action > FolderChange::kLastAction) {
        return std::nullopt;
    }
    const std::size_t room = received.size() - offset - kNameOffset;
    const std::size_t length = std::min<std::size_t>(read32(received, offset + 8), room);
    return Record{read32(received, offset), {action, nameOf(received.subspan(offset + kNameOffset, length))}};
}

} // namespace

std::vector<FolderChange> parseFolderRecords(std::span<const std::byte> received) {
    std::vector<FolderChange> changes;
    const std::size_t most = received.size() / kSmallestRecord + 1;
    std::size_t offset = 0;
    while (changes.size() < most) {
        std::optional<Record> record = recordAt(received, offset);
        if (!record) {
            break;
        }
        changes.push_back(std::move(record->change));
        // From the start of the buffer, see the header.
        const std::size_t next = record->next;
        if (next == offset || next == 0 || next + kSmallestRecord >= received.size()) {
            break;
        }
        offset = next;
    }
    return changes;
}

} // namespace tessera::platform
