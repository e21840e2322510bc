#include "acceptance/ExportedNames.h"

#include "platform/windows/WideText.h"

#include <gtest/gtest.h>

#include <windows.h>

namespace tessera::acceptance {
namespace {

// At an offset of the loaded image.
template <class T>
const T* at(const BYTE* image, DWORD offset) {
    return reinterpret_cast<const T*>(image + offset);
}

} // namespace

// Out of the table in the image, which is loaded for a look alone: none of its code runs.
std::set<std::string> exportedNames(const std::string& utf8Path) {
    std::set<std::string> names;
    const HMODULE library =
        LoadLibraryExW(platform::wideText(std::string_view(utf8Path)).c_str(), nullptr, DONT_RESOLVE_DLL_REFERENCES);
    if (library == nullptr) {
        ADD_FAILURE() << utf8Path << " can't be loaded: " << GetLastError();
        return names;
    }
    const BYTE* image = reinterpret_cast<const BYTE*>(library);
    const auto* headers = at<IMAGE_NT_HEADERS64>(image, static_cast<DWORD>(at<IMAGE_DOS_HEADER>(image, 0)->e_lfanew));
    const DWORD place = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT].VirtualAddress;
    const auto* exports = at<IMAGE_EXPORT_DIRECTORY>(image, place);
    EXPECT_EQ(exports->NumberOfFunctions, exports->NumberOfNames) << "some can be found by number alone";
    for (DWORD i = 0; i < exports->NumberOfNames; ++i) {
        names.insert(at<char>(image, at<DWORD>(image, exports->AddressOfNames)[i]));
    }
    FreeLibrary(library);
    return names;
}

} // namespace tessera::acceptance
