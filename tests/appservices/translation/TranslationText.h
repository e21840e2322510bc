// The frame of a translation file, in both forms the same, around what a test is about.
#pragma once

#include <string>

namespace tessera::test {

inline std::string inStrings(const std::string& content) {
    return "<Translation><StringTable>" + content + "</StringTable></Translation>";
}

inline std::string inLanguages(const std::string& content) {
    return "<Translation><LanguageTable>" + content + "</LanguageTable></Translation>";
}

} // namespace tessera::test
