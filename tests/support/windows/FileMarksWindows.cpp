#include "support/FileMarks.h"

#include <fstream>
#include <gtest/gtest.h>
#include <windows.h>

namespace tessera::testing_support {

namespace {

class OpenFile {
public:
    OpenFile(const std::filesystem::path& file, DWORD access)
        : handle_(::CreateFileW(file.c_str(), access, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr)) {
        EXPECT_NE(handle_, INVALID_HANDLE_VALUE);
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    ~OpenFile() { ::CloseHandle(handle_); }

    HANDLE handle() const { return handle_; }

private:
    HANDLE handle_;
};

} // namespace

void setModified(const std::filesystem::path& file, std::int64_t seconds, std::int32_t microseconds) {
    const std::int64_t units = (seconds + 11'644'473'600) * 10'000'000 + std::int64_t{microseconds} * 10;
    const FILETIME time = {static_cast<DWORD>(units), static_cast<DWORD>(units >> 32)};
    const OpenFile open(file, FILE_WRITE_ATTRIBUTES);
    EXPECT_TRUE(::SetFileTime(open.handle(), nullptr, nullptr, &time));
}

void setHidden(const std::filesystem::path& file) {
    EXPECT_TRUE(::SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_HIDDEN));
}

// Whoever holds it open shares it for reading alone.
std::shared_ptr<void> writeUnwritable(const std::filesystem::path& file) {
    std::ofstream(file) << "archive";
    return std::make_shared<OpenFile>(file, GENERIC_READ);
}

void setSize(const std::filesystem::path& file, std::int64_t size) {
    const OpenFile open(file, GENERIC_WRITE);
    LARGE_INTEGER end;
    end.QuadPart = size;
    EXPECT_TRUE(::SetFilePointerEx(open.handle(), end, nullptr, FILE_BEGIN) && ::SetEndOfFile(open.handle()));
}

} // namespace tessera::testing_support
