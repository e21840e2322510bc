// Relative paths: what one means under a folder, and the way from a folder to a file.
#include "foundation/object/FRefPtr.h"
#include "persistence/paths/FPath.h"
#include "persistence/paths/PathText.h"

#include <algorithm>

namespace tessera {

namespace {

constexpr std::u16string_view kUpwards = u"..\\";
constexpr std::u16string_view kHere = u".";
constexpr std::u16string_view kAbove = u"..";

FRefPtr<FPath> copyOf(const FPath& path) {
    return FRefPtr<FPath>::adopt(static_cast<FPath*>(path.clone()));
}

// False at a root, where going up would change nothing any more.
bool goUp(FPath& path) {
    return !path.parentIsRoot() && path.ascend();
}

// The folders between the deepest common folder and the target, each closed by a separator; common ends as that folder.
// False when there is none.
bool collectDescent(FPath& common, const FPath& base, std::u16string& way) {
    while (goUp(common)) {
        if (FPath::comparePaths(&common, &base, false) == 0 || common.isParentOf(&base)) {
            return true;
        }
        way.insert(0, std::u16string(pathtext::viewOf(common.getName())) + kPathSeparator);
    }
    return false;
}

// One step up for each folder that base lies below the common one.
bool prependAscent(const FPath& common, const FPath& base, std::u16string& way) {
    const FRefPtr<FPath> level = copyOf(base);
    while (FPath::comparePaths(level.get(), &common, false) != 0) {
        if (!goUp(*level)) {
            return false;
        }
        way.insert(0, kUpwards);
    }
    return true;
}

} // namespace

FPath* FPath::resolveRelative(const FPath& base) const {
    if (isAbsolute() || pathtext::isMeaningless(path_)) {
        return nullptr;
    }
    FRefPtr<FPath> result = copyOf(base);
    result->setFileType(fileType_);
    std::u16string_view rest = pathtext::viewOf(path_);
    while (rest.starts_with(kUpwards)) {
        result->ascend();
        rest.remove_prefix(kUpwards.size());
    }
    const std::u16string_view name = pathtext::viewOf(name_);
    if (name == kHere) {
        return result.detach();
    }
    if (name == kAbove) {
        result->ascend();
        return result.detach();
    }
    while (!rest.empty()) {
        const std::size_t length = std::min(rest.find(kPathSeparator), rest.size());
        if (length > 0) {
            result->descend(pathtext::stringOf(rest.substr(0, length)), PathKind::folder);
        }
        rest.remove_prefix(std::min(length + 1, rest.size()));
    }
    result->descend(name_, getKind());
    return result.detach();
}

bool FPath::resolve(const FPath& base) {
    const auto result = FRefPtr<FPath>::adopt(resolveRelative(base));
    if (!result) {
        return false;
    }
    *this = *result;
    return true;
}

bool FPath::makeRelative(const FPath* base, const FPath& target) {
    if (base == nullptr || !base->isFolder() || !target.isAbsolute()) {
        return false;
    }
    // The target may be this very object.
    const FRefPtr<FPath> goal = copyOf(target);
    std::u16string way;
    if (comparePaths(base, &target, false) == 0) {
        goal->setName(pathtext::stringOf(kHere));
    } else {
        const FRefPtr<FPath> common = copyOf(target);
        const bool related = collectDescent(*common, *base, way) && prependAscent(*common, *base, way);
        if (!related || way.size() >= kPathBufferLength) {
            *this = target;
            return true;
        }
    }
    path_ = pathtext::stringOf(way);
    name_ = goal->getName();
    kind_ = goal->kind_;
    fileType_ = goal->fileType_;
    return true;
}

bool FPath::makeRelative(const FPath* base) {
    return makeRelative(base, *this);
}

} // namespace tessera
