// FUrlHandler: opens what URLs of one scheme name. Each operation of this class answers with nothing.
//
// Streams and iterators that are handed out carry one reference for the caller. One thread at a time.
#pragma once

#include "foundation/object/CmClass.h"
#include "foundation/object/IBaseUnknown.h"

#include <cstdint>

namespace tessera {

class FFileIterator;
class FStream;
class FUrl;

class FUrlHandler : public CmClass<FUrlHandler, CmObject> {
public:
    static FMetaClass metaClass;

    // 0 for none.
    virtual std::uint16_t getDefaultPort() const;
    // kResultOk for what it can do of "CanRead", "CanWrite" and "CanIterate"; kResultFalse for all else.
    virtual FResult isSupported(const char* key) const;
    // mode is a word of FileOpenMode; error may be null.
    virtual FStream* openFile(FUrl& url, std::uint32_t mode, std::int32_t* error);
    virtual FStream* createFile(FUrl& url, std::uint32_t mode, std::int32_t* error);
    virtual FFileIterator* newIterator(const FUrl& url, bool resolveLinks);
};

} // namespace tessera
