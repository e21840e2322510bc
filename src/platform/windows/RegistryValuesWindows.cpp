#include "platform/RegistryValues.h"

#include "platform/windows/WideText.h"

#include <algorithm>
#include <utility>
#include <windows.h>

namespace tessera::platform {
namespace {

class Key {
public:
    Key() = default;
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;
    ~Key() {
        if (handle_ != nullptr) {
            ::RegCloseKey(handle_);
        }
    }

    LSTATUS open(HKEY top, const std::u16string& path, REGSAM access) {
        return ::RegOpenKeyExW(top, wide(path.c_str()), 0, access, &handle_);
    }
    LSTATUS create(HKEY top, const std::u16string& path, REGSAM access) {
        return ::RegCreateKeyExW(top, wide(path.c_str()), 0, nullptr, REG_OPTION_NON_VOLATILE, access, nullptr,
                                 &handle_, nullptr);
    }
    HKEY handle() const { return handle_; }

private:
    HKEY handle_ = nullptr;
};

// A name ends at its NUL for the system, and would be another one.
bool canBeName(std::u16string_view text) {
    return text.find(u'\0') == text.npos;
}

// The path without its empty names, with which the system would find nothing.
std::u16string plainPath(std::u16string_view key) {
    std::u16string path;
    while (!key.empty()) {
        const std::u16string_view name = key.substr(0, key.find(u'\\'));
        key.remove_prefix(std::min(name.size() + 1, key.size()));
        if (!name.empty()) {
            path.append(path.empty() ? u"" : u"\\").append(name);
        }
    }
    return path;
}

std::size_t utf8Length(std::u16string_view text) {
    std::size_t length = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t unit = text[i];
        if (isHighSurrogate(unit) && i + 1 < text.size() && isLowSurrogate(text[i + 1])) {
            length += 4;
            ++i;
        } else {
            length += unit < 0x80 ? 1 : unit < 0x800 ? 2 : 3;
        }
    }
    return length;
}

// What others wrote may lack the NUL that ours has.
std::u16string withoutEnd(std::u16string text) {
    if (text.ends_with(u'\0')) {
        text.pop_back();
    }
    return text;
}

std::optional<std::u16string> readFrom(HKEY top, const std::u16string& path, const std::u16string& name) {
    Key key;
    if (key.open(top, path, KEY_QUERY_VALUE) != ERROR_SUCCESS) {
        return std::nullopt;
    }
    // The value can grow between two calls.
    std::u16string text;
    LSTATUS status = ERROR_MORE_DATA;
    while (status == ERROR_MORE_DATA && text.size() <= kLongestRegistryValue + 1) {
        DWORD type = REG_NONE;
        auto size = static_cast<DWORD>(text.size() * sizeof(char16_t));
        const bool measures = size == 0;
        status = ::RegQueryValueExW(key.handle(), wide(name.c_str()), nullptr, &type,
                                    measures ? nullptr : reinterpret_cast<BYTE*>(text.data()), &size);
        if (status != ERROR_SUCCESS && status != ERROR_MORE_DATA) {
            return std::nullopt;
        }
        if (type != REG_SZ && type != REG_EXPAND_SZ) {
            return std::nullopt;
        }
        if (status == ERROR_SUCCESS && measures && size != 0) {
            status = ERROR_MORE_DATA;
        }
        text.resize(status == ERROR_MORE_DATA ? (size + 1) / sizeof(char16_t) : size / sizeof(char16_t));
    }
    if (status != ERROR_SUCCESS) {
        return std::nullopt;
    }
    text = withoutEnd(std::move(text));
    return utf8Length(text) <= kLongestRegistryValue ? std::optional(std::move(text)) : std::nullopt;
}

// A value with variables of the environment in it stays one.
DWORD typeToWrite(HKEY key, const std::u16string& name) {
    DWORD type = REG_NONE;
    const LSTATUS status = ::RegQueryValueExW(key, wide(name.c_str()), nullptr, &type, nullptr, nullptr);
    return status == ERROR_SUCCESS && type == REG_EXPAND_SZ ? REG_EXPAND_SZ : REG_SZ;
}

} // namespace

std::optional<std::u16string> readRegistryValue(std::u16string_view key, std::u16string_view name,
                                                RegistryScope scope) {
    if (!canBeName(key) || !canBeName(name)) {
        return std::nullopt;
    }
    const std::u16string path = plainPath(key);
    const std::u16string value(name);
    std::optional<std::u16string> text = readFrom(HKEY_CURRENT_USER, path, value);
    if (!text && scope == RegistryScope::userAndMachine) {
        text = readFrom(HKEY_LOCAL_MACHINE, path, value);
    }
    return text;
}

bool writeRegistryValue(std::u16string_view key, std::u16string_view name, std::u16string_view text) {
    if (!canBeName(key) || !canBeName(name) || utf8Length(text) > kLongestRegistryValue) {
        return false;
    }
    Key opened;
    if (opened.create(HKEY_CURRENT_USER, plainPath(key), KEY_QUERY_VALUE | KEY_SET_VALUE) != ERROR_SUCCESS) {
        return false;
    }
    const std::u16string value(name);
    const std::u16string data(text);
    const auto size = static_cast<DWORD>((data.size() + 1) * sizeof(char16_t));
    return ::RegSetValueExW(opened.handle(), wide(value.c_str()), 0, typeToWrite(opened.handle(), value),
                            reinterpret_cast<const BYTE*>(data.c_str()), size) == ERROR_SUCCESS;
}

bool deleteRegistryValue(std::u16string_view key, std::u16string_view name) {
    if (!canBeName(key) || !canBeName(name)) {
        return true;
    }
    Key opened;
    LSTATUS status = opened.open(HKEY_CURRENT_USER, plainPath(key), KEY_SET_VALUE);
    if (status == ERROR_SUCCESS) {
        status = ::RegDeleteValueW(opened.handle(), wide(std::u16string(name).c_str()));
    }
    // The key may have gone since it was opened.
    return status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND || status == ERROR_KEY_DELETED;
}

} // namespace tessera::platform
