// The host's audio: streams on WAV files, clips that describe one, and the parts that events play.
#pragma once

#include "HostFile.h"
#include "WavFile.h"

// IAudioClip and IAudioClipAccess: an audio file as the host knows it. IAudioClipAccess is how the module makes one of
// a file: a new, empty clip that it binds to the file.
typedef struct AudioClip {
    Object object;
    HostFile* file;
    WavFormat format;
    Object* stream; // the one that was given away last
} AudioClip;

// IAudioPart, which IAudioClipFactory makes, and IFolderNode, its entry in the pool: what an event plays.
typedef struct AudioPart {
    Object object;
    AudioClip* clip;
} AudioPart;

AudioClip* makeClip(void);
// False if the file is no sound file of ours.
bool bindClip(AudioClip* clip, const HostFile* file);
double clipSeconds(const AudioClip* clip);
Interface* clipAccessInterface(AudioClip* clip);

AudioPart* makePart(void);
void bindPart(AudioPart* part, AudioClip* clip);
Interface* partInterface(AudioPart* part);

// IAudioWriterFactory: what a new file is to be, and the stream that writes it.
Object* makeWriterFactory(void);
