#include "persistence/urls/FUrlHandler.h"

namespace tessera {

std::uint16_t FUrlHandler::getDefaultPort() const {
    return 0;
}

FResult FUrlHandler::isSupported(const char*) const {
    return kResultFalse;
}

FStream* FUrlHandler::openFile(FUrl&, std::uint32_t, std::int32_t*) {
    return nullptr;
}

FStream* FUrlHandler::createFile(FUrl&, std::uint32_t, std::int32_t*) {
    return nullptr;
}

FFileIterator* FUrlHandler::newIterator(const FUrl&, bool) {
    return nullptr;
}

} // namespace tessera
