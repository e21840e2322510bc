#include "host/program/ScriptLine.h"

namespace tessera::host {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";

} // namespace

std::optional<std::vector<std::string>> splitScriptLine(std::string_view line) {
    std::vector<std::string> words;
    while (true) {
        const std::size_t start = line.find_first_not_of(kBlanks);
        if (start == std::string_view::npos || line[start] == '#') {
            return words;
        }
        line.remove_prefix(start);
        std::string word;
        while (!line.empty() && kBlanks.find(line.front()) == std::string_view::npos) {
            const bool isQuoted = line.front() == '"';
            const std::size_t end = isQuoted ? line.find('"', 1) : line.find_first_of(" \t\r\n\"");
            if (isQuoted && end == std::string_view::npos) {
                return std::nullopt;
            }
            word += isQuoted ? line.substr(1, end - 1) : line.substr(0, end);
            line.remove_prefix(end == std::string_view::npos ? line.size() : end + (isQuoted ? 1 : 0));
        }
        words.push_back(std::move(word));
    }
}

} // namespace tessera::host
