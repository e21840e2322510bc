#include "WavFile.h"

#include <string.h>

#define HEAD_BYTES 44

static uint32_t numberIn(const uint8_t* bytes, int count) {
    uint32_t number = 0;
    for (int i = count - 1; i >= 0; --i) {
        number = number << 8 | bytes[i];
    }
    return number;
}

static void putNumber(uint8_t* bytes, int count, uint32_t number) {
    for (int i = 0; i < count; ++i) {
        bytes[i] = (uint8_t)(number >> (8 * i));
    }
}

int32_t wavBytesPerFrame(const WavFormat* format) {
    return format->channels * format->bits / 8;
}

static bool readFormat(FILE* file, uint32_t size, WavFormat* format) {
    uint8_t bytes[16];
    if (size < sizeof bytes || fread(bytes, sizeof bytes, 1, file) != 1) {
        return false;
    }
    format->channels = (int32_t)numberIn(bytes + 2, 2);
    format->sampleRate = (int32_t)numberIn(bytes + 4, 4);
    format->bits = (int32_t)numberIn(bytes + 14, 2);
    return fseek(file, (long)(size - sizeof bytes), SEEK_CUR) == 0;
}

// Leaves the file at its first frame.
static bool readChunks(FILE* file, WavFormat* format) {
    uint8_t head[12];
    if (fread(head, sizeof head, 1, file) != 1 || memcmp(head, "RIFF", 4) != 0 || memcmp(head + 8, "WAVE", 4) != 0) {
        return false;
    }
    uint8_t chunk[8];
    while (fread(chunk, sizeof chunk, 1, file) == 1) {
        const uint32_t size = numberIn(chunk + 4, 4);
        if (memcmp(chunk, "data", 4) == 0) {
            const int32_t bytes = wavBytesPerFrame(format);
            format->frames = bytes > 0 ? size / (uint32_t)bytes : 0;
            return bytes > 0;
        }
        if (memcmp(chunk, "fmt ", 4) == 0 ? !readFormat(file, size, format)
                                          : fseek(file, (long)(size + size % 2), SEEK_CUR) != 0) {
            return false;
        }
    }
    return false;
}

FILE* wavOpen(const Char16* path, WavFormat* format) {
    memset(format, 0, sizeof *format);
    FILE* file = openFile(path, "rb");
    if (file != NULL && !readChunks(file, format)) {
        fclose(file);
        return NULL;
    }
    return file;
}

bool wavSeek(FILE* file, const WavFormat* format, int64_t frame) {
    WavFormat read = {0};
    if (frame < 0 || frame > format->frames) {
        return false;
    }
    rewind(file);
    return readChunks(file, &read) && fseek(file, (long)(frame * wavBytesPerFrame(format)), SEEK_CUR) == 0;
}

static bool writeHead(FILE* file, const WavFormat* format) {
    const uint32_t frameBytes = (uint32_t)wavBytesPerFrame(format);
    const uint32_t dataBytes = (uint32_t)format->frames * frameBytes;
    uint8_t head[HEAD_BYTES] = "RIFF";
    memcpy(head + 8, "WAVEfmt ", 8);
    memcpy(head + 36, "data", 4);
    putNumber(head + 4, 4, HEAD_BYTES - 8 + dataBytes);
    putNumber(head + 16, 4, 16);
    putNumber(head + 20, 2, 1); // whole numbers
    putNumber(head + 22, 2, (uint32_t)format->channels);
    putNumber(head + 24, 4, (uint32_t)format->sampleRate);
    putNumber(head + 28, 4, (uint32_t)format->sampleRate * frameBytes);
    putNumber(head + 32, 2, frameBytes);
    putNumber(head + 34, 2, (uint32_t)format->bits);
    putNumber(head + 40, 4, dataBytes);
    return fwrite(head, sizeof head, 1, file) == 1;
}

FILE* wavCreate(const Char16* path, const WavFormat* format) {
    FILE* file = openFile(path, "wb");
    if (file != NULL && !writeHead(file, format)) {
        fclose(file);
        return NULL;
    }
    return file;
}

bool wavFlush(FILE* file, const WavFormat* format) {
    rewind(file);
    return writeHead(file, format) && fseek(file, 0, SEEK_END) == 0 && fflush(file) == 0;
}
