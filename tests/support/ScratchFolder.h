// ScratchFolder: a folder of its own for one test, removed with all that it holds at the end of the scope. Names and
// bytes go through the standard library, so what the code under test did is seen by other means than its own. Names are
// UTF-8.
#pragma once

#include "support/Environment.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace tessera::testing_support {

// Between paths and UTF-8: a path's own narrow text is in the system's code page, which holds few characters.
inline std::filesystem::path pathOfUtf8(const std::string& text) {
    return std::u8string(text.begin(), text.end());
}
inline std::string utf8OfPath(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

// With "/" between the components, as URLs have it.
inline std::string slashTextOf(const std::filesystem::path& path) {
    const std::u8string text = path.generic_u8string();
    return {text.begin(), text.end()};
}

class ScratchFolder {
public:
    ScratchFolder() : path_(makeTemporaryFolder("scratch-")) {}
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder() {
        std::error_code error;
        std::filesystem::remove_all(path_, error);
        if (error) {
            allowDeletion();
            std::filesystem::remove_all(path_, error);
        }
    }

    const std::filesystem::path& path() const { return path_; }
    std::filesystem::path operator/(const std::string& name) const { return path_ / pathOfUtf8(name); }

    // With the folders above it.
    std::filesystem::path write(const std::string& name, const std::string& bytes) const {
        const std::filesystem::path file = *this / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << bytes;
        return file;
    }
    std::string read(const std::string& name) const {
        std::ifstream file(*this / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }
    bool has(const std::string& name) const {
        return std::filesystem::symlink_status(*this / name).type() != std::filesystem::file_type::not_found;
    }
    // Whatever stands directly in the folder, hidden files included.
    std::size_t entryCount() const {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(path_), {}));
    }

private:
    // Files that are marked as read-only stay on some systems.
    void allowDeletion() const {
        std::error_code ignored;
        for (std::filesystem::recursive_directory_iterator entry(path_, ignored), end; entry != end;
             entry.increment(ignored)) {
            std::filesystem::permissions(entry->path(), std::filesystem::perms::owner_all,
                                         std::filesystem::perm_options::add, ignored);
        }
    }

    std::filesystem::path path_;
};

} // namespace tessera::testing_support
