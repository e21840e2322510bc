#include "platform/CodePages.h"

#include <cerrno>
#include <cstdlib>
#include <iterator>
#include <string>
#include <string_view>

#include <iconv.h>
#include <langinfo.h>
#include <locale.h>
#include <pthread.h>
#include <strings.h>

namespace tessera::platform {
namespace {

constexpr std::string_view kUnsetCodeset = "ANSI_X3.4-1968";

// The locale that the environment names for characters, as the system itself looks for it; empty for none.
std::string_view localeName() {
    for (const char* variable : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        if (const char* name = std::getenv(variable); name != nullptr && *name != '\0') {
            return name;
        }
    }
    return {};
}

// Whether the name alone says that the answer is UTF-8, be the locale installed or not. That spares nearly every host
// the opening of the locale's file while it loads the module.
bool meansUtf8(std::string_view name) {
    if (name.empty() || name == "C" || name == "POSIX") {
        return true;
    }
    const std::size_t dot = name.find('.');
    const std::string codeset(dot == std::string_view::npos ? name.substr(0, 0) : name.substr(dot + 1));
    return strcasecmp(codeset.c_str(), "UTF-8") == 0 || strcasecmp(codeset.c_str(), "utf8") == 0;
}

// The codeset that the environment asks for. A host that never calls setlocale still lives in the user's locale; the C
// locale says nothing about text, so it means UTF-8, as does a locale that isn't installed.
std::string systemCodeset() {
    if (meansUtf8(localeName())) {
        return "UTF-8";
    }
    const locale_t locale = newlocale(LC_CTYPE_MASK, "", nullptr);
    if (locale == nullptr) {
        return "UTF-8";
    }
    std::string codeset = nl_langinfo_l(CODESET, locale);
    freelocale(locale);
    return codeset == kUnsetCodeset || codeset.empty() ? "UTF-8" : codeset;
}

const std::string& decidedCodeset() {
    static const std::string codeset = systemCodeset();
    return codeset;
}

// Decides when the module is loaded, before anything of the program can change the environment.
[[maybe_unused]] const std::string& codesetAtLoad = decidedCodeset();

std::string converterName(CodePage page) {
    if (page == CodePage::system) {
        return decidedCodeset();
    }
    if (page == CodePage::utf8) {
        return "UTF-8";
    }
    return "CP" + std::to_string(static_cast<std::uint32_t>(page));
}

constexpr const char* kUnits = __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__ ? "UTF-16LE" : "UTF-16BE";

const iconv_t kNoConverter = reinterpret_cast<iconv_t>(-1);

// Opening and closing loads and unloads a library of the system's, which does its own locking. It is done under a lock
// of ours all the same, so that the thread sanitizer, which can't see theirs, follows the order.
pthread_mutex_t loading = PTHREAD_MUTEX_INITIALIZER;

class LoadingGuard {
public:
    LoadingGuard() { pthread_mutex_lock(&loading); }
    LoadingGuard(const LoadingGuard&) = delete;
    LoadingGuard& operator=(const LoadingGuard&) = delete;
    ~LoadingGuard() { pthread_mutex_unlock(&loading); }
};

// One direction of one code page.
class Converter {
public:
    Converter() = default;
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;
    ~Converter() { close(); }

    bool serves(CodePage page) const { return handle_ != kNoConverter && page == page_; }

    void open(CodePage page, bool widens) {
        close();
        const LoadingGuard guard;
        const std::string name = converterName(page);
        handle_ = widens ? iconv_open(kUnits, name.c_str()) : iconv_open(name.c_str(), kUnits);
        page_ = page;
    }

    // In its initial state; null when the system doesn't know the page.
    iconv_t fresh() const {
        if (handle_ == kNoConverter) {
            return nullptr;
        }
        iconv(handle_, nullptr, nullptr, nullptr, nullptr);
        return handle_;
    }

private:
    void close() {
        if (handle_ != kNoConverter) {
            const LoadingGuard guard;
            iconv_close(handle_);
            handle_ = kNoConverter;
        }
    }

    CodePage page_ = CodePage::system;
    iconv_t handle_ = kNoConverter;
};

// One direction, for the pages that a thread used last. There are few of them, and a new one replaces the oldest.
class Converters {
public:
    explicit Converters(bool widens) : widens_(widens) {}

    iconv_t select(CodePage page) {
        for (const Converter& converter : kept_) {
            if (converter.serves(page)) {
                return converter.fresh();
            }
        }
        Converter& converter = kept_[oldest_];
        oldest_ = (oldest_ + 1) % std::size(kept_);
        converter.open(page, widens_);
        return converter.fresh();
    }

private:
    bool widens_;
    std::size_t oldest_ = 0;
    Converter kept_[4];
};

iconv_t widener(CodePage page) {
    thread_local Converters converters(true);
    return converters.select(page);
}

iconv_t narrower(CodePage page) {
    thread_local Converters converters(false);
    return converters.select(page);
}

// Where converted text goes: into the caller's room, or, for measuring, over and over into a small block of its own.
class Output {
public:
    Output(char* target, std::size_t capacity) : at_(target), room_(capacity), measures_(false) {}
    Output() : at_(block_), room_(sizeof block_), measures_(true) {}

    char** at() { return &at_; }
    std::size_t* room() { return &room_; }

    // After "no room": whether going on makes sense.
    bool makeRoom() {
        if (!measures_) {
            return false;
        }
        done_ += static_cast<std::ptrdiff_t>(at_ - block_);
        at_ = block_;
        room_ = sizeof block_;
        return true;
    }

    std::ptrdiff_t measured() const { return done_ + static_cast<std::ptrdiff_t>(at_ - block_); }

private:
    char block_[512];
    char* at_;
    std::size_t room_;
    std::ptrdiff_t done_ = 0;
    bool measures_;
};

bool widenInto(CodePage page, const char* text, std::size_t length, Output& output) {
    const iconv_t handle = widener(page);
    if (handle == nullptr) {
        return false;
    }
    char* source = const_cast<char*>(text);
    while (iconv(handle, &source, &length, output.at(), output.room()) == static_cast<std::size_t>(-1)) {
        if (errno != E2BIG || !output.makeRoom()) {
            return false;
        }
    }
    return true;
}

// One character given in 16 bits. False when there is no room, even after makeRoom.
bool narrowOne(iconv_t handle, char16_t unit, Output& output) {
    for (;;) {
        char* source = reinterpret_cast<char*>(&unit);
        std::size_t left = sizeof unit;
        if (iconv(handle, &source, &left, output.at(), output.room()) != static_cast<std::size_t>(-1)) {
            return true;
        }
        if (errno != E2BIG || !output.makeRoom()) {
            return false;
        }
    }
}

bool narrowInto(CodePage page, const char16_t* text, std::size_t length, Output& output) {
    const iconv_t handle = narrower(page);
    if (handle == nullptr) {
        return false;
    }
    char* source = reinterpret_cast<char*>(const_cast<char16_t*>(text));
    std::size_t left = length * sizeof(char16_t);
    while (iconv(handle, &source, &left, output.at(), output.room()) == static_cast<std::size_t>(-1)) {
        if (errno == E2BIG) {
            if (!output.makeRoom()) {
                return false;
            }
            continue;
        }
        // What has no place in the code page, or is half of a pair: one question mark for each unit of it.
        if (!narrowOne(handle, u'?', output)) {
            return false;
        }
        source += sizeof(char16_t);
        left -= sizeof(char16_t);
    }
    // Stateful codesets end in their initial state.
    while (iconv(handle, nullptr, nullptr, output.at(), output.room()) == static_cast<std::size_t>(-1)) {
        if (errno != E2BIG || !output.makeRoom()) {
            return false;
        }
    }
    return true;
}

} // namespace

CodePage resolveCodePage(CodePage page) {
    static const bool systemIsUtf8 = decidedCodeset() == "UTF-8" || decidedCodeset() == "utf8";
    return page == CodePage::system && systemIsUtf8 ? CodePage::utf8 : page;
}

std::ptrdiff_t widenedLength(CodePage page, const char* text, std::size_t length) {
    Output output;
    if (!widenInto(page, text, length, output)) {
        return -1;
    }
    return output.measured() / static_cast<std::ptrdiff_t>(sizeof(char16_t));
}

std::ptrdiff_t widen(CodePage page, const char* text, std::size_t length, char16_t* target, std::size_t capacity) {
    char* const begin = reinterpret_cast<char*>(target);
    Output output(begin, capacity * sizeof(char16_t));
    if (!widenInto(page, text, length, output)) {
        return -1;
    }
    return (*output.at() - begin) / static_cast<std::ptrdiff_t>(sizeof(char16_t));
}

std::ptrdiff_t narrowedLength(CodePage page, const char16_t* text, std::size_t length) {
    Output output;
    return narrowInto(page, text, length, output) ? output.measured() : -1;
}

std::ptrdiff_t narrow(CodePage page, const char16_t* text, std::size_t length, char* target, std::size_t capacity) {
    Output output(target, capacity);
    return narrowInto(page, text, length, output) ? *output.at() - target : -1;
}

} // namespace tessera::platform
