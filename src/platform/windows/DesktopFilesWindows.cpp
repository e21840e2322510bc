#include "platform/DesktopFiles.h"

#include "platform/windows/ComponentLibrary.h"
#include "platform/windows/ShellLink.h"
#include "platform/windows/SystemPath.h"

#include <shellapi.h>
#include <shlobj.h>

namespace tessera::platform {

namespace {

std::error_code systemError(int number) {
    return {number, std::system_category()};
}

// Watches one deletion, and gives it up if the file wouldn't go to the trash: the system would delete it for good then.
//
// Interfaces of the component library have no destructor in their tables; this object is destroyed as what it is.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
class TrashOnly final : public IFileOperationProgressSink {
public:
    bool refused() const { return refused_; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        const bool known = IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, IID_IFileOperationProgressSink);
        *object = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    // Lives on the stack around the operation, which has let go of it before it ends.
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }

    HRESULT STDMETHODCALLTYPE PreDeleteItem(DWORD flags, IShellItem*) override {
        refused_ = (flags & TSF_DELETE_RECYCLE_IF_POSSIBLE) == 0;
        return refused_ ? E_ABORT : S_OK;
    }

    HRESULT STDMETHODCALLTYPE StartOperations() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE FinishOperations(HRESULT) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE PreRenameItem(DWORD, IShellItem*, LPCWSTR) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE PostRenameItem(DWORD, IShellItem*, LPCWSTR, HRESULT, IShellItem*) override {
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE PreMoveItem(DWORD, IShellItem*, IShellItem*, LPCWSTR) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE PostMoveItem(DWORD, IShellItem*, IShellItem*, LPCWSTR, HRESULT, IShellItem*) override {
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE PreCopyItem(DWORD, IShellItem*, IShellItem*, LPCWSTR) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE PostCopyItem(DWORD, IShellItem*, IShellItem*, LPCWSTR, HRESULT, IShellItem*) override {
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE PostDeleteItem(DWORD, IShellItem*, HRESULT, IShellItem*) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE PreNewItem(DWORD, IShellItem*, LPCWSTR) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE PostNewItem(DWORD, IShellItem*, LPCWSTR, LPCWSTR, DWORD, HRESULT, IShellItem*) override {
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE UpdateProgress(UINT, UINT) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE ResetTimer() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE PauseTimer() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE ResumeTimer() override { return S_OK; }

private:
    bool refused_ = false;
};
#pragma GCC diagnostic pop

HRESULT trash(const std::wstring& path) {
    ComponentPointer<IShellItem> item;
    ComponentPointer<IFileOperation> operation;
    TrashOnly sink;
    HRESULT result = ::SHCreateItemFromParsingName(path.c_str(), nullptr, IID_IShellItem, item.untypedOut());
    if (SUCCEEDED(result)) {
        result =
            ::CoCreateInstance(CLSID_FileOperation, nullptr, CLSCTX_ALL, IID_IFileOperation, operation.untypedOut());
    }
    if (SUCCEEDED(result)) {
        result = operation->SetOperationFlags(FOF_ALLOWUNDO | FOF_NO_UI);
    }
    if (SUCCEEDED(result)) {
        result = operation->DeleteItem(item.get(), &sink);
    }
    if (SUCCEEDED(result)) {
        result = operation->PerformOperations();
    }
    if (sink.refused()) {
        return HRESULT_FROM_WIN32(ERROR_NOT_SUPPORTED);
    }
    BOOL aborted = FALSE;
    if (SUCCEEDED(result)) {
        result = operation->GetAnyOperationsAborted(&aborted);
    }
    return SUCCEEDED(result) && aborted ? HRESULT_FROM_WIN32(ERROR_CANCELLED) : result;
}

} // namespace

std::error_code createShortcut(const std::string& target, const std::string& shortcut) {
    std::int32_t error = 0;
    saveShellLink(systemPath(shortcut), systemPath(target), error);
    return systemError(error);
}

std::error_code moveToTrash(const std::string& path) {
    const ComponentLibrary library;
    return systemError(systemErrorOf(trash(systemPath(path))));
}

} // namespace tessera::platform
