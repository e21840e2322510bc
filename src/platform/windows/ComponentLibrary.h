// ComponentLibrary: the system's component library, up for one scope on this thread, and owners of its objects.
#pragma once

#include <windows.h>

#include <objbase.h>

namespace tessera::platform {

class ComponentLibrary {
public:
    // Where the thread's owner has it up in the other mode already, that does as well.
    ComponentLibrary() : result_(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE)) {}
    ComponentLibrary(const ComponentLibrary&) = delete;
    ComponentLibrary& operator=(const ComponentLibrary&) = delete;
    ~ComponentLibrary() {
        if (SUCCEEDED(result_)) {
            ::CoUninitialize();
        }
    }

private:
    HRESULT result_;
};

// One reference.
template <class Interface>
class ComponentPointer {
public:
    ComponentPointer() = default;
    ComponentPointer(const ComponentPointer&) = delete;
    ComponentPointer& operator=(const ComponentPointer&) = delete;
    ~ComponentPointer() {
        if (object_ != nullptr) {
            object_->Release();
        }
    }

    Interface* operator->() const { return object_; }
    Interface* get() const { return object_; }
    // For a call that hands a reference out.
    Interface** out() { return &object_; }
    void** untypedOut() { return reinterpret_cast<void**>(&object_); }

private:
    Interface* object_ = nullptr;
};

// Results that wrap a number of the system give that number, others themselves.
inline int systemErrorOf(HRESULT result) {
    if (SUCCEEDED(result)) {
        return 0;
    }
    return HRESULT_FACILITY(result) == FACILITY_WIN32 ? HRESULT_CODE(result) : static_cast<int>(result);
}

} // namespace tessera::platform
