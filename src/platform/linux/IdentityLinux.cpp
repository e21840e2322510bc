#include "platform/Identity.h"

#include <pwd.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <cstddef>
#include <string_view>
#include <vector>

namespace tessera::platform {

namespace {

// A password entry larger than this is no honest one.
constexpr std::size_t kLargestEntry = std::size_t{1} << 20;

// Takes the number at the front of `text` and the one character behind it; 0 when there is none.
std::uint32_t takeNumber(std::string_view& text) {
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    std::size_t taken = static_cast<std::size_t>(end - text.data());
    if (taken < text.size()) {
        ++taken;
    }
    text.remove_prefix(taken);
    return error == std::errc{} ? number : 0;
}

} // namespace

std::string userName() {
    std::vector<char> storage(1024);
    passwd entry = {};
    passwd* found = nullptr;
    int error = getpwuid_r(geteuid(), &entry, storage.data(), storage.size(), &found);
    while ((error == ERANGE && storage.size() < kLargestEntry) || error == EINTR) {
        storage.resize(error == ERANGE ? storage.size() * 2 : storage.size());
        error = getpwuid_r(geteuid(), &entry, storage.data(), storage.size(), &found);
    }
    return found != nullptr ? found->pw_name : std::string();
}

std::string computerName() {
    std::array<char, 257> name = {};
    // A name that was cut need not be terminated; the last byte stays zero.
    return gethostname(name.data(), name.size() - 1) == 0 ? name.data() : std::string();
}

OperatingSystem operatingSystem() {
    OperatingSystem result;
    result.family = SystemFamily::linux;
    utsname names = {};
    if (uname(&names) != 0) {
        return result;
    }
    std::string_view release = names.release; // such as "6.1.0-18-amd64"
    result.major = takeNumber(release);
    result.minor = takeNumber(release);
    result.build = takeNumber(release);
    return result;
}

} // namespace tessera::platform
