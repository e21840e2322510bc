// PageExample: the examples of docs/file-formats.md, which the tests read and write as they stand. Behind the mark
// "<!-- example: NAME -->" stands one block of the page. A test that asks for a block which isn't there fails.
#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

namespace tessera::testing_support {

// With the line ends of the page, LF.
inline std::string pageExample(const std::string& name, const char* page = FILE_FORMATS) {
    std::ifstream file(page, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    const std::string mark = "<!-- example: " + name + " -->\n```";
    const std::size_t found = text.find(mark);
    if (found == std::string::npos) {
        ADD_FAILURE() << page << " has no example " << name;
        return {};
    }
    const std::size_t from = text.find('\n', found + mark.size()) + 1;
    return text.substr(from, text.find("```", from) - from);
}

// With the line ends of a document, CR LF.
inline std::string pageDocument(const std::string& name) {
    std::string result;
    for (const char c : pageExample(name)) {
        result += c == '\n' ? "\r\n" : std::string(1, c);
    }
    return result;
}

// The bytes of a listing: pairs of digits up to the first two blanks of each line.
inline std::string pageBytes(const std::string& name) {
    std::istringstream lines(pageExample(name));
    std::string bytes;
    for (std::string line; std::getline(lines, line);) {
        std::istringstream digits(line.substr(0, line.find("  ")));
        for (std::string pair; digits >> pair;) {
            bytes += static_cast<char>(std::stoi(pair, nullptr, 16));
        }
    }
    return bytes;
}

} // namespace tessera::testing_support
