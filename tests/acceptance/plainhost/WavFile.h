// WAV files of whole numbers, as little of them as a host needs: frames in, frames out, as they stand in the file.
#pragma once

#include "System.h"

typedef struct WavFormat {
    int32_t channels;
    int32_t sampleRate;
    int32_t bits; // 8, 16, 24 or 32
    int64_t frames;
} WavFormat;

int32_t wavBytesPerFrame(const WavFormat* format);

// A file to read, at its first frame; null if it is no such file.
FILE* wavOpen(const Char16* path, WavFormat* format);
bool wavSeek(FILE* file, const WavFormat* format, int64_t frame);

// A new file with that format and no frame yet.
FILE* wavCreate(const Char16* path, const WavFormat* format);
// Writes the frames so far into the head of the file, and all of it to the disk. The position stays.
bool wavFlush(FILE* file, const WavFormat* format);
