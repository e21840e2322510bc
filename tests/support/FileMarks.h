// FileMarks: what the standard library can't set everywhere.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>

namespace tessera::testing_support {

// The last change of the content, in seconds since 1970 in UTC, which may be negative, and microseconds on top.
void setModified(const std::filesystem::path& file, std::int64_t seconds, std::int32_t microseconds);

// Nothing where the name alone says that a file is hidden, by a dot at its start.
void setHidden(const std::filesystem::path& file);

// A new file that nobody can open for writing, whatever rights the test runs with, as long as the guard lives.
[[nodiscard]] std::shared_ptr<void> writeUnwritable(const std::filesystem::path& file);

// Longer than it was, with no bytes written.
void setSize(const std::filesystem::path& file, std::int64_t size);

} // namespace tessera::testing_support
