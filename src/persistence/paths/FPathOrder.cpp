// The order of paths: comparing, hashing, and which path is above another.
#include "persistence/paths/FPath.h"
#include "persistence/paths/PathText.h"
#include "platform/CharacterMapping.h"

#include <algorithm>

namespace tessera {

namespace {

// Folder, separator where one is needed, and name as one sequence, without joining them. Of bytes that mean nothing
// each stands for itself, so that a name of such bytes isn't taken for its folder.
class PathCharacters {
public:
    explicit PathCharacters(const FPath& path)
        : folder_(charactersOf(path.getPath(), folderBytes_)),
          name_(charactersOf(path.getName(), nameBytes_)),
          separator_(!folder_.empty() && !name_.empty() && !pathtext::endsInSeparator(folder_) ? 1 : 0) {}

    PathCharacters(const PathCharacters&) = delete;
    PathCharacters& operator=(const PathCharacters&) = delete;

    std::size_t size() const { return folder_.size() + separator_ + name_.size(); }
    char16_t operator[](std::size_t index) const {
        if (index < folder_.size()) {
            return folder_[index];
        }
        const std::size_t rest = index - folder_.size();
        return rest < separator_ ? kPathSeparator : name_[rest - separator_];
    }

private:
    static std::u16string_view charactersOf(const FString& text, std::u16string& bytes) {
        if (!pathtext::isMeaningless(text)) {
            return pathtext::viewOf(text);
        }
        bytes = pathtext::charactersOfBytes(text);
        return bytes;
    }

    std::u16string folderBytes_;
    std::u16string nameBytes_;
    std::u16string_view folder_;
    std::u16string_view name_;
    std::size_t separator_;
};

int signOf(bool less) {
    return less ? -1 : 1;
}

std::uint32_t hashOn(std::uint32_t h, std::u16string_view text, std::uint32_t tableSize) {
    for (const char16_t c : text) {
        h = (c + h * 64) % tableSize;
    }
    return h;
}

} // namespace

int FPath::comparePaths(const FPath* a, const FPath* b, bool caseSensitive) {
    if (a == b) {
        return 0;
    }
    if (a == nullptr || b == nullptr) {
        return signOf(a == nullptr);
    }
    const PathCharacters left(*a);
    const PathCharacters right(*b);
    const std::size_t shorter = std::min(left.size(), right.size());
    for (std::size_t i = 0; i < shorter; ++i) {
        char16_t l = left[i];
        char16_t r = right[i];
        if (l == r) {
            continue;
        }
        if (l == kPathSeparator || r == kPathSeparator) {
            return signOf(l == kPathSeparator);
        }
        if (!caseSensitive) {
            l = platform::upperCase(l);
            r = platform::upperCase(r);
        }
        if (l != r) {
            return signOf(l < r);
        }
    }
    return left.size() == right.size() ? 0 : signOf(left.size() < right.size());
}

int FPath::compare(const CmObject* other) const {
    const auto* path = cmCast<FPath>(other);
    return path != nullptr ? comparePaths(this, path, false) : -1;
}

bool FPath::isEqual(const CmObject* other) const {
    return compare(other) == 0;
}

std::uint32_t FPath::hash(std::uint32_t tableSize) const {
    if (tableSize == 0) {
        return 0;
    }
    return hashOn(hashOn(0, pathtext::viewOf(path_), tableSize), pathtext::viewOf(name_), tableSize);
}

bool FPath::isParentOf(const FPath* other) const {
    if (other == nullptr) {
        return false;
    }
    const PathCharacters own(*this);
    const PathCharacters theirs(*other);
    const std::size_t size = own.size();
    if (size == 0 || size >= theirs.size()) {
        return false;
    }
    for (std::size_t i = 0; i < size; ++i) {
        if (own[i] != theirs[i] && platform::upperCase(own[i]) != platform::upperCase(theirs[i])) {
            return false;
        }
    }
    // The root of the file tree ends in a separator itself.
    return own[size - 1] == kPathSeparator || theirs[size] == kPathSeparator;
}

} // namespace tessera
