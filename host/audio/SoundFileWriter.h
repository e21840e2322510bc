// SoundFileWriter: makes one sound file out of frames as SampleKind lays them out. The counterpart of SoundFileReader:
// what one reads, the other writes back bit for bit.
//
// Owned by one thread. create() empties a file of that name, or gives nothing with a reason in *error. The file is
// complete after close(), or when the writer goes; after flush() what was written so far can be read by others, but for
// FLAC, whose totals are known at the end alone.
#pragma once

#include "host/audio/AudioFormat.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

struct sf_private_tag;

namespace tessera::host {

class SoundFileWriter {
public:
    static std::unique_ptr<SoundFileWriter> create(const std::string& path, const AudioFormat& format,
                                                   std::string* error);

    SoundFileWriter(const SoundFileWriter&) = delete;
    SoundFileWriter& operator=(const SoundFileWriter&) = delete;
    ~SoundFileWriter();

    const AudioFormat& format() const { return format_; }
    std::int64_t frames() const { return frames_; }

    // A remark that the file carries, before the first frame. Kinds of file that have no place for it go without.
    void setComment(const std::string& text);
    // The frames written, fewer only when the disk is full or the file has reached what its kind can hold.
    std::int64_t write(std::int64_t count, const void* buffer);
    void flush();
    // Once, at the end: nothing can be written any more. False when the file doesn't hold all that was written: the
    // last frames and the totals come to it only now, and the disk may be full.
    bool close();

private:
    SoundFileWriter(sf_private_tag* file, std::string path, const AudioFormat& format);
    std::int64_t writeNarrow(std::int64_t count, const std::uint8_t* in);
    bool finish();

    sf_private_tag* file_; // null once it is closed
    const std::string path_;
    const AudioFormat format_;
    std::int64_t frames_ = 0;
    std::vector<std::int32_t> wide_; // samples on their way from 8 or 24 bits
};

} // namespace tessera::host
