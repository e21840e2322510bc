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

// A stretch of a line, and the character that ended the line, if it has been reached.
struct FTypedStream::LinePart {
    std::string_view text;
    bool found = false;
    bool ended = false;
    char end = '\0';
};

// At most room characters; what they lie in is the stream's memory, or byte.
FTypedStream::LinePart FTypedStream::takeLinePart(std::int32_t room, char* byte) {
    std::string_view ahead = bytesAhead();
    const bool inMemory = !ahead.empty();
    if (!inMemory && read(byte, 1) == 1) {
        ahead = std::string_view(byte, 1);
    }
    LinePart part;
    part.found = !ahead.empty();
    part.text = ahead.substr(0, static_cast<std::size_t>(room));
    part.text = part.text.substr(0, part.text.find('\n'));
    part.text = part.text.substr(0, part.text.find('\0'));
    part.ended = part.text.size() < std::min(ahead.size(), static_cast<std::size_t>(room));
    part.end = part.ended ? ahead[part.text.size()] : '\0';
    if (inMemory) {
        seek(static_cast<std::int64_t>(part.text.size()) + (part.ended ? 1 : 0), SeekMode::fromHere);
    }
    return part;
}

std::int32_t FTypedStream::readLine(char* buffer, std::int32_t size) {
    if (buffer == nullptr || size < 1) {
        return 0;
    }
    std::int32_t length = 0;
    char byte = 0;
    LinePart part;
    while (!part.ended && length < size - 1) {
        part = takeLinePart(size - 1 - length, &byte);
        if (!part.found) {
            break;
        }
        std::memcpy(buffer + length, part.text.data(), part.text.size());
        length += static_cast<std::int32_t>(part.text.size());
    }
    if (part.ended && part.end == '\n' && length > 0 && buffer[length - 1] == '\r') {
        --length;
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
    char byte = 0;
    LinePart part = takeLinePart(kLineGrowth, &byte);
    const bool found = part.found;
    while (part.found) {
        if (line.size() + part.text.size() > line.capacity()) {
            line.reserve(line.size() + kLineGrowth);
        }
        line.insert(line.end(), part.text.begin(), part.text.end());
        if (part.ended) {
            break;
        }
        part = takeLinePart(kLineGrowth, &byte);
    }
    if (part.ended && part.end == '\n' && !line.empty() && line.back() == '\r') {
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
