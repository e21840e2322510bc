// FStream: the one abstraction through which bytes move: files, memory, buffers, streams of the host.
//
// Abstract and reference counted. Above the raw operations stand the typed ones of FTypedStream; the same stream is
// reachable by a host through IHostStream, by queryInterface. A copy of a stream copies swap and file type, never the
// references others hold. No lock: one thread at a time.
#pragma once

#include "foundation/object/CmClass.h"
#include "persistence/paths/FFileType.h"
#include "persistence/streams/FHostStreamView.h"
#include "persistence/streams/FTypedStream.h"

#include <cstdint>

namespace tessera {

struct IStreamWatcher;

class FStream : public CmClass<FStream, CmObject>, public FTypedStream {
public:
    static FMetaClass metaClass;
    // What the copying and comparing operations move at a time.
    static constexpr std::int32_t kCopyBlockSize = 1024;

    FResult queryInterface(const FUIDBytes& uid, void** out) override;

    using CmObject::read;
    using CmObject::write;
    using FTypedStream::read;
    using FTypedStream::write;

    virtual void rewind();
    // True where nothing has to be flushed.
    virtual bool flush();
    // Streams without a use for a watcher ignore it.
    virtual void setWatcher(IStreamWatcher* watcher);
    // Copies up to size bytes from where the other stream stands to where this one does; gives the count copied.
    virtual std::int64_t copyFrom(FStream& other, std::int64_t size);
    // Copies the whole stream, from its start. False when the other takes less than it is given.
    virtual bool writeTo(FStream& other);

    // Rewinds both. False at the first difference or when one is longer.
    static bool compareStreams(FStream& a, FStream& b);

    // What the content is.
    const FFileType& getFileType() const { return fileType_; }
    void setFileType(const FFileType& type) { fileType_ = type; }

    IHostStream& hostView() { return hostView_; }

protected:
    FStream();
    FStream(const FStream& other);
    FStream& operator=(const FStream& other);
    ~FStream() override;

private:
    FFileType fileType_;
    FHostStreamView hostView_;
};

} // namespace tessera
