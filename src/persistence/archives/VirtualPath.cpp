#include "persistence/archives/VirtualPath.h"

#include "persistence/paths/PathText.h"
#include "persistence/urls/FUrl.h"

#include <algorithm>

namespace tessera {

namespace {

using std::u16string;
using std::u16string_view;
constexpr std::size_t kNone = u16string_view::npos;

constexpr u16string_view kPrefixes[] = {u"kpssound:", u"aurelix:", u"axf:", u"vfs:", u"archive:"};
constexpr u16string_view kSchemeEnd = u":\\\\";
constexpr u16string_view kDouble = u"\\\\";
constexpr u16string_view kArchivePrefix = u"vfs:";
// Where the first double backslash of a "vfs" path stands.
constexpr std::size_t kArchiveStart = 4;

// Where an archive's key stands in the text.
struct KeyPlace {
    std::size_t start;
    std::size_t end;
};

struct Doubles {
    explicit Doubles(u16string_view text) : first(text.find(kDouble)), next(kNone), last(text.rfind(kDouble)) {
        if (first != kNone) {
            next = text.find(kDouble, first + 2);
            if (next == first + 2) {
                next = text.find(kDouble, first + 4); // the archive itself lies on a share
            }
        }
    }

    std::size_t first;
    std::size_t next;
    std::size_t last;
};

std::optional<KeyPlace> nonEmpty(std::size_t start, std::size_t end) {
    return start < end ? std::optional(KeyPlace{start, end}) : std::nullopt;
}

// Without a further double backslash the second test decides, which takes all of it for the archive: `last` may then be
// the one of a share, or overlap with the first.
std::optional<KeyPlace> placeOfInner(const Doubles& doubles) {
    if (doubles.next == kNone || doubles.last <= doubles.first) {
        return std::nullopt;
    }
    // With more than one level of archives the key is a virtual path itself.
    return doubles.next == doubles.last ? nonEmpty(doubles.first + 2, doubles.last) : nonEmpty(0, doubles.last);
}

std::optional<KeyPlace> placeInArchivePath(u16string_view text) {
    const Doubles doubles(text);
    if (doubles.first != kArchiveStart) {
        return std::nullopt;
    }
    if (const auto place = placeOfInner(doubles); place || doubles.next != kNone) {
        return place;
    }
    std::size_t end = text.size();
    // A separator at the end of a folder's text doesn't belong to the archive's name.
    if (end > kArchiveStart + 3 && text[end - 1] == kPathSeparator) {
        --end;
    }
    return nonEmpty(kArchiveStart + 2, end);
}

std::optional<KeyPlace> placeInOtherPath(u16string_view text) {
    const std::size_t scheme = text.find(kSchemeEnd);
    if (scheme == kNone || text.find(kPathSeparator) < scheme) {
        return std::nullopt;
    }
    const std::size_t start = scheme + kSchemeEnd.size();
    return nonEmpty(start, std::min(text.find(kPathSeparator, start), text.size()));
}

} // namespace

bool isVirtualText(u16string_view text) {
    return std::any_of(std::begin(kPrefixes), std::end(kPrefixes),
                       [text](u16string_view prefix) { return text.starts_with(prefix); });
}

bool isVirtualPath(const FPath& path) {
    const FString& folder = path.getPath();
    return isVirtualText(pathtext::viewOf(folder.isEmpty() ? path.getName() : folder));
}

u16string virtualTextOf(const FPath& path) {
    FString whole;
    path.getFullPath(whole);
    u16string text(pathtext::viewOf(whole));
    if (cmCast<FUrl>(&path) != nullptr) {
        std::replace(text.begin(), text.end(), u'/', kPathSeparator);
    }
    return text;
}

std::optional<u16string> virtualScheme(u16string_view text) {
    const std::size_t end = text.find(kSchemeEnd);
    return end == kNone || end == 0 ? std::nullopt : std::optional(u16string(text.substr(0, end)));
}

std::optional<u16string> archiveKey(u16string_view text) {
    if (text.starts_with(kArchivePrefix)) {
        const auto place = placeInArchivePath(text);
        return place ? std::optional(u16string(text.substr(place->start, place->end - place->start))) : std::nullopt;
    }
    const auto place = placeInOtherPath(text);
    if (!place) {
        return std::nullopt;
    }
    FString key = pathtext::stringOf(text.substr(place->start, place->end - place->start));
    key.toUpper();
    return u16string(pathtext::viewOf(key));
}

u16string innerPath(u16string_view text) {
    if (text.starts_with(kArchivePrefix)) {
        const auto place = placeInArchivePath(text);
        return place && place->end + 2 < text.size() ? u16string(text.substr(place->end + 2)) : u16string();
    }
    const auto place = placeInOtherPath(text);
    if (!place) {
        return {};
    }
    const u16string_view rest = text.substr(place->end);
    return rest.empty() ? u16string(1, kPathSeparator) : u16string(rest);
}

} // namespace tessera
