// OwnConsole: a console of this process's own for the length of a scope, empty at first, whose text can be read and
// into which can be typed. It begins with the code page of the first personal computers, which has few letters.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <array>
#include <string>
#include <string_view>

namespace tessera::testing_support {

class OwnConsole {
public:
    static constexpr UINT kCodePage = 437;

    OwnConsole() {
        for (std::size_t i = 0; i < kStreams.size(); ++i) {
            streamsBefore_[i] = GetStdHandle(kStreams[i]);
        }
        FreeConsole();
        EXPECT_TRUE(AllocConsole() && SetConsoleOutputCP(kCodePage));
        screen_ = open(L"CONOUT$");
        keyboard_ = open(L"CONIN$");
    }
    OwnConsole(const OwnConsole&) = delete;
    OwnConsole& operator=(const OwnConsole&) = delete;
    ~OwnConsole() {
        CloseHandle(keyboard_);
        CloseHandle(screen_);
        FreeConsole();
        for (std::size_t i = 0; i < kStreams.size(); ++i) {
            SetStdHandle(kStreams[i], streamsBefore_[i]);
        }
    }

    // For a child as well.
    HANDLE screen() const { return screen_; }
    HANDLE keyboard() const { return keyboard_; }

    // As a keyboard that has a key for each unit of the text; "\r" is the key that ends a line.
    void type(std::wstring_view text) const {
        for (const wchar_t unit : text) {
            INPUT_RECORD key = {};
            key.EventType = KEY_EVENT;
            key.Event.KeyEvent.bKeyDown = TRUE;
            key.Event.KeyEvent.wRepeatCount = 1;
            key.Event.KeyEvent.wVirtualKeyCode = unit == L'\r' ? VK_RETURN : 0;
            key.Event.KeyEvent.uChar.UnicodeChar = unit;
            DWORD written = 0;
            EXPECT_TRUE(WriteConsoleInputW(keyboard_, &key, 1, &written));
        }
    }

    void write(std::string_view bytes) const {
        DWORD written = 0;
        EXPECT_TRUE(WriteFile(screen_, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr));
    }

    // What stands there from the top left to the cursor, line by line with the blanks that fill them up.
    std::wstring text() const {
        CONSOLE_SCREEN_BUFFER_INFO info = {};
        EXPECT_TRUE(GetConsoleScreenBufferInfo(screen_, &info));
        const int size = info.dwCursorPosition.Y * info.dwSize.X + info.dwCursorPosition.X;
        std::wstring text(static_cast<std::size_t>(size), L'\0');
        DWORD read = 0;
        EXPECT_TRUE(ReadConsoleOutputCharacterW(screen_, text.data(), static_cast<DWORD>(size), {0, 0}, &read));
        text.resize(read);
        return text;
    }

private:
    static HANDLE open(const wchar_t* name) {
        SECURITY_ATTRIBUTES inheritable = {sizeof inheritable, nullptr, TRUE};
        HANDLE handle = CreateFileW(name, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                    &inheritable, OPEN_EXISTING, 0, nullptr);
        EXPECT_NE(handle, INVALID_HANDLE_VALUE);
        return handle;
    }

    static constexpr std::array<DWORD, 3> kStreams = {STD_INPUT_HANDLE, STD_OUTPUT_HANDLE, STD_ERROR_HANDLE};

    std::array<HANDLE, 3> streamsBefore_ = {};
    HANDLE screen_ = INVALID_HANDLE_VALUE;
    HANDLE keyboard_ = INVALID_HANDLE_VALUE;
};

} // namespace tessera::testing_support
