#include "persistence/paths/FPath.h"

#include "persistence/objects/PersistenceHooks.h"
#include "persistence/paths/PathText.h"
#include "platform/Files.h"

#include <algorithm>

namespace tessera {

using pathtext::closeFolder;
using pathtext::endsInSeparator;
using pathtext::isMeaningless;
using pathtext::stringOf;
using pathtext::viewOf;
using pathtext::wideText;

bool FPath::savesFileTypes_ = true;

FPath::FPath(PathKind kind) : kind_(static_cast<std::int16_t>(kind)), hostView_(*this) {}

FPath::FPath(const FPath& other)
    : CmClass(other),
      name_(other.name_),
      fileType_(other.fileType_),
      flags_(other.flags_),
      kind_(other.kind_),
      path_(other.path_),
      hostView_(*this) {}

FPath& FPath::operator=(const FPath& other) {
    if (this != &other) {
        name_ = other.name_;
        fileType_ = other.fileType_;
        flags_ = other.flags_;
        kind_ = other.kind_;
        path_ = other.path_;
    }
    return *this;
}

FPath::~FPath() = default;

FResult FPath::queryInterface(const FUIDBytes& uid, void** out) {
    if (uid == IHostPath::iid || uid == IHostPath::secondIid) {
        addRef();
        *out = static_cast<IHostPath*>(&hostView_);
        return kResultOk;
    }
    return CmClass::queryInterface(uid, out);
}

CmObject* FPath::clone() const {
    return new FPath(*this);
}

void FPath::setName(const FStringRef& text) {
    name_ = text;
}

const FString& FPath::getName() const {
    return name_;
}

bool FPath::getExtension(FString& out) const {
    const std::int32_t start = findExtension(true);
    if (start < 0) {
        return false;
    }
    out = stringOf(viewOf(name_).substr(static_cast<std::size_t>(start)));
    return true;
}

bool FPath::getBaseName(FString& out, bool useType) const {
    const std::int32_t start = findExtension(useType);
    if (start < 0) {
        out = name_;
        return true;
    }
    out = stringOf(viewOf(name_).substr(0, static_cast<std::size_t>(start) - 1));
    return true;
}

bool FPath::makeUnique(IUniqueNamer&) {
    return false;
}

void FPath::setFileType(const FFileType& type) {
    fileType_ = type;
}

void FPath::ensureExtension(bool) {}

void FPath::updateFileType(bool) {
    const std::int32_t start = findExtension(false);
    setExtensionAsType(start < 0 ? FString(kUnknownExtension)
                                 : stringOf(viewOf(name_).substr(static_cast<std::size_t>(start))));
}

void FPath::setExtensionAsType(const FStringRef& extension) {
    fileType_.setDosType(extension);
    fileType_.setUnixType(extension);
}

bool FPath::isFile() const {
    return getKind() == PathKind::file;
}

bool FPath::isFolder() const {
    return getKind() == PathKind::folder || getKind() == PathKind::container;
}

bool FPath::isLink() const {
    return getKind() == PathKind::link;
}

bool FPath::isContainer() const {
    return getKind() == PathKind::container;
}

bool FPath::hasKindMark() const {
    return kind_ >= 0 && (kind_ & kKindMark) != 0;
}

bool FPath::isVisible() const {
    return (flags_ & kHiddenFlag) == 0;
}

void FPath::descend(const FStringRef& name, PathKind kind) {
    std::u16string folder(viewOf(path_));
    closeFolder(folder);
    const std::u16string_view step = viewOf(name_);
    if (!step.empty()) {
        folder.append(step).push_back(kPathSeparator);
    }
    // The name may be a view into this object's own text.
    const FString newName(name);
    // What lies below bytes that mean nothing names nothing either.
    if (isMeaningless(name_)) {
        path_ = name_;
    } else if (!isMeaningless(path_)) {
        path_ = stringOf(folder);
    }
    name_ = newName;
    setKind(kind);
}

bool FPath::ascend() {
    setKind(PathKind::folder);
    std::u16string folder(viewOf(path_));
    if ((endsInSeparator(folder) || folder.ends_with(u':')) && isRootPath(path_)) {
        name_.clear();
        if (endsInSeparator(folder) && folder[0] != kPathSeparator) {
            folder.pop_back();
            path_ = stringOf(folder);
        }
        return true;
    }
    while (endsInSeparator(folder)) {
        folder.pop_back();
    }
    const std::size_t separator = folder.rfind(kPathSeparator);
    if (separator == std::u16string::npos) {
        path_ = stringOf(folder);
        return false;
    }
    name_ = stringOf(folder.substr(separator + 1));
    path_ = stringOf(folder.substr(0, separator + 1));
    return true;
}

bool FPath::parentIsRoot() const {
    FString text(path_);
    text.append(name_);
    return isRootPath(text);
}

bool FPath::isAbsolute() const {
    return isAbsolutePath(getFullPath());
}

const FString& FPath::getPath() const {
    return path_;
}

void FPath::setPath(const FStringRef& text) {
    FString given(text);
    if (isMeaningless(given)) {
        path_ = given;
        return;
    }
    std::u16string folder(viewOf(given));
    closeFolder(folder);
    path_ = stringOf(folder);
}

void FPath::getFullPath(FString& out) const {
    if (isMeaningless(path_) || isMeaningless(name_)) {
        out.clear();
        return;
    }
    const std::u16string_view name = viewOf(name_);
    std::u16string text(viewOf(path_));
    if (!name.empty()) {
        closeFolder(text);
        text.append(name);
    }
    out = stringOf(text);
}

FString FPath::getFullPath() const {
    FString text;
    getFullPath(text);
    return text;
}

void FPath::set(const FStringRef& text, PathKind kind) {
    std::u16string folder = wideText(text);
    setKind(kind);
    path_ = stringOf(folder);
    if (isRootPath(path_)) {
        setKind(PathKind::folder);
        return;
    }
    if (endsInSeparator(folder)) {
        folder.pop_back();
        path_ = stringOf(folder);
    }
    const std::size_t separator = folder.rfind(kPathSeparator);
    if (separator != std::u16string::npos) {
        name_ = stringOf(folder.substr(separator + 1));
        path_ = stringOf(folder.substr(0, separator + 1));
    }
}

bool FPath::isRootPath(const FStringRef& text) const {
    return wideText(text) == u"\\";
}

bool FPath::sanitize(char16_t) {
    return false;
}

std::int32_t FPath::getCachedSize() const {
    return 0;
}

void FPath::getNativePath(char16_t* buffer) const {
    const std::u16string_view folder = viewOf(path_);
    const std::u16string_view name = viewOf(name_);
    buffer[0] = u'\0';
    if (isMeaningless(path_) || isMeaningless(name_)) {
        return;
    }
    if (folder.size() + name.size() < kPathBufferLength) {
        *std::copy(name.begin(), name.end(), std::copy(folder.begin(), folder.end(), buffer)) = u'\0';
    }
}

void FPath::setNativePath(const FStringRef& text) {
    set(text, getKind());
}

std::int32_t FPath::findExtension(bool useType) const {
    const std::u16string_view name = viewOf(name_);
    const std::size_t dot = name.rfind(u'.');
    if (dot == std::u16string_view::npos) {
        return -1;
    }
    const std::u16string_view tail = name.substr(dot + 1);
    bool valid = false;
    if (useType && fileType_.isDefined()) {
        // A type that has no such text has no such extension: "Song 1." isn't a document of the type "xml".
        const FString extension = stringOf(tail);
        valid = !tail.empty() && (extension.compare(fileType_.getDosType(), -1, FCase::ignore) == 0 ||
                                  extension.compare(fileType_.getUnixType(), -1, FCase::ignore) == 0);
    } else {
        valid = tail.find(u' ') == std::u16string_view::npos;
    }
    return valid ? static_cast<std::int32_t>(dot + 1) : -1;
}

const FFileType& FPath::getFileType() {
    if (isFolder()) {
        if (fileType_.getName().isEmpty()) {
            fileType_.setName(translateText("Directory"));
        }
    } else if (!fileType_.isDefined()) {
        updateFileType(true);
    }
    return fileType_;
}

PathKind FPath::getKind() const {
    resolveKind();
    return kind_ < 0 ? PathKind::unknown : static_cast<PathKind>(kind_ & ~kKindMark);
}

void FPath::setKind(PathKind kind) {
    kind_ = static_cast<std::int16_t>(kind);
}

void FPath::setKindMark(bool mark) {
    if (kind_ >= 0) {
        kind_ = static_cast<std::int16_t>(mark ? kind_ | kKindMark : kind_ & ~kKindMark);
    }
}

void FPath::resolveKind() const {
    if (kind_ >= 0) {
        return;
    }
    switch (platform::fileKindOf(viewOf(getFullPath()))) {
    case platform::FileKind::missing:
        break;
    case platform::FileKind::file:
        kind_ = static_cast<std::int16_t>(PathKind::file);
        break;
    case platform::FileKind::folder:
        kind_ = static_cast<std::int16_t>(PathKind::folder);
        break;
    }
}

void FPath::setVisible(bool visible) {
    flags_ = static_cast<std::uint16_t>(visible ? flags_ & ~kHiddenFlag : flags_ | kHiddenFlag);
}

} // namespace tessera
