#include "platform/windows/ShellLink.h"

#include "platform/windows/ComponentLibrary.h"
#include "platform/windows/SystemPath.h"

#include <shlobj.h>

namespace tessera::platform {

namespace {

// The link, and its view as a file.
struct LinkObject {
    ComponentPointer<IShellLinkW> link;
    ComponentPointer<IPersistFile> file;

    HRESULT create() {
        const HRESULT made =
            ::CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW, link.untypedOut());
        return FAILED(made) ? made : link->QueryInterface(IID_IPersistFile, file.untypedOut());
    }
};

// What a relative target means for the link: it leads there from its own folder, wherever the program is then. The call
// itself would take it as lying on the user's desktop.
std::wstring wholeTarget(const std::wstring& path, const std::wstring& target) {
    if (target.empty()) {
        return {};
    }
    if (target.front() == L'\\' || isOnDrive(target)) {
        return fullPath(target);
    }
    const std::wstring link = fullPath(path);
    return fullPath(link.substr(0, link.rfind(L'\\') + 1) + target);
}

// Takes the name before the link is saved under it, which would replace what has it.
bool reserve(const std::wstring& path, std::int32_t& error) {
    const File file =
        fileOf(::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
    error = file.isOpen() ? 0 : lastSystemError();
    return file.isOpen();
}

// What the link says as it stands: nothing is searched for, which could take long and ask the user. The list of items
// comes first, since some programs write the path itself in their code page alone. Empty for what is no file.
std::wstring targetOf(IShellLinkW& link) {
    wchar_t path[MAX_PATH] = {};
    PIDLIST_ABSOLUTE items = nullptr;
    const bool listed = SUCCEEDED(link.GetIDList(&items)) && items != nullptr && ::SHGetPathFromIDListW(items, path);
    ::CoTaskMemFree(items);
    if (!listed && link.GetPath(path, MAX_PATH, nullptr, 0) != S_OK) {
        return {};
    }
    return path;
}

} // namespace

bool saveShellLink(const std::wstring& path, const std::wstring& target, std::int32_t& error) {
    const std::wstring whole = wholeTarget(path, target);
    // Who reads links has room for so much and no more.
    if (whole.empty() || whole.size() >= MAX_PATH) {
        error = whole.empty() ? ERROR_INVALID_NAME : ERROR_FILENAME_EXCED_RANGE;
        return false;
    }
    if (!reserve(path, error)) {
        return false;
    }
    const ComponentLibrary library;
    LinkObject object;
    HRESULT result = object.create();
    if (SUCCEEDED(result)) {
        result = object.link->SetPath(whole.c_str());
    }
    if (SUCCEEDED(result)) {
        result = object.file->Save(path.c_str(), FALSE);
    }
    error = systemErrorOf(result);
    if (FAILED(result)) {
        ::DeleteFileW(path.c_str());
    }
    return SUCCEEDED(result);
}

std::optional<std::wstring> loadShellLink(const std::wstring& path) {
    const ComponentLibrary library;
    LinkObject object;
    if (FAILED(object.create()) || FAILED(object.file->Load(path.c_str(), STGM_READ))) {
        return std::nullopt;
    }
    std::wstring target = targetOf(*object.link.get());
    return target.empty() ? std::nullopt : std::optional(std::move(target));
}

} // namespace tessera::platform
