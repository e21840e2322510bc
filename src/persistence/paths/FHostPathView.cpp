#include "persistence/paths/FHostPathView.h"

#include "persistence/files/FPlainNamer.h"
#include "persistence/paths/FPath.h"
#include "persistence/paths/PathText.h"
#include "platform/NativePath.h"

#include <algorithm>

namespace tessera {

namespace {

FResult deliver(std::u16string_view text, char16_t* buffer, int length) {
    if (buffer == nullptr) {
        return kInvalidArgument;
    }
    const bool fits = text.size() < static_cast<std::size_t>(length);
    *std::copy_n(text.begin(), fits ? text.size() : 0, buffer) = u'\0';
    return fits ? kResultOk : kResultFalse;
}

PathKind kindFor(std::int32_t isFolder) {
    return isFolder != 0 ? PathKind::folder : PathKind::file;
}

} // namespace

FResult FHostPathView::queryInterface(const FUIDBytes& uid, void** out) {
    return owner_.queryInterface(uid, out);
}

std::uint32_t FHostPathView::addRef() {
    return owner_.addRef();
}

std::uint32_t FHostPathView::release() {
    return owner_.release();
}

FResult FHostPathView::path(char16_t* buffer) {
    std::u16string text(pathtext::viewOf(owner_.getFullPath()));
    std::replace(text.begin(), text.end(), kPathSeparator, platform::nativeSeparator());
    return deliver(text, buffer, kPathLength);
}

FResult FHostPathView::setPath(const char16_t* text, std::int32_t isFolder) {
    if (text == nullptr) {
        return kInvalidArgument;
    }
    owner_.set(text, kindFor(isFolder));
    return kResultOk;
}

FResult FHostPathView::setName(const char16_t* text) {
    owner_.setName(text);
    return kResultOk;
}

FResult FHostPathView::name(char16_t* buffer) {
    return deliver(pathtext::viewOf(owner_.getName()), buffer, kNameLength);
}

FResult FHostPathView::extension(char16_t* buffer) {
    FString text;
    owner_.getExtension(text);
    return deliver(pathtext::viewOf(text), buffer, kExtensionLength);
}

FResult FHostPathView::kind(std::int32_t* kind) {
    if (kind == nullptr) {
        return kInvalidArgument;
    }
    *kind = static_cast<std::int32_t>(owner_.getKind());
    return kResultOk;
}

FResult FHostPathView::append(const char16_t* name, std::int32_t isFolder) {
    if (name == nullptr) {
        return kInvalidArgument;
    }
    owner_.descend(name, kindFor(isFolder));
    return kResultOk;
}

FResult FHostPathView::setKind(std::int32_t kind) {
    if (kind >= 0) {
        owner_.setKind(static_cast<PathKind>(kind));
        return kResultOk;
    }
    owner_.setKind(PathKind::unknown);
    if (owner_.getKind() == PathKind::unknown) {
        owner_.setKind(PathKind::file);
    }
    return kResultOk;
}

FResult FHostPathView::ascend() {
    owner_.ascend();
    return kResultOk;
}

FResult FHostPathView::fileType(HostTypeRecord* record) {
    if (record == nullptr) {
        return kInvalidArgument;
    }
    owner_.fileType().toRecord(*record);
    return kResultOk;
}

FResult FHostPathView::makeUnique() {
    FPlainNamer namer;
    return owner_.makeUnique(namer) ? kResultOk : kResultFalse;
}

FResult FHostPathView::clone(IHostPath** out) {
    if (out == nullptr) {
        return kInvalidArgument;
    }
    *out = &static_cast<FPath*>(owner_.clone())->hostView();
    return kResultOk;
}

FResult FHostPathView::setFileType(const HostTypeRecord* record) {
    if (record == nullptr) {
        return kInvalidArgument;
    }
    owner_.setFileType(FFileType(*record));
    return kResultOk;
}

} // namespace tessera
