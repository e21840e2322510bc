#include "support/windows/OpenHandles.h"

#include <gtest/gtest.h>

// Before the one that needs it.
#include <windows.h>

#include <winternl.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tessera::testing_support {

namespace {

constexpr auto kExtendedHandles = static_cast<SYSTEM_INFORMATION_CLASS>(64);
constexpr auto kObjectType = static_cast<OBJECT_INFORMATION_CLASS>(2);
constexpr NTSTATUS kTooShort = static_cast<NTSTATUS>(0xc0000004);

// As the system lays it out.
struct HandleEntry {
    void* object;
    std::uintptr_t process;
    std::uintptr_t value;
    std::uint32_t access;
    std::uint16_t creator;
    std::uint16_t type;
    std::uint32_t attributes;
    std::uint32_t reserved;
};
struct HandleList {
    std::uintptr_t count;
    std::uintptr_t reserved;
    HandleEntry entries[1];
};

template <class Function>
Function systemFunction(const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll"), name)));
}

std::vector<HANDLE> ownHandles() {
    using Query = NTSTATUS(NTAPI*)(SYSTEM_INFORMATION_CLASS, void*, ULONG, ULONG*);
    const auto query = systemFunction<Query>("NtQuerySystemInformation");
    std::vector<std::uint64_t> storage(1 << 14);
    NTSTATUS status = kTooShort;
    while (status == kTooShort) {
        storage.resize(storage.size() * 2);
        const auto size = static_cast<ULONG>(storage.size() * sizeof storage[0]);
        status = query(kExtendedHandles, storage.data(), size, nullptr);
    }
    EXPECT_EQ(status, 0) << "the system doesn't tell its handles";
    const auto* list = reinterpret_cast<const HandleList*>(storage.data());
    std::vector<HANDLE> own;
    for (std::size_t i = 0; i < list->count; ++i) {
        if (list->entries[i].process == GetCurrentProcessId()) {
            own.push_back(reinterpret_cast<HANDLE>(list->entries[i].value));
        }
    }
    EXPECT_FALSE(own.empty()) << "this process holds something, if only its threads";
    return own;
}

std::string kindOf(HANDLE handle) {
    using Query = NTSTATUS(NTAPI*)(HANDLE, OBJECT_INFORMATION_CLASS, void*, ULONG, ULONG*);
    alignas(UNICODE_STRING) std::byte storage[1024];
    if (systemFunction<Query>("NtQueryObject")(handle, kObjectType, storage, sizeof storage, nullptr) != 0) {
        return "closed meanwhile";
    }
    // The name stands first, its text behind the record.
    const auto& name = *reinterpret_cast<const UNICODE_STRING*>(storage);
    return std::string(name.Buffer, name.Buffer + name.Length / sizeof(wchar_t));
}

} // namespace

std::size_t openHandles() {
    return ownHandles().size();
}

std::map<std::string, std::size_t> openHandlesByKind() {
    std::map<std::string, std::size_t> kinds;
    for (HANDLE handle : ownHandles()) {
        ++kinds[kindOf(handle)];
    }
    return kinds;
}

} // namespace tessera::testing_support
