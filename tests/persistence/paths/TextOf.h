// What the path tests compare: the texts of paths as std::u16string, which GoogleTest can print.
#pragma once

#include "persistence/paths/FPath.h"

#include <string>

namespace tessera {

inline std::u16string text(const FString& string) {
    return string.text16();
}

inline std::u16string folderOf(const FPath& path) {
    return text(path.getPath());
}

inline std::u16string nameOf(const FPath& path) {
    return text(path.getName());
}

inline std::u16string fullOf(const FPath& path) {
    return text(path.getFullPath());
}

} // namespace tessera
