// Between UTF-8 text, as paths travel in messages and arguments, and the standard library's paths.
#pragma once

#include <filesystem>
#include <string>

namespace tessera::programs {

inline std::filesystem::path nativePath(const std::string& utf8) {
    return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

inline std::string utf8Text(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return std::string(text.begin(), text.end());
}

} // namespace tessera::programs
