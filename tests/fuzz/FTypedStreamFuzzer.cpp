// Bytes of any kind as typed values, lines, strings and objects. What was read is written and read again: equal.
#include "foundation/text/FString.h"
#include "persistence/paths/FNPath.h"
#include "persistence/streams/FMemoryStream.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace {

using namespace tessera;

void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

template <class Write, class Read>
void roundTrip(std::uint16_t swap, Write write, Read read) {
    FMemoryStream stream;
    stream.setSwap(swap);
    require(write(stream));
    stream.rewind();
    require(read(stream) && stream.tell() == stream.getSize());
}

void readNumbers(FMemoryStream& source) {
    std::int64_t number = 0;
    source.readInt64(number);
    roundTrip(
        source.getSwap(), [&](FStream& s) { return s.writeInt64(number); },
        [&](FStream& s) {
            std::int64_t again = 0;
            return s.readInt64(again) && again == number;
        });
    std::uint16_t values[3];
    source.readUInt16Array(values, 3);
    bool flag = false;
    source.readBool(flag);
    double real = 0;
    source.readDouble(real);
}

void readTexts(FMemoryStream& source) {
    char line[16];
    require(source.readLine(line, sizeof line) < static_cast<std::int32_t>(sizeof line));
    FString text;
    source.readTextLine(text);
    if (const auto str8 = source.readStr8()) {
        roundTrip(
            0, [&](FStream& s) { return s.writeStr8(str8.get()); },
            [&](FStream& s) { return std::strcmp(s.readStr8().get(), str8.get()) == 0; });
    }
    if (text.readString(source)) {
        roundTrip(
            0, [&](FStream& s) { return text.writeString(s); },
            [&](FStream& s) {
                FString again;
                // What spells the mark of 16-bit text itself is taken for it.
                return again.readString(s) && (again == text || !text.isAscii());
            });
    }
}

void readObjects(FMemoryStream& source) {
    FMemoryStream block;
    if (block.read(source)) {
        FMemoryStream written;
        require(block.write(written));
        written.rewind();
        FMemoryStream again;
        require(again.read(written) && FStream::compareStreams(block, again));
    }
    FNPath path;
    path.read(source);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) {
        return 0;
    }
    FMemoryStream source(static_cast<const void*>(data + 2), static_cast<std::int32_t>(size - 2));
    source.setSwap(data[0] & 1);
    for (int step = 0; step < 4; ++step) {
        switch ((data[1] >> (2 * step)) & 3) {
        case 0:
            readNumbers(source);
            break;
        case 1:
            readTexts(source);
            break;
        case 2:
            readObjects(source);
            break;
        default:
            source.seek(-3, SeekMode::fromHere);
        }
    }
    return 0;
}
