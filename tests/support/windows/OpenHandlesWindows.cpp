#include "support/windows/OpenHandles.h"

#include <gtest/gtest.h>

// Before the one that needs it.
#include <windows.h>

#include <winternl.h>

#include <cstdint>
#include <vector>

namespace tessera::testing_support {

namespace {

constexpr auto kExtendedHandles = static_cast<SYSTEM_INFORMATION_CLASS>(64);
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

} // namespace

std::size_t openHandles() {
    using Query = NTSTATUS(NTAPI*)(SYSTEM_INFORMATION_CLASS, void*, ULONG, ULONG*);
    const auto query = reinterpret_cast<Query>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll"), "NtQuerySystemInformation")));
    std::vector<std::uint64_t> storage(1 << 14);
    NTSTATUS status = kTooShort;
    while (status == kTooShort) {
        storage.resize(storage.size() * 2);
        const auto size = static_cast<ULONG>(storage.size() * sizeof storage[0]);
        status = query(kExtendedHandles, storage.data(), size, nullptr);
    }
    EXPECT_EQ(status, 0) << "the system doesn't tell its handles";
    const auto* list = reinterpret_cast<const HandleList*>(storage.data());
    std::size_t own = 0;
    for (std::size_t i = 0; i < list->count; ++i) {
        own += list->entries[i].process == GetCurrentProcessId() ? 1u : 0u;
    }
    EXPECT_GT(own, 0u) << "this process holds something, if only its threads";
    return own;
}

} // namespace tessera::testing_support
