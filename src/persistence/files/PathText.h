// PathText: a native path's text in the form that the platform's services take, and its two parts for those that work
// inside an open folder. A path of another form gives empty texts, which name nothing.
#pragma once

#include "foundation/text/FString.h"
#include "persistence/paths/FNPath.h"

#include <string_view>

namespace tessera {

// The text must outlive the view. A string of the other width is widened by this.
inline std::u16string_view viewOf(const FString& text) {
    const char16_t* units = text.text16();
    return {units, static_cast<std::size_t>(text.length())};
}

class PathText {
public:
    explicit PathText(const FPath& path) {
        if (cmCast<FNPath>(&path) != nullptr) {
            path.getFullPath(text_);
        }
    }

    operator std::u16string_view() const { return viewOf(text_); }

private:
    FString text_;
};

class PathParts {
public:
    explicit PathParts(const FPath& path) {
        if (cmCast<FNPath>(&path) != nullptr) {
            folder_ = path.getPath();
            name_ = path.getName();
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
