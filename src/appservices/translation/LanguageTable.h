// LanguageTable: the languages that programs of this house know, and which of them the user speaks.
//
// A language is its index in a fixed table, or the two letters of its code, which are the house's own: "us" is English,
// "jp" Japanese, "bp" Brazilian Portuguese. Whatever isn't in the table gives index 0, English. The system is asked
// once and its answers kept. Main thread, during start-up; everything that doesn't set may be called from any thread
// after that.
#pragma once

#include "foundation/text/FStringRef.h"

#include <cstdint>

namespace tessera {

class LanguageTable {
public:
    static constexpr std::int32_t kCount = 50;
    static constexpr std::int32_t kEnglish = 0;
    static constexpr std::int32_t kJapanese = 3;
    static constexpr std::int32_t kChinese = 9;
    static constexpr std::int32_t kKorean = 17;

    constexpr LanguageTable() = default;
    LanguageTable(const LanguageTable&) = delete;
    LanguageTable& operator=(const LanguageTable&) = delete;

    // The one of the process.
    static LanguageTable& getInstance();

    // What the machine is set up for.
    std::int32_t systemLanguage();
    // What the user has been given by setUserLanguage or, without that, what the user's settings say.
    std::int32_t userLanguage();
    // A negative index goes back to the user's settings.
    void setUserLanguage(std::int32_t index);

    // Texts are ASCII and live for ever; comparing is exact.
    static const char* nameOf(std::int32_t index);
    static std::int32_t indexOfName(const FStringRef& name);
    static const char* codeOf(std::int32_t index);
    static std::int32_t indexOfCode(const FStringRef& code);
    // The primary language number of Windows. Where two languages share one the upper row is found.
    static std::uint16_t idOf(std::int32_t index);
    static std::int32_t indexOfId(std::uint16_t id);

    // Whether 8-bit texts of the language have characters of two bytes, and whether the byte begins one.
    static bool isMultiByte(std::int32_t index);
    static bool isLeadByte(std::int32_t index, std::uint8_t byte);

    // 1 where the day has 24 hours, 0 where it has twice 12, -1 when it isn't known. Taken from the units of measure
    // that are usual: that is what has always been asked.
    static std::int32_t timeFormat();

private:
    static constexpr std::int32_t kUnknown = -1;

    std::int32_t system_ = kUnknown;
    std::int32_t user_ = kUnknown;
    std::int32_t override_ = kUnknown;
};

} // namespace tessera
