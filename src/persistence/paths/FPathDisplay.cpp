// Long paths on several lines.
#include "persistence/paths/FPath.h"
#include "persistence/paths/PathText.h"

#include <algorithm>

namespace tessera {

namespace {

// The last separator that ends a line of minLine to maxLine characters, else the first one behind those.
std::size_t findBreak(std::u16string_view line, std::size_t minLine, std::size_t maxLine) {
    const std::size_t last = line.rfind(kPathSeparator, maxLine - 1);
    if (last != std::u16string_view::npos && last + 1 >= minLine) {
        return last;
    }
    return line.find(kPathSeparator, maxLine);
}

} // namespace

void FPath::wrapForDisplay(FString& text, std::int32_t minLine, std::int32_t maxLine, std::int32_t minTail) {
    const std::u16string source = pathtext::wideText(text);
    const auto longest = static_cast<std::size_t>(std::max(maxLine, 1));
    const auto shortest = static_cast<std::size_t>(std::max(minLine, 0));
    const auto tail = static_cast<std::size_t>(std::max(minTail, 0));
    std::u16string wrapped;
    std::u16string_view rest = source;
    while (rest.size() > longest && rest.size() >= tail) {
        const std::size_t separator = findBreak(rest, shortest, longest);
        if (separator == std::u16string_view::npos || separator + 1 == rest.size()) {
            break;
        }
        wrapped.append(rest.substr(0, separator + 1)).push_back(u'\n');
        rest.remove_prefix(separator + 1);
    }
    text = pathtext::stringOf(wrapped.append(rest));
}

} // namespace tessera
