#include "persistence/streams/FTypedStream.h"

#include "foundation/text/FString.h"

#include <memory>
#include <new>
#include <string_view>
#include <vector>

namespace tessera {

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
// How far reading runs ahead of what the stream has proved to hold, whatever length it announces.
constexpr std::int32_t kTrustedBlock = 64 * 1024;
constexpr std::int32_t kLineGrowth = 1024;

bool writeAll(FTypedStream& stream, const void* bytes, std::size_t count) {
    const auto size = static_cast<std::int32_t>(count);
    return stream.write(bytes, size) == size;
}

} // namespace

bool FTypedStream::readBool(bool& value) {
    std::uint16_t word = 0;
    const bool done = get(word);
    value = word != 0;
    return done;
}

bool FTypedStream::writeString8(const char* text, bool terminate) {
    return text != nullptr && writeAll(*this, text, std::strlen(text) + (terminate ? 1 : 0));
}

bool FTypedStream::writeWide(const char16_t* text, bool terminate) {
    if (text == nullptr) {
        return false;
    }
    const std::size_t count = std::char_traits<char16_t>::length(text) + (terminate ? 1 : 0);
    if (swap_ == 0) {
        return writeAll(*this, text, count * sizeof(char16_t));
    }
    return std::all_of(text, text + count, [this](char16_t unit) { return put(unit); });
}

bool FTypedStream::writeStr8(const char* text) {
    if (text == nullptr) {
        return writeInt32(0);
    }
    const std::size_t count = std::strlen(text) + 1;
    return writeInt32(static_cast<std::int32_t>(count)) && writeAll(*this, text, count);
}

std::unique_ptr<char[]> FTypedStream::readStr8() {
    std::int32_t length = 0;
    if (!readInt32(length) || length < 1 || length > kMaximumStr8Length) {
        return nullptr;
    }
    std::vector<char> block;
    std::int32_t done = 0;
    while (done < length) {
        const std::int32_t step = std::min(length - done, kTrustedBlock);
        block.resize(static_cast<std::size_t>(done + step));
        if (read(block.data() + done, step) != step) {
            return nullptr;
        }
        done += step;
    }
    auto text = std::make_unique<char[]>(block.size() + 1);
    std::copy(block.begin(), block.end(), text.get());
    return text;
}

std::int32_t FTypedStream::readLine(char* buffer, std::int32_t size) {
    if (buffer == nullptr || size < 1) {
        return 0;
    }
    std::int32_t length = 0;
    char c = 0;
    while (length < size - 1 && read(&c, 1) == 1) {
        if (c == '\0') {
            break;
        }
        if (c == '\n') {
            length -= length > 0 && buffer[length - 1] == '\r' ? 1 : 0;
            break;
        }
        buffer[length++] = c;
    }
    buffer[length] = '\0';
    return length;
}

// One write for the whole line: a line of a file is one call of the system.
bool FTypedStream::writeTextLine(const FStringRef& text) {
    FString line(text);
    if (line.isAscii()) {
        line.toMultiByte();
        return writeAll(*this, line.text8(), static_cast<std::size_t>(line.length()) + 1);
    }
    if (!line.toMultiByte(CodePage::utf8)) {
        return false;
    }
    FString marked(kUtf8Mark.data());
    marked.append8(line.text8(), line.length());
    return writeAll(*this, marked.text8(), static_cast<std::size_t>(marked.length()) + 1);
}

bool FTypedStream::readTextLine(FString& text) {
    std::vector<char> line;
    bool found = false;
    char c = 0;
    while (read(&c, 1) == 1) {
        found = true;
        if (c == '\0' || c == '\n') {
            break;
        }
        if (line.size() == line.capacity()) {
            line.reserve(line.size() + kLineGrowth);
        }
        line.push_back(c);
    }
    if (c == '\n' && !line.empty() && line.back() == '\r') {
        line.pop_back();
    }
    const std::string_view bytes(line.data(), line.size());
    const bool marked = bytes.substr(0, kUtf8Mark.size()) == kUtf8Mark;
    const std::string_view body = marked ? bytes.substr(kUtf8Mark.size()) : bytes;
    text.assign8(body.data(), static_cast<std::int32_t>(body.size()));
    if (marked) {
        text.toWide(CodePage::utf8);
    }
    return found;
}

} // namespace tessera
