#include "platform/Identity.h"

#include "platform/NativePath.h"

#include <dlfcn.h>
#include <elf.h>
#include <pwd.h>
#include <sys/auxv.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <optional>
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

// The loader knows a library by its path, but the program only by what its caller typed.
bool isMainProgram(const void* image) {
    const auto* header = static_cast<const Elf64_Ehdr*>(image);
    return reinterpret_cast<std::uintptr_t>(image) + header->e_phoff == getauxval(AT_PHDR);
}

std::u16string findModulePath() {
    Dl_info info = {};
    if (dladdr(reinterpret_cast<const void*>(&modulePath), &info) == 0) {
        return {};
    }
    const char* file = isMainProgram(info.dli_fbase) ? "/proc/self/exe" : info.dli_fname;
    const std::unique_ptr<char, decltype(&std::free)> whole(realpath(file, nullptr), std::free);
    return whole ? fromNativePath(whole.get()).value_or(std::u16string()) : std::u16string();
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

std::u16string modulePath() {
    // Never destroyed: exit handlers ask for it, too.
    static const std::u16string& path = *new std::u16string(findModulePath());
    return path;
}

void* moduleHandle() {
    Dl_info info = {};
    dladdr(reinterpret_cast<const void*>(&moduleHandle), &info);
    return info.dli_fbase;
}

} // namespace tessera::platform
