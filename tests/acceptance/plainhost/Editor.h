// What the editor of this test does to a sound, for itself and for whoever checks what came back.
#pragma once

#include "WavFile.h"

// Two channels of 24 bits.
#define CHANNELS 2
#define BITS 24
#define FRAME_BYTES 6
#define ADDED_FRAMES 250

typedef struct Frame {
    uint8_t bytes[FRAME_BYTES];
} Frame;
static_assert(sizeof(Frame) == FRAME_BYTES, "frames stand behind each other as in the file");

static inline Frame addedFrame(size_t number) {
    const Frame frame = {{0, (uint8_t)number, (uint8_t)(number >> 8), 0, (uint8_t)(number * 3), 1}};
    return frame;
}

// Into room for ADDED_FRAMES more.
static inline void editFrames(const Frame* original, size_t frames, Frame* edited) {
    for (size_t i = 0; i < frames; ++i) {
        edited[i] = original[frames - 1 - i];
    }
    for (size_t i = 0; i < ADDED_FRAMES; ++i) {
        edited[frames + i] = addedFrame(i);
    }
}
