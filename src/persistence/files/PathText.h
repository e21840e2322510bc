// PathText: a native path's text in the form that the platform's services take, and its two parts for those that work
// inside an open folder. A URL of the scheme "file" counts as the path that it means. A path of another form, or of
// bytes that mean nothing, gives empty texts, which name nothing.
#pragma once

#include "foundation/object/FRefPtr.h"
#include "foundation/text/FString.h"
#include "persistence/paths/FNPath.h"
#include "persistence/paths/PathText.h"
#include "persistence/urls/FUrl.h"

#include <string_view>

namespace tessera {

// The native path itself, or the one that a URL means; null for a path of another form.
class NativeForm {
public:
    explicit NativeForm(const FPath& path) : path_(cmCast<FNPath>(&path)) {
        if (path_ == nullptr) {
            const FUrl* url = cmCast<FUrl>(&path);
            meant_ = FRefPtr<FNPath>::adopt(url != nullptr ? url->toNativePath() : nullptr);
            path_ = meant_.get();
        }
    }

    explicit operator bool() const { return path_ != nullptr; }
    const FNPath& operator*() const { return *path_; }
    const FNPath* operator->() const { return path_; }

private:
    const FNPath* path_;
    FRefPtr<FNPath> meant_;
};

class PathText {
public:
    explicit PathText(const FPath& path) {
        if (const NativeForm native(path); native) {
            native->getFullPath(text_);
        }
    }

    operator std::u16string_view() const { return pathtext::viewOf(text_); }

private:
    FString text_;
};

class PathParts {
public:
    explicit PathParts(const FPath& path) {
        const NativeForm native(path);
        if (native && !pathtext::isMeaningless(native->getPath()) && !pathtext::isMeaningless(native->getName())) {
            folder_ = native->getPath();
            name_ = native->getName();
        }
    }

    // The present folder for a bare name.
    std::u16string_view folder() const {
        return folder_.isEmpty() && !name_.isEmpty() ? std::u16string_view(u".") : pathtext::viewOf(folder_);
    }
    // Empty for a root.
    std::u16string_view name() const { return pathtext::viewOf(name_); }

private:
    FString folder_;
    FString name_;
};

} // namespace tessera
