#include "persistence/paths/FileTypeRegistry.h"

#include "foundation/object/FArray.h"
#include "persistence/paths/FFileType.h"
#include "persistence/streams/FStream.h"

namespace tessera {

namespace {

constexpr std::int32_t kTableGrowth = 10;
constexpr std::int32_t kDetectedBytes = 1024;

FArray<const FFileType*>& registeredTypes() {
    static FArray<const FFileType*> types(kTableGrowth);
    return types;
}

FArray<FileTypeDetector>& registeredDetectors() {
    static FArray<FileTypeDetector> detectors(kTableGrowth);
    return detectors;
}

} // namespace

void registerFileType(const FFileType& type) {
    registeredTypes().add(&type);
}

const FFileType* findFileType(const FStringRef& extension) {
    const FFileType wanted(FStringRef(), extension, 0u, extension, extension);
    for (const FFileType* type : registeredTypes()) {
        if (type->isEqual(&wanted)) {
            return type;
        }
    }
    return nullptr;
}

void registerFileTypeDetector(FileTypeDetector detector) {
    registeredDetectors().add(detector);
}

const FFileType* detectFileType(FStream& stream) {
    const std::int64_t position = stream.tell();
    stream.rewind();
    std::uint8_t buffer[kDetectedBytes] = {};
    const std::int32_t count = stream.read(buffer, kDetectedBytes);
    stream.seek(position, SeekMode::fromStart);
    if (count <= 0) {
        return nullptr;
    }
    for (FileTypeDetector detector : registeredDetectors()) {
        if (const FFileType* type = detector(buffer, count)) {
            return type;
        }
    }
    return nullptr;
}

// Never destroyed: the process-wide table of types may point at it to the very end.
const FFileType& textFileType() {
    static const FFileType& type = *new FFileType("Text File", "txt", "TEXT", "txt", "text/plain");
    return type;
}

} // namespace tessera
