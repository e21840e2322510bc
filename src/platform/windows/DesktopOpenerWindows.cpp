#include "platform/DesktopOpener.h"

#include "platform/windows/ComponentLibrary.h"
#include "platform/windows/ShellRequest.h"
#include "platform/windows/SystemPath.h"
#include "platform/windows/WideText.h"

#include <algorithm>
#include <shellapi.h>

namespace tessera::platform {

namespace {

constexpr const wchar_t* kVerb = L"open";
constexpr const wchar_t* kFolderProgram = L"explorer.exe";
constexpr const wchar_t* kSelectSwitch = L"/select,";

bool isLetter(wchar_t c) {
    return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z');
}

bool isAbsolute(std::wstring_view path) {
    return path.starts_with(L"\\\\") || (path.size() >= 3 && isLetter(path[0]) && path[1] == L':' && path[2] == L'\\');
}

// The desktop's programs don't know the long form of a path.
std::optional<std::wstring> shownPath(std::u16string_view path) {
    std::wstring text = wideText(withoutLongPrefix(systemPath(path)));
    return isAbsolute(text) ? std::optional(std::move(text)) : std::nullopt;
}

bool open(const std::optional<ShellRequest>& request) {
    if (!request) {
        return false;
    }
    const ComponentLibrary library;
    const wchar_t* parameters = request->parameters.empty() ? nullptr : request->parameters.c_str();
    const HINSTANCE answer = ::ShellExecuteW(nullptr, kVerb, request->file.c_str(), parameters, nullptr, SW_SHOWNORMAL);
    // No handle at all, for reasons older than this system: numbers up to here are errors.
    constexpr INT_PTR kLargestError = 32;
    return reinterpret_cast<INT_PTR>(answer) > kLargestError;
}

} // namespace

std::optional<ShellRequest> documentRequest(std::u16string_view path) {
    auto file = shownPath(path);
    return file ? std::optional(ShellRequest{std::move(*file), {}}) : std::nullopt;
}

std::optional<ShellRequest> selectionRequest(std::u16string_view path) {
    const auto file = shownPath(path);
    if (!file) {
        return std::nullopt;
    }
    // In quotation marks, which no name holds: a comma in the path would end it.
    return ShellRequest{kFolderProgram, std::wstring(kSelectSwitch).append(L"\"").append(*file).append(L"\"")};
}

std::optional<ShellRequest> addressRequest(std::string_view address) {
    std::wstring text = wideText(address);
    const auto end = std::find_if_not(text.begin(), text.end(), [](wchar_t c) {
        return isLetter(c) || (c >= L'0' && c <= L'9') || c == L'+' || c == L'-' || c == L'.';
    });
    // A single letter is a drive.
    const bool hasScheme = end - text.begin() >= 2 && isLetter(text.front()) && end != text.end() && *end == L':';
    const bool whole = text.find(L'\0') == text.npos;
    return hasScheme && whole ? std::optional(ShellRequest{std::move(text), {}}) : std::nullopt;
}

bool openDocument(std::u16string_view path) {
    return open(documentRequest(path));
}

bool showInFolder(std::u16string_view path) {
    return open(selectionRequest(path));
}

bool openAddress(const std::string& address) {
    return open(addressRequest(address));
}

} // namespace tessera::platform
