#include "persistence/paths/FNPath.h"

#include "persistence/files/FFileSystem.h"
#include "persistence/objects/PersistenceHooks.h"
#include "persistence/paths/FileTypeRegistry.h"
#include "persistence/paths/IUniqueNamer.h"
#include "persistence/paths/PathText.h"
#include "persistence/streams/FStream.h"
#include "persistence/streams/FileOpenMode.h"
#include "platform/Files.h"

#include <algorithm>

namespace tessera {

namespace {

using pathtext::isMeaningless;
using pathtext::stringOf;
using pathtext::viewOf;

// A name with its extension takes no more than a path buffer, its NUL included.
constexpr std::int32_t kLongestName = kPathBufferLength - 1;

// A folder's text for what lies in it; of one with bytes that mean nothing these bytes, so that the inner path names
// nothing either.
FString folderTextOf(const FPath& folder) {
    for (const FString* part : {&folder.getName(), &folder.getPath()}) {
        if (isMeaningless(*part)) {
            return *part;
        }
    }
    return folder.getFullPath();
}

// Answers a namer's questions about names beside the given path.
class SiblingChecker final : public ICandidateChecker {
public:
    SiblingChecker(const FNPath& path, const FString& extension) : path_(path), extension_(extension) {}

    bool isValid(const FStringRef& candidate) override {
        return viewOf(pathFor(candidate).getFullPath()).size() < kPathBufferLength;
    }

    bool isTaken(const FStringRef& candidate) override {
        FFileSystem* files = FFileSystem::getInstance();
        const FNPath path = pathFor(candidate);
        return files != nullptr && (path.isFolder() ? files->folderExists(path) : files->fileExists(path));
    }

    FString nameFor(const FStringRef& candidate) const {
        FString name(candidate);
        if (!extension_.isEmpty()) {
            name.appendChar(u'.');
            name.append(extension_);
        }
        return name;
    }

private:
    FNPath pathFor(const FStringRef& candidate) const {
        FNPath path(path_);
        path.setName(nameFor(candidate));
        return path;
    }

    const FNPath& path_;
    const FString& extension_;
};

} // namespace

FNPath::FNPath(const FStringRef& text, PathKind kind) {
    FNPath::set(text, kind);
}

FNPath::FNPath(const FStringRef& name, PathFolder folder, PathKind kind, const FStringRef& subFolder, bool create)
    : CmClass(kind) {
    name_ = name;
    const FNPath* place = pathFolder(folder);
    if (place == nullptr) {
        return;
    }
    setPath(place->getFullPath());
    if (!subFolder.isEmpty()) {
        FNPath inner(subFolder, *place, PathKind::folder);
        setPath(folderTextOf(inner));
    }
    if (create || !subFolder.isEmpty()) {
        // The path is what was asked for even where the folder can't be made: opening a file there will say why.
        std::int32_t ignored = 0;
        platform::createFolders(viewOf(path_), ignored);
    }
}

FNPath::FNPath(const FStringRef& name, const FPath& parent, PathKind kind) : CmClass(kind) {
    setPath(folderTextOf(parent));
    name_ = name;
}

FNPath::FNPath(IHostPath& path) {
    char16_t text[IHostPath::kPathLength] = {};
    std::int32_t kind = 0;
    HostTypeRecord record{};
    // What a host leaves out stays empty, a file, and without a type.
    path.path(text);
    path.kind(&kind);
    path.fileType(&record);
    const bool known = kind >= 0 && kind <= static_cast<std::int32_t>(PathKind::container);
    FNPath::set(text, known ? static_cast<PathKind>(kind) : PathKind::file);
    fileType_.fromRecord(record);
}

FNPath::FNPath(const FNPath& other) = default;
FNPath& FNPath::operator=(const FNPath& other) = default;
FNPath::~FNPath() = default;

CmObject* FNPath::clone() const {
    return new FNPath(*this);
}

bool FNPath::makeUnique(IUniqueNamer& namer) {
    if (name_.isEmpty()) {
        name_ = translateText("Untitled");
    }
    FString extension;
    FString base;
    getExtension(extension);
    getBaseName(base, true);
    if (base.isEmpty()) {
        base = "file";
    }
    SiblingChecker checker(*this, extension);
    FString name;
    if (!namer.makeName(base, extension, checker, name)) {
        return false;
    }
    name_ = checker.nameFor(name);
    return true;
}

void FNPath::ensureExtension(bool replaceExisting) {
    const FString& extension = fileType_.getDosType();
    if (extension.isEmpty() || isMeaningless(name_) || findExtension(true) >= 0) {
        return;
    }
    std::u16string name(viewOf(name_));
    const std::int32_t present = findExtension(false);
    if (replaceExisting && present >= 0) {
        name.resize(static_cast<std::size_t>(present) - 1);
    }
    const std::u16string_view wanted = viewOf(extension);
    name.resize(std::min(name.size(), kLongestName - std::min<std::size_t>(wanted.size(), kLongestName)));
    name_ = stringOf(name.append(u".").append(wanted));
}

void FNPath::updateFileType(bool mayReadContent) {
    fileType_.clear();
    if (getKind() == PathKind::folder) {
        return;
    }
    FString extension(kUnknownExtension);
    if (getExtension(extension)) {
        if (const FFileType* type = findFileType(extension)) {
            fileType_ = *type;
            return;
        }
    }
    if (mayReadContent && detectType()) {
        return;
    }
    setExtensionAsType(extension);
}

bool FNPath::detectType() {
    FFileSystem* files = FFileSystem::getInstance();
    FStream* stream =
        files != nullptr ? files->openFile(*this, FileOpenMode::read | FileOpenMode::shareRead, nullptr) : nullptr;
    if (stream == nullptr) {
        return false;
    }
    const FFileType* type = detectFileType(*stream);
    files->closeStream(stream);
    if (type != nullptr) {
        fileType_ = *type;
    }
    return type != nullptr;
}

void FNPath::set(const FStringRef& text, PathKind kind) {
    setKind(kind);
    setNativePath(text);
}

bool FNPath::isRootPath(const FStringRef& text) const {
    return tessera::isRootPath(text);
}

bool FNPath::sanitize(char16_t replacement) {
    FFileSystem* files = FFileSystem::getInstance();
    if (files == nullptr) {
        return false;
    }
    const bool nameChanged = files->sanitizeName(name_, replacement, false);
    const bool pathChanged = files->sanitizePath(path_, replacement);
    return nameChanged || pathChanged;
}

std::int32_t FNPath::getCachedSize() const {
    return cachedSize_ == -1 ? 0 : cachedSize_;
}

void FNPath::setNativePath(const FStringRef& text) {
    if (text.isNull()) {
        return;
    }
    std::u16string work = pathtext::wideText(text);
    std::replace(work.begin(), work.end(), u'/', kPathSeparator);
    if (work.size() >= 2 && work[1] == u':' && work[0] >= u'a' && work[0] <= u'z') {
        work[0] = static_cast<char16_t>(work[0] - u'a' + u'A');
    }
    if (work.starts_with(u".\\")) {
        work.erase(0, 2);
    }
    if (work.size() > 1 && pathtext::endsInSeparator(work)) {
        work.pop_back();
    }
    // A single character is a name like any other, unless it is the root of the file tree.
    const bool isName = work.size() == 1 && work[0] != kPathSeparator;
    if (!isName && isRootPath(FStringRef(work.c_str(), static_cast<std::int32_t>(work.size())))) {
        path_ = stringOf(work);
        name_.clear();
        setKind(PathKind::folder);
        return;
    }
    const std::size_t nameStart = work.rfind(kPathSeparator) + 1;
    path_ = stringOf(std::u16string_view(work).substr(0, nameStart));
    name_ = stringOf(std::u16string_view(work).substr(nameStart));
}

} // namespace tessera
