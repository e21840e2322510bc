// Path objects for the tests of this folder, made from the system's own texts.
#pragma once

#include "persistence/paths/FNPath.h"
#include "support/ScratchFolder.h"

#include <filesystem>
#include <string>

namespace tessera {

inline FString wideText(const std::string& utf8) {
    FString text;
    text.assignUtf8(utf8.c_str(), static_cast<std::int32_t>(utf8.size()));
    return text;
}

inline FNPath pathOf(const std::filesystem::path& native, PathKind kind = PathKind::file) {
    return FNPath(wideText(testing_support::utf8OfPath(native)), kind);
}

inline FNPath folderOf(const std::filesystem::path& native) {
    return pathOf(native, PathKind::folder);
}

inline std::string utf8Of(const FStringRef& text) {
    FString narrow(text);
    narrow.toMultiByte(CodePage::utf8);
    return narrow.text8();
}

} // namespace tessera
