#include "Streams.h"

#include <stdlib.h>
#include <string.h>

typedef struct Stream {
    Object object;
    HostFile* file;
    WavFormat format;
    FILE* open;
    int64_t position;
    bool writes;
} Stream;

static Stream* streamOf(Face* self) {
    return (Stream*)self->object;
}

// A reader opens its file when it is needed first; a writer has it open from the start.
static bool isOpen(Stream* stream) {
    if (stream->open == NULL && !stream->writes) {
        stream->open = wavOpen(stream->file->path, &stream->format);
    }
    return stream->open != NULL;
}

static bool openStream(Face* self) {
    return isOpen(streamOf(self));
}

// All files of this host are of one kind, so that there is nothing for two streams to agree on. A host of several kinds
// has the writer take up the kind of its source here.
static void attach(Face* self, Interface* other) {
    CHECK(streamOf(self) != objectOf(other));
}

static int64_t frames(Face* self) {
    return streamOf(self)->format.frames;
}

static float sampleRate(Face* self) {
    return (float)streamOf(self)->format.sampleRate;
}

static int32_t bytesPerFrame(Face* self) {
    return wavBytesPerFrame(&streamOf(self)->format);
}

static int32_t bitsPerSample(Face* self) {
    return streamOf(self)->format.bits;
}

static int32_t channels(Face* self) {
    return streamOf(self)->format.channels;
}

static int32_t readFrames(Face* self, int32_t count, void* buffer) {
    Stream* stream = streamOf(self);
    if (stream->writes || count < 0 || !isOpen(stream)) {
        return 0;
    }
    const int64_t left = stream->format.frames - stream->position;
    const size_t wanted = (size_t)(count < left ? count : left);
    const size_t got = fread(buffer, (size_t)wavBytesPerFrame(&stream->format), wanted, stream->open);
    stream->position += (int64_t)got;
    return (int32_t)got;
}

static int32_t writeFrames(Face* self, int32_t count, const void* buffer, bool isLast) {
    Stream* stream = streamOf(self);
    if (!stream->writes || count < 0 || !isOpen(stream)) {
        return 0;
    }
    const size_t put = fwrite(buffer, (size_t)wavBytesPerFrame(&stream->format), (size_t)count, stream->open);
    stream->format.frames += (int64_t)put;
    // The last block of one copy need not be the last one of the file.
    if (isLast && !wavFlush(stream->open, &stream->format)) {
        return 0;
    }
    return (int32_t)put;
}

static bool seek(Face* self, int64_t frame) {
    Stream* stream = streamOf(self);
    if (!isOpen(stream)) {
        return false;
    }
    if (stream->writes) {
        return frame == 0 && stream->format.frames == 0;
    }
    if (!wavSeek(stream->open, &stream->format, frame)) {
        return false;
    }
    stream->position = frame;
    return true;
}

// The file of a writer is complete when its last reference has gone.
static void destroy(Object* object) {
    Stream* stream = (Stream*)object;
    if (stream->open != NULL) {
        CHECK(!stream->writes || wavFlush(stream->open, &stream->format));
        fclose(stream->open);
    }
    dropObject(&stream->file->object);
    free(stream);
}

static const Slot kTable[] = {
    BASE_SLOTS,
    [3] = (Slot)openStream,
    [5] = (Slot)attach,
    [7] = (Slot)frames,
    [8] = (Slot)sampleRate,
    [12] = (Slot)bytesPerFrame,
    [14] = (Slot)bitsPerSample,
    [18] = (Slot)channels,
    [24] = (Slot)readFrames,
    [25] = (Slot)writeFrames,
    [26] = (Slot)seek,
};

static const ObjectKind kKind = {"audio stream", destroy, {{NULL, kTable}}};

static Stream* makeStream(const HostFile* file, const WavFormat* format, bool writes) {
    Stream* stream = makeObject(sizeof *stream, &kKind);
    stream->file = cloneHostFile(file);
    stream->format = *format;
    stream->writes = writes;
    return stream;
}

Object* makeReadStream(const HostFile* file, const WavFormat* format) {
    return &makeStream(file, format, false)->object;
}

Object* makeWriteStream(const HostFile* file, const WavFormat* format) {
    FILE* open = wavCreate(file->path, format);
    if (open == NULL) {
        return NULL;
    }
    Stream* stream = makeStream(file, format, true);
    stream->open = open;
    return &stream->object;
}
