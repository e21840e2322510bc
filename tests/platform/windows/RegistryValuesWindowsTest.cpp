// The real registry: its types, its two tops, and its limits.
#include "platform/RegistryValues.h"

#include "platform/windows/WideText.h"
#include "support/OwnRegistry.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <string_view>
#include <windows.h>

namespace tessera::platform {
namespace {

constexpr char16_t kKey[] = u"Software\\Vendor\\Product";

class RegistryValuesWindows : public testing::Test {
protected:
    RegistryValuesWindows() {
        ::RegCreateKeyExW(HKEY_CURRENT_USER, wide(kKey), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &user_, nullptr);
        ::RegCreateKeyExW(HKEY_LOCAL_MACHINE, wide(kKey), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &machine_, nullptr);
    }
    ~RegistryValuesWindows() override {
        ::RegCloseKey(user_);
        ::RegCloseKey(machine_);
    }

    void set(HKEY key, const char16_t* name, DWORD type, const void* data, std::size_t size) {
        ASSERT_EQ(::RegSetValueExW(key, wide(name), 0, type, static_cast<const BYTE*>(data), static_cast<DWORD>(size)),
                  0);
    }
    void setText(HKEY key, const char16_t* name, const std::u16string& text, DWORD type = REG_SZ) {
        set(key, name, type, text.c_str(), (text.size() + 1) * sizeof(char16_t));
    }
    DWORD typeOf(const char16_t* name) {
        DWORD type = REG_NONE;
        ::RegQueryValueExW(user_, wide(name), nullptr, &type, nullptr, nullptr);
        return type;
    }
    std::u16string read(const char16_t* name, RegistryScope scope = RegistryScope::userAndMachine) {
        return readRegistryValue(kKey, name, scope).value_or(u"none");
    }

    testing_support::OwnRegistry registry_;
    HKEY user_ = nullptr;
    HKEY machine_ = nullptr;
};

TEST_F(RegistryValuesWindows, AreTextValuesWithTheirNul) {
    EXPECT_TRUE(writeRegistryValue(kKey, u"v", u"\u97f3\u00e9"));
    wchar_t text[8] = L"#######";
    DWORD type = REG_NONE;
    DWORD size = sizeof text;
    ASSERT_EQ(::RegQueryValueExW(user_, L"v", nullptr, &type, reinterpret_cast<BYTE*>(text), &size), 0);
    EXPECT_EQ(type, DWORD{REG_SZ});
    EXPECT_EQ(size, 3 * sizeof(wchar_t));
    EXPECT_STREQ(text, L"\u97f3\u00e9");
}

TEST_F(RegistryValuesWindows, TheUsersOwnComeBeforeThoseOfTheMachine) {
    setText(machine_, u"v", u"machine");
    EXPECT_EQ(read(u"v"), u"machine");
    EXPECT_EQ(read(u"v", RegistryScope::user), u"none");
    setText(user_, u"v", u"user");
    EXPECT_EQ(read(u"v"), u"user");
    EXPECT_TRUE(deleteRegistryValue(kKey, u"v"));
    EXPECT_EQ(read(u"v"), u"machine") << "only the user's own is deleted";
}

TEST_F(RegistryValuesWindows, AreWrittenForTheUserAlone) {
    EXPECT_TRUE(writeRegistryValue(kKey, u"v", u"text"));
    EXPECT_EQ(::RegQueryValueExW(machine_, L"v", nullptr, nullptr, nullptr, nullptr), ERROR_FILE_NOT_FOUND);
}

TEST_F(RegistryValuesWindows, NamesMayDifferInCase) {
    EXPECT_TRUE(writeRegistryValue(u"SOFTWARE\\vendor\\PRODUCT", u"PATH", u"text"));
    EXPECT_EQ(read(u"path"), u"text");
}

TEST_F(RegistryValuesWindows, WhatIsNoTextIsNoValue) {
    const DWORD number = 7;
    set(user_, u"number", REG_DWORD, &number, sizeof number);
    set(user_, u"bytes", REG_BINARY, u"abc", 8);
    set(user_, u"list", REG_MULTI_SZ, u"a\0b\0", 10);
    EXPECT_EQ(read(u"number"), u"none");
    EXPECT_EQ(read(u"bytes"), u"none");
    EXPECT_EQ(read(u"list"), u"none");
}

TEST_F(RegistryValuesWindows, AMissingOrHalfNulDoesNoHarm) {
    set(user_, u"bare", REG_SZ, u"abc", 3 * sizeof(char16_t));
    EXPECT_EQ(read(u"bare"), u"abc");
    set(user_, u"odd", REG_SZ, u"abc", 2 * sizeof(char16_t) + 1);
    EXPECT_EQ(read(u"odd"), u"ab");
    set(user_, u"nothing", REG_SZ, u"", 0);
    EXPECT_EQ(read(u"nothing"), u"");
}

TEST_F(RegistryValuesWindows, VariablesOfTheEnvironmentStayVariables) {
    setText(user_, u"v", u"%ProgramFiles%\\Old", REG_EXPAND_SZ);
    EXPECT_EQ(read(u"v"), u"%ProgramFiles%\\Old");
    EXPECT_TRUE(writeRegistryValue(kKey, u"v", u"%ProgramFiles%\\New"));
    EXPECT_EQ(read(u"v"), u"%ProgramFiles%\\New");
    EXPECT_EQ(typeOf(u"v"), DWORD{REG_EXPAND_SZ});
}

TEST_F(RegistryValuesWindows, AWrittenTextTakesThePlaceOfWhatIsNone) {
    const DWORD number = 7;
    set(user_, u"v", REG_DWORD, &number, sizeof number);
    EXPECT_TRUE(writeRegistryValue(kKey, u"v", u"seven"));
    EXPECT_EQ(typeOf(u"v"), DWORD{REG_SZ});
    EXPECT_EQ(read(u"v"), u"seven");
}

TEST_F(RegistryValuesWindows, ATextThatIsTooLongIsNoValue) {
    setText(user_, u"v", std::u16string(kLongestRegistryValue + 1, u'x'));
    EXPECT_EQ(read(u"v"), u"none");
    setText(user_, u"v", std::u16string(kLongestRegistryValue / 2 + 1, u'\u00e9'));
    EXPECT_EQ(read(u"v"), u"none") << "its UTF-8 would be too long";
}

TEST_F(RegistryValuesWindows, NamesThatTheSystemHasNotAreRefused) {
    const std::u16string withNul(u"a\0b", 3);
    EXPECT_FALSE(writeRegistryValue(kKey, withNul, u"text"));
    EXPECT_FALSE(writeRegistryValue(withNul, u"v", u"text"));
    EXPECT_EQ(readRegistryValue(kKey, withNul), std::nullopt);
    EXPECT_EQ(readRegistryValue(kKey, u"a"), std::nullopt) << "nothing went to the name in front of the NUL";
    EXPECT_TRUE(deleteRegistryValue(kKey, withNul)) << "it isn't there";
    const std::u16string tooLong(20000, u'v');
    EXPECT_FALSE(writeRegistryValue(kKey, tooLong, u"text"));
    EXPECT_EQ(readRegistryValue(kKey, tooLong), std::nullopt);
}

} // namespace
} // namespace tessera::platform
