// Binary form: the name as a string, the file type, a 32-bit tag, and what the tag says:
//   1  16-bit kind, the folder as a string; the form that is written
//   2  the same, the folder with "/"
//   0  an older record: 16-bit kind and 40 bytes that mean nothing any more; no folder
// With any other tag nothing more is read, and the folder is empty.
#include "persistence/paths/FPath.h"
#include "persistence/paths/PathRules.h"
#include "persistence/streams/FStream.h"

namespace tessera {

namespace {

enum FormatTag : std::int32_t { kOldRecord = 0, kBackslashes = 1, kSlashes = 2 };

constexpr std::int32_t kOldRecordRest = 2 + 4 + 2 + 32;

bool skip(FStream& stream, std::int32_t count) {
    char ignored[kOldRecordRest];
    return stream.read(ignored, count) == count;
}

} // namespace

bool FPath::read(FStream& stream) {
    std::int32_t tag = 0;
    path_.clear();
    if (!name_.readString(stream) || !fileType_.read(stream) || !stream.readInt32(tag)) {
        return false;
    }
    switch (tag) {
    case kOldRecord:
        return stream.readInt16(kind_) && skip(stream, kOldRecordRest);
    case kBackslashes:
        return stream.readInt16(kind_) && path_.readString(stream);
    case kSlashes:
        if (!stream.readInt16(kind_) || !path_.readString(stream)) {
            return false;
        }
        path_.replaceChars("/", kPathSeparator);
        return true;
    default:
        return true;
    }
}

bool FPath::write(FStream& stream) const {
    return name_.writeString(stream) && fileType_.write(stream) && stream.writeInt32(kBackslashes) &&
           stream.writeInt16(kind_) && path_.writeString(stream);
}

} // namespace tessera
