// FUrlFileHandler: the handler of "file": the machine's own files, through the file system of the process.
#pragma once

#include "persistence/urls/FUrlHandler.h"

namespace tessera {

class FUrlFileHandler : public CmClass<FUrlFileHandler, FUrlHandler> {
public:
    static FMetaClass metaClass;

    FResult isSupported(const char* key) const override;
    FStream* openFile(FUrl& url, std::uint32_t mode, std::int32_t* error) override;
    FStream* createFile(FUrl& url, std::uint32_t mode, std::int32_t* error) override;
    FFileIterator* newIterator(const FUrl& url, bool resolveLinks) override;
};

} // namespace tessera
