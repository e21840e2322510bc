#include "support/OwnRegistry.h"

#include <gtest/gtest.h>

#include <string>
#include <windows.h>

namespace tessera::testing_support {
namespace {

constexpr wchar_t kParent[] = L"Software\\Marlgrove Tests";

// A key of the user's that stands for one of the tops.
class StandIn {
public:
    StandIn(HKEY top, const std::wstring& path) : top_(top) {
        EXPECT_EQ(::RegCreateKeyW(HKEY_CURRENT_USER, path.c_str(), &key_), 0);
    }
    StandIn(const StandIn&) = delete;
    StandIn& operator=(const StandIn&) = delete;
    ~StandIn() { ::RegCloseKey(key_); }

    void begin() { EXPECT_EQ(::RegOverridePredefKey(top_, key_), 0); }
    void end() { ::RegOverridePredefKey(top_, nullptr); }

private:
    HKEY top_;
    HKEY key_ = nullptr;
};

std::wstring ownPath() {
    static unsigned number = 0;
    return std::wstring(kParent) + L"\\" + std::to_wstring(::GetCurrentProcessId()) + L"-" + std::to_wstring(++number);
}

} // namespace

class OwnRegistry::Redirection {
public:
    Redirection()
        : path_(ownPath()),
          user_(HKEY_CURRENT_USER, path_ + L"\\User"),
          machine_(HKEY_LOCAL_MACHINE, path_ + L"\\Machine") {
        machine_.begin();
        user_.begin();
    }
    Redirection(const Redirection&) = delete;
    Redirection& operator=(const Redirection&) = delete;
    ~Redirection() {
        user_.end();
        machine_.end();
        ::RegDeleteTreeW(HKEY_CURRENT_USER, path_.c_str());
        // The last test that runs takes the parent along; it can't go while it holds another's key.
        ::RegDeleteKeyW(HKEY_CURRENT_USER, kParent);
    }

    // A key that has gone while somebody holds it takes nothing any more.
    void remove() {
        user_.end();
        EXPECT_EQ(::RegDeleteTreeW(HKEY_CURRENT_USER, (path_ + L"\\User").c_str()), 0);
        user_.begin();
    }

private:
    std::wstring path_;
    StandIn user_;
    StandIn machine_;
};

OwnRegistry::OwnRegistry() : redirection_(std::make_unique<Redirection>()) {}

OwnRegistry::~OwnRegistry() = default;

void OwnRegistry::remove() {
    redirection_->remove();
}

} // namespace tessera::testing_support
