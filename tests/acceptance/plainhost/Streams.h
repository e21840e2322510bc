// IAudioStream in two kinds: one that reads a WAV file, one that writes it. Frames go from one to the other as they
// stand in the file.
#pragma once

#include "HostFile.h"
#include "WavFile.h"

// Not yet opened, with one reference for the caller.
Object* makeReadStream(const HostFile* file, const WavFormat* format);
// Null when no such file can be made. It stands on the disk from now on, so that its name is taken.
Object* makeWriteStream(const HostFile* file, const WavFormat* format);
