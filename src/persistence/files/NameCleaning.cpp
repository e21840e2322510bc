#include "persistence/files/NameCleaning.h"

#include "foundation/text/FString.h"
#include "persistence/paths/PathText.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tessera {

namespace {

constexpr std::int32_t kLongestName = 260;
constexpr std::u16string_view kForbiddenInNames = u"\\*?/:<>|\"\t\n\r";
// Each of the first row has its stand-in below it. The colons are treated before this is asked.
constexpr std::u16string_view kForbiddenInPaths = u"?*/\"<>|:";
constexpr std::u16string_view kPathStandIns = u"Sx______";
static_assert(kForbiddenInPaths.size() == kPathStandIns.size());

// Of bytes that mean nothing each stands for itself: what can't stand in a name goes from such a text, too.
void widen(FString& text) {
    if (!text.toWide() && !text.isEmpty()) {
        text = pathtext::stringOf(pathtext::charactersOfBytes(text));
    }
}

bool isControl(char16_t c) {
    return c < 0x20 || c == 0x7f;
}

bool dropControls(FString& text) {
    FString kept;
    const std::int32_t length = text.length();
    for (std::int32_t i = 0; i < length; ++i) {
        const char16_t c = text.char16At(i);
        if (!isControl(c)) {
            kept.appendChar(c);
        }
    }
    if (kept.length() == length) {
        return false;
    }
    text = kept;
    return true;
}

// A cut through a character of two units takes both.
bool cutToLongest(FString& text) {
    if (text.length() <= kLongestName) {
        return false;
    }
    const bool splits = (text.char16At(kLongestName - 1) & 0xfc00) == 0xd800;
    text.remove(splits ? kLongestName - 1 : kLongestName);
    return true;
}

// What stands in for a character of a path; the character itself if it may stay.
char16_t pathStandIn(char16_t c, char16_t replacement, bool& colonSeen) {
    if (c == u':' && !colonSeen) {
        colonSeen = true;
        return c;
    }
    const std::size_t index = kForbiddenInPaths.find(c);
    if (index == kForbiddenInPaths.npos) {
        return c;
    }
    return replacement != 0 ? replacement : kPathStandIns[index];
}

} // namespace

bool cleanName(FString& text, char16_t replacement, ControlCharacters controls) {
    // Widened first: a cut of bytes could leave half a character.
    widen(text);
    bool changed = controls == ControlCharacters::drop && dropControls(text);
    changed |= cutToLongest(text);
    const char16_t standIn = replacement != 0 ? replacement : u'_';
    for (std::int32_t i = 0; i < text.length(); ++i) {
        if (kForbiddenInNames.find(text.char16At(i)) != kForbiddenInNames.npos) {
            text.setChar(i, standIn);
            changed = true;
        }
    }
    return changed;
}

bool cleanPath(FString& text, char16_t replacement) {
    widen(text);
    bool changed = false;
    bool colonSeen = false;
    for (std::int32_t i = 0; i < text.length(); ++i) {
        const char16_t c = text.char16At(i);
        const char16_t standIn = pathStandIn(c, replacement, colonSeen);
        if (standIn != c) {
            text.setChar(i, standIn);
            changed = true;
        }
    }
    return changed;
}

void foldLabel(FString& label) {
    label.toWide();
    for (std::int32_t i = 1; i < label.length(); ++i) {
        label.toLower(i);
    }
}

} // namespace tessera
