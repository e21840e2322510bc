// PathText: a native path's text in the form that the platform's services take, and its two parts for those that work
// inside an open folder. A URL of the scheme "file" counts as the path that it means. A path of another form gives
// empty texts, which name nothing.
#pragma once

#include "foundation/object/FRefPtr.h"
#include "foundation/text/FString.h"
#include "persistence/paths/FNPath.h"
#include "persistence/urls/FUrl.h"

#include <string_view>

namespace tessera {

// The text must outlive the view. A string of the other width is widened by this.
inline std::u16string_view viewOf(const FString& text) {
    const char16_t* units = text.text16();
    return {units, static_cast<std::size_t>(text.length())};
}

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

    operator std::u16string_view() const { return viewOf(text_); }

private:
    FString text_;
};

class PathParts {
public:
    explicit PathParts(const FPath& path) {
        if (const NativeForm native(path); native) {
            folder_ = native->getPath();
            name_ = native->getName();
        }
    }

    // The present folder for a bare name.
    std::u16string_view folder() const { return folder_.isEmpty() ? std::u16string_view(u".") : viewOf(folder_); }
    // Empty for a root.
    std::u16string_view name() const { return viewOf(name_); }

private:
    FString folder_;
    FString name_;
};

} // namespace tessera
