// The editor of this test: plays what it is given backwards, and adds a stretch of its own behind it.
//   plain_host_editor INPUT OUTPUT
#include "Editor.h"

#include "Objects.h"

#include <stdlib.h>

int main(int argc, char** argv) {
    if (argc != 3) {
        return 2;
    }
    char** arguments = utf8Arguments(argc, argv);
    Char16 input[PATH_UNITS];
    Char16 output[PATH_UNITS];
    toText16(arguments[1], input);
    toText16(arguments[2], output);
    WavFormat format;
    FILE* from = wavOpen(input, &format);
    CHECK(from != NULL && wavBytesPerFrame(&format) == FRAME_BYTES);
    const size_t frames = (size_t)format.frames;
    Frame* original = malloc(frames * sizeof *original);
    Frame* edited = malloc((frames + ADDED_FRAMES) * sizeof *edited);
    CHECK(original != NULL && edited != NULL && fread(original, sizeof *original, frames, from) == frames);
    fclose(from);
    editFrames(original, frames, edited);
    format.frames = 0;
    FILE* to = wavCreate(output, &format);
    CHECK(to != NULL && fwrite(edited, sizeof *edited, frames + ADDED_FRAMES, to) == frames + ADDED_FRAMES);
    format.frames = (int64_t)(frames + ADDED_FRAMES);
    CHECK(wavFlush(to, &format));
    fclose(to);
    free(edited);
    free(original);
    return 0;
}
