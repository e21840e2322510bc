// The context of a key, in double braces: "Copy{{Noun}}" and "Copy{{Verb}}" are two meanings of one English word.
//
// The table knows a key with all of it. Who shows a key that has no translation shows what stands in front of the
// braces.
#pragma once

#include <string_view>

namespace tessera {

inline constexpr std::u16string_view kContextStart = u"{{";

inline bool hasContext(std::u16string_view key) {
    return key.find(kContextStart) != std::u16string_view::npos;
}

inline std::u16string_view withoutContext(std::u16string_view key) {
    return key.substr(0, key.find(kContextStart));
}

} // namespace tessera
