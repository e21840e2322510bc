#include "Audio.h"

#include "Streams.h"

#include <stdlib.h>

static AudioClip* clipOf(Face* self) {
    return (AudioClip*)self->object;
}

static Interface* clipFile(Face* self) {
    return hostFileInterface(clipOf(self)->file);
}

static int32_t clipChannels(Face* self) {
    return clipOf(self)->format.channels;
}

static float clipSampleRate(Face* self) {
    return (float)clipOf(self)->format.sampleRate;
}

static int64_t clipFrames(Face* self) {
    return clipOf(self)->format.frames;
}

static int32_t clipBitsPerSample(Face* self) {
    return clipOf(self)->format.bits;
}

// A new one at each call. The clip keeps it alive until the next, which is how long a caller has to add a reference.
static Interface* clipStream(Face* self) {
    AudioClip* clip = clipOf(self);
    dropObject(clip->stream);
    clip->stream = makeReadStream(clip->file, &clip->format);
    return faceOf(clip->stream, 0);
}

static bool accessBind(Face* self, Interface* file) {
    return file != NULL && bindClip(clipOf(self), objectOf(file));
}

static bool accessFailed(Face* self) {
    return clipOf(self)->file == NULL;
}

static void destroyClip(Object* object) {
    AudioClip* clip = (AudioClip*)object;
    dropObject(clip->stream);
    dropObject(clip->file == NULL ? NULL : &clip->file->object);
    free(clip);
}

static const Slot kClipTable[] = {
    BASE_SLOTS,
    [3] = (Slot)clipFile,
    [7] = (Slot)clipChannels,
    [8] = (Slot)clipSampleRate,
    [9] = (Slot)clipFrames,
    [11] = (Slot)clipBitsPerSample,
    [13] = (Slot)clipStream,
};

static const Slot kAccessTable[] = {
    BASE_SLOTS,
    [3] = (Slot)accessBind,
    [4] = (Slot)accessFailed,
};

static const ObjectKind kClipKind = {
    "audio clip", destroyClip, {{&kClipAccess, kAccessTable}, {&kAudioClip, kClipTable}}};

AudioClip* makeClip(void) {
    return makeObject(sizeof(AudioClip), &kClipKind);
}

bool bindClip(AudioClip* clip, const HostFile* file) {
    FILE* open = wavOpen(file->path, &clip->format);
    if (open == NULL) {
        return false;
    }
    fclose(open);
    clip->file = cloneHostFile(file);
    return true;
}

double clipSeconds(const AudioClip* clip) {
    return (double)clip->format.frames / clip->format.sampleRate;
}

Interface* clipAccessInterface(AudioClip* clip) {
    return faceOf(&clip->object, 0);
}

static AudioPart* partOf(Face* self) {
    return (AudioPart*)self->object;
}

static Interface* partClip(Face* self) {
    AudioClip* clip = partOf(self)->clip;
    return clip == NULL ? NULL : faceOf(&clip->object, 1);
}

static bool partBind(Face* self, Interface* clip) {
    bindPart(partOf(self), objectOf(clip));
    return true;
}

static void destroyPart(Object* object) {
    AudioPart* part = (AudioPart*)object;
    dropObject(part->clip == NULL ? NULL : &part->clip->object);
    free(part);
}

static const Slot kPartTable[] = {
    BASE_SLOTS,
    [3] = (Slot)partClip,
    [4] = (Slot)partBind,
};

// Known by its identity alone.
static const Slot kNodeTable[] = {BASE_SLOTS};

static const ObjectKind kPartKind = {
    "audio part", destroyPart, {{&kClipFactory, kPartTable}, {&kFolderNode, kNodeTable}}};

AudioPart* makePart(void) {
    return makeObject(sizeof(AudioPart), &kPartKind);
}

void bindPart(AudioPart* part, AudioClip* clip) {
    CHECK(part->clip == NULL);
    keepObject(&clip->object);
    part->clip = clip;
}

Interface* partInterface(AudioPart* part) {
    return faceOf(&part->object, 0);
}

typedef struct WriterFactory {
    Object object;
    HostFile* file;
    WavFormat format;
} WriterFactory;

static WriterFactory* factoryOf(Face* self) {
    return (WriterFactory*)self->object;
}

static void writerSetFile(Face* self, Interface* file) {
    CHECK(factoryOf(self)->file == NULL);
    factoryOf(self)->file = cloneHostFile(objectOf(file));
}

// 2 and 0, for 32 and 8 bits, leave this host no choice.
static void writerSetSampleKind(Face* self, int32_t kind) {
    CHECK(kind == (factoryOf(self)->format.bits == 32 ? 2 : 0));
}

static void writerSetChannels(Face* self, int32_t channels) {
    factoryOf(self)->format.channels = channels;
}

static void writerSetSampleRate(Face* self, float framesPerSecond) {
    factoryOf(self)->format.sampleRate = (int32_t)framesPerSecond;
}

static void writerSetBitsPerSample(Face* self, int32_t bits) {
    factoryOf(self)->format.bits = bits;
}

static Interface* writerCreate(Face* self) {
    const WriterFactory* factory = factoryOf(self);
    Object* stream = factory->file == NULL ? NULL : makeWriteStream(factory->file, &factory->format);
    return stream == NULL ? NULL : faceOf(stream, 0);
}

static void destroyFactory(Object* object) {
    WriterFactory* factory = (WriterFactory*)object;
    dropObject(factory->file == NULL ? NULL : &factory->file->object);
    free(factory);
}

static const Slot kWriterTable[] = {
    BASE_SLOTS,
    [5] = (Slot)writerSetFile,
    [6] = (Slot)writerSetSampleKind,
    [7] = (Slot)writerSetChannels,
    [8] = (Slot)writerSetSampleRate,
    [9] = (Slot)writerSetBitsPerSample,
    [10] = (Slot)writerCreate,
};

static const ObjectKind kWriterKind = {"audio writer factory", destroyFactory, {{&kWriterFactory, kWriterTable}}};

Object* makeWriterFactory(void) {
    return makeObject(sizeof(WriterFactory), &kWriterKind);
}
