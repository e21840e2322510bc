#include "persistence/objects/DocumentSupport.h"

#include <map>
#include <regex>

namespace tessera::test {

std::string renumbered(const std::string& text) {
    static const std::regex id("(ID|item value)=\"([0-9]+)\"");
    std::map<std::string, std::string> numbers;
    std::string result;
    std::size_t copied = 0;
    for (std::sregex_iterator match(text.begin(), text.end(), id), end; match != end; ++match) {
        const auto start = static_cast<std::size_t>(match->position(2));
        const std::string number = std::to_string(numbers.size() + 1);
        result.append(text, copied, start - copied);
        result += numbers.try_emplace(match->str(2), number).first->second;
        copied = start + static_cast<std::size_t>(match->length(2));
    }
    return result.append(text, copied);
}

} // namespace tessera::test
