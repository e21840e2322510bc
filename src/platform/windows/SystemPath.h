// SystemPath: paths in the form that the system's calls take, and open files as handles.
//
// From any thread.
#pragma once

#include "platform/Files.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tessera::platform {

// Characters, without the NUL, from which on the system's calls want a path in its long form.
inline constexpr std::size_t kLongPath = 260;
// The same where a folder is made: room for a short name is kept.
inline constexpr std::size_t kLongFolderPath = 248;

// Separators at the end are gone, but for a root's; a bare drive, which would mean the drive's present folder, has got
// one. A path of the given length or more is in the long form "\\?\C:\..." or "\\?\UNC\server\share\...", and so is a
// relative one that gets that long behind the present folder. Empty, which no call accepts, for an empty text and one
// that holds a NUL.
std::wstring systemPath(std::u16string_view path, std::size_t limit = kLongPath);
// From UTF-8 with either separator. Empty also for what is no UTF-8: nothing is called so, and a file that is called by
// the replacement character is another one.
std::wstring systemPath(std::string_view path);

// Whether it starts with a drive, as "C:\a" and "C:a" do.
bool isOnDrive(std::wstring_view path);

// Behind the present folder, and without "." and "..". Empty on failure.
std::wstring fullPath(const std::wstring& path);

// Without the long form's prefix, which is the system's own business, where the path has another form.
std::u16string withoutLongPrefix(std::wstring_view path);

// The folder at which the path's volume is mounted, with a separator at the end: "C:\". Empty when it can't be told.
std::wstring volumeRootOf(const std::wstring& path);

// GetLastError as the services give it.
std::int32_t lastSystemError();
// Of a call that says by 0 or FALSE that it failed.
bool succeeded(int result, std::int32_t& error);

// A file is the owner of its handle; an invalid handle makes one that isn't open.
inline void* handleOf(const File& file) {
    return reinterpret_cast<void*>(file.nativeHandle());
}
inline File fileOf(void* handle) {
    return File::adopt(reinterpret_cast<std::int64_t>(handle));
}

// Opens what is there, in the words of CreateFileW, and shares everything with others.
File openShared(const std::wstring& path, std::uint32_t access, std::uint32_t flags, std::int32_t& error);

// Opens what stands at the path, a file or a folder, to be asked; a link is followed or not. Shares everything.
enum class LinkUse { follow, stay };
File openForQuestions(const std::wstring& path, LinkUse links, std::int32_t& error);

} // namespace tessera::platform
