#include "discovery/registry/ServiceRecord.h"

#include "platform/Processes.h"
#include "platform/SmallFile.h"

#include <charconv>
#include <stdexcept>

namespace tessera {

namespace {

// Three lines never come near it; a file that isn't ours may be of any size.
constexpr std::size_t kLongestFile = 64 * 1024;

std::string_view takeLine(std::string_view& text) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (platform::kLineEnding.size() == 2 && line.ends_with('\r')) {
        line.remove_suffix(1);
    }
    return line;
}

// White space in front and anything behind the digits are let pass, as the standard's own conversion does.
int decimal(std::string_view text) {
    const std::size_t start = text.find_first_not_of(" \t\n\v\f\r");
    text.remove_prefix(start == std::string_view::npos ? text.size() : start);
    if (text.starts_with('+') && text.size() > 1 && text[1] != '-') {
        text.remove_prefix(1);
    }
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error == std::errc::invalid_argument) {
        throw std::invalid_argument("invalid stoi argument");
    }
    if (error == std::errc::result_out_of_range) {
        throw std::out_of_range("stoi argument out of range");
    }
    return number;
}

} // namespace

ServiceRecord ServiceRecord::forPath(std::string path) {
    ServiceRecord record;
    const std::size_t slash = path.rfind('/');
    record.name = slash == std::string::npos ? path : path.substr(slash + 1);
    record.path = std::move(path);
    return record;
}

std::string ServiceRecord::format() const {
    std::string text = processName;
    text.append(platform::kLineEnding).append(std::to_string(processId)).append(platform::kLineEnding);
    return text.append(type).append(platform::kLineEnding);
}

void ServiceRecord::parse(std::string_view text) {
    processName = takeLine(text);
    processId = decimal(takeLine(text));
    type = takeLine(text);
}

void ServiceRecord::readFile() {
    if (const auto text = platform::readSmallFile(path, kLongestFile)) {
        parse(*text);
    }
}

bool ServiceRecord::writeFile() const {
    return platform::writeSmallFile(path, format());
}

bool ServiceRecord::isAlive() const {
    return platform::processBaseName(processId) == processName;
}

} // namespace tessera
