// Binary form: the name as a string, the file type, a 32-bit tag, and what the tag says:
//   1  16-bit kind, the folder as a string; the form that is written
//   2  the same, the folder with "/"
//   0  an older record: 42 bytes, which begin with a kind and are passed over; the folder is empty
// With any other tag nothing more is read, and the folder is empty. Where no kind is read the path keeps its own.
//
// As a tree: "Name" and "Path" as texts and "Type" as an integer, each only where there is something, and the tree
// "FileType". An integer "PathType" is read and never written: files that were made elsewhere have it, and with any
// other value than 1 their "Path" has "/".
#include "persistence/attributes/FAttributes.h"
#include "persistence/paths/FPath.h"
#include "persistence/paths/PathRules.h"
#include "persistence/paths/PathText.h"
#include "persistence/streams/FStream.h"

namespace tessera {

namespace {

enum FormatTag : std::int32_t { kOldRecord = 0, kBackslashes = 1, kSlashes = 2 };

constexpr const char* kName = "Name";
constexpr const char* kPath = "Path";
constexpr const char* kType = "Type";
constexpr const char* kFileType = "FileType";
constexpr const char* kPathType = "PathType";
constexpr std::int64_t kWithBackslashes = 1;

bool skipOldRecord(FStream& stream) {
    char ignored[2 + 2 + 4 + 2 + 32];
    constexpr auto kSize = static_cast<std::int32_t>(sizeof ignored);
    return stream.read(ignored, kSize) == kSize;
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
        return skipOldRecord(stream);
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

bool FPath::storeAttributes(FAttributes& attributes) const {
    if ((!name_.isEmpty() && !attributes.setString(kName, name_)) ||
        (!path_.isEmpty() && !attributes.setString(kPath, path_)) || (kind_ != 0 && !attributes.setInt(kType, kind_))) {
        return false;
    }
    return !savesFileTypes() || isFolder() || !fileType_.isDefined() || attributes.setAttributes(kFileType, fileType_);
}

bool FPath::restoreAttributes(FAttributes& attributes) {
    name_.clear();
    path_.clear();
    attributes.getString(kName, name_);
    attributes.getString(kPath, path_);
    std::int64_t kind = 0;
    attributes.getInt(kType, kind);
    kind_ = static_cast<std::int16_t>(kind);
    std::int64_t pathType = kWithBackslashes;
    attributes.getInt(kPathType, pathType);
    if (pathType != kWithBackslashes) {
        path_.replaceChars("/", kPathSeparator);
    }
    if (!name_.isEmpty() && !path_.isEmpty() && !pathtext::endsInSeparator(pathtext::viewOf(path_))) {
        path_.appendChar(kPathSeparator);
    }
    // The kind may have to be found out from the system, which takes the whole path.
    if (!isFolder()) {
        attributes.getAttributesInto(kFileType, fileType_);
    }
    return true;
}

} // namespace tessera
