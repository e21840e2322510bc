#include "platform/Identity.h"

#include "platform/windows/WideText.h"

#include <windows.h>

#include <array>

namespace tessera::platform {

namespace {

constexpr DWORD kNameUnits = 256;
constexpr DWORD kPathUnits = 1024;

// What the two calls for names have in common: the count of units goes in and out.
using NameCall = BOOL WINAPI(wchar_t* buffer, DWORD* units);

std::string askName(NameCall* call) {
    std::array<wchar_t, kNameUnits> name = {};
    DWORD units = kNameUnits;
    return call(name.data(), &units) != 0 ? utf8Of(name.data()) : std::string();
}

} // namespace

std::string userName() {
    return askName(GetUserNameW);
}

std::string computerName() {
    return askName(GetComputerNameW);
}

OperatingSystem operatingSystem() {
    OperatingSystem result;
    result.family = SystemFamily::windows;
    OSVERSIONINFOW version = {};
    static_assert(sizeof version == 276);
    version.dwOSVersionInfoSize = sizeof version;
    if (GetVersionExW(&version) != 0) {
        result.major = version.dwMajorVersion;
        result.minor = version.dwMinorVersion;
        result.build = version.dwBuildNumber;
    }
    return result;
}

std::u16string modulePath() {
    std::array<wchar_t, kPathUnits> path = {};
    const DWORD units = GetModuleFileNameW(static_cast<HMODULE>(moduleHandle()), path.data(), kPathUnits);
    // A path that fills the buffer has been cut.
    return units < kPathUnits ? textOf({path.data(), units}) : std::u16string();
}

void* moduleHandle() {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<const wchar_t*>(&moduleHandle), &module);
    return module;
}

} // namespace tessera::platform
