#include "persistence/paths/PathRules.h"

#include "persistence/paths/PathText.h"
#include "platform/NativePath.h"

#include <algorithm>

namespace tessera {

namespace {

using pathtext::isDriveLetter;
using std::u16string_view;

constexpr u16string_view kDoubleSeparator = u"\\\\";
constexpr u16string_view kArchivePrefix = u"vfs:\\\\";

// The archive's key is all that follows, a double separator at its own start (an archive on a share) included; a double
// separator further on begins what lies inside the archive, and the root has nothing there.
bool isArchiveRoot(u16string_view text) {
    if (!text.starts_with(kArchivePrefix)) {
        return false;
    }
    const u16string_view key = text.substr(kArchivePrefix.size());
    const std::size_t start = key.starts_with(kDoubleSeparator) ? kDoubleSeparator.size() : 0;
    const std::size_t inner = key.find(kDoubleSeparator, start);
    return key.size() > start && inner != start &&
           (inner == u16string_view::npos || inner + kDoubleSeparator.size() == key.size());
}

// Length of "\\server\share", or of as much of it as there is.
std::size_t shareRootLength(u16string_view text) {
    const std::size_t server = text.find(kPathSeparator, kDoubleSeparator.size());
    if (server == u16string_view::npos) {
        return text.size();
    }
    return std::min(text.find(kPathSeparator, server + 1), text.size());
}

// One component behind the share is still taken for a part of the root.
bool isShareRoot(u16string_view text) {
    return text.starts_with(kDoubleSeparator) && text.rfind(kPathSeparator) <= shareRootLength(text);
}

// "scheme://" and "scheme:\\"; a single letter is a drive.
bool isUrlForm(u16string_view text) {
    const auto isSchemeCharacter = [](char16_t c) {
        return isDriveLetter(c) || FStringRef::isDigit(c) || c == u'+' || c == u'-' || c == u'.';
    };
    const auto end = std::find_if_not(text.begin(), text.end(), isSchemeCharacter);
    const auto scheme = static_cast<std::size_t>(end - text.begin());
    const u16string_view rest = text.substr(scheme);
    return scheme >= 2 && (rest.starts_with(u"://") || rest.starts_with(u":\\\\"));
}

} // namespace

bool isRootPath(const FStringRef& path) {
    if (path.isNull()) {
        return false;
    }
    const std::u16string text = pathtext::wideText(path);
    if (text.size() < 2) {
        return true;
    }
    const bool drive = text[1] == u':' && (text.size() == 2 || (text.size() == 3 && text[2] == kPathSeparator));
    return drive || isShareRoot(text) || isArchiveRoot(text);
}

bool isAbsolutePath(const FStringRef& path) {
    const std::u16string text = pathtext::wideText(path);
    if (text.size() > 2 && text.starts_with(u"..")) {
        return false;
    }
    if (isUrlForm(text)) {
        return true;
    }
    if (!text.empty() && text[0] == kPathSeparator && platform::hasSingleRoot()) {
        return true;
    }
    if (text.size() < 2) {
        return false;
    }
    return text.starts_with(kDoubleSeparator) || (isDriveLetter(text[0]) && text[1] == u':');
}

} // namespace tessera
