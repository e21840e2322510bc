#include "foundation/text/FTextFormat.h"

#include "foundation/text/FString.h"
#include "foundation/text/FTextConversion.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <string_view>
#include <type_traits>

namespace tessera {
namespace {

enum class Length { none, byte, half, whole, word64, word32, size };

struct Conversion {
    bool leftAligned = false;
    bool plus = false;
    bool blank = false;
    bool alternate = false;
    bool zeros = false;
    int width = 0;
    // -1: none given.
    int precision = -1;
    Length length = Length::none;
    char kind = 0;
};

// A va_list in an object, so that it can be handed down by reference whatever the type behind the name is.
struct Arguments {
    explicit Arguments(std::va_list source) { va_copy(list, source); }
    Arguments(const Arguments&) = delete;
    Arguments& operator=(const Arguments&) = delete;
    ~Arguments() { va_end(list); }

    std::va_list list;
};

// What a value becomes before it is padded: sign or base, zeros that the precision asks for, digits.
struct NumberParts {
    std::string_view prefix;
    std::size_t zeros = 0;
    std::string_view digits;
};

constexpr int kWidthCeiling = 1 << 20;

template <class Character>
class Printer {
public:
    Printer(Character* target, std::size_t limit, std::va_list arguments)
        : begin_(target), at_(target), end_(target + limit), arguments_(arguments) {}

    std::size_t print(const Character* format) {
        while (*format != 0 && at_ != end_) {
            if (*format != '%') {
                *at_++ = *format++;
                continue;
            }
            const Character* const start = format;
            const Conversion conversion = parse(++format);
            if (!convert(conversion)) {
                put(std::basic_string_view<Character>(start, static_cast<std::size_t>(format - start)));
            }
        }
        return static_cast<std::size_t>(at_ - begin_);
    }

private:
    using Other = std::conditional_t<std::is_same_v<Character, char>, char16_t, char>;

    Conversion parse(const Character*& format) {
        Conversion conversion;
        while (parseFlag(*format, conversion)) {
            ++format;
        }
        conversion.width = parseCount(format);
        if (conversion.width < 0) {
            conversion.leftAligned = true;
            conversion.width = -conversion.width;
        }
        if (*format == '.') {
            ++format;
            conversion.precision = std::max(parseCount(format), -1);
        }
        conversion.length = parseLength(format);
        if (*format != 0) {
            const Character kind = *format++;
            conversion.kind = kind < 0x80 && kind > 0 ? static_cast<char>(kind) : '\0';
        }
        return conversion;
    }

    static bool parseFlag(Character c, Conversion& conversion) {
        switch (c) {
        case '-':
            return conversion.leftAligned = true;
        case '+':
            return conversion.plus = true;
        case ' ':
            return conversion.blank = true;
        case '#':
            return conversion.alternate = true;
        case '0':
            return conversion.zeros = true;
        default:
            return false;
        }
    }

    int parseCount(const Character*& format) {
        if (*format == '*') {
            ++format;
            return std::clamp(va_arg(arguments_.list, int), -kWidthCeiling, kWidthCeiling);
        }
        int count = 0;
        for (; FStringRef::isDigit(*format); ++format) {
            count = std::min(count * 10 + static_cast<int>(*format - '0'), kWidthCeiling);
        }
        return count;
    }

    static Length parseLength(const Character*& format) {
        switch (*format) {
        case 'h':
            ++format;
            return take(format, 'h') ? Length::byte : Length::half;
        case 'l':
            ++format;
            return take(format, 'l') ? Length::word64 : Length::whole;
        case 'z':
            ++format;
            return Length::size;
        case 'I':
            if (format[1] == '6' && format[2] == '4') {
                format += 3;
                return Length::word64;
            }
            if (format[1] == '3' && format[2] == '2') {
                format += 3;
                return Length::word32;
            }
            return Length::none;
        default:
            return Length::none;
        }
    }

    static bool take(const Character*& format, char c) {
        if (*format != static_cast<Character>(c)) {
            return false;
        }
        ++format;
        return true;
    }

    // False for a conversion that isn't known.
    bool convert(const Conversion& conversion) {
        switch (conversion.kind) {
        case 'd':
        case 'i':
            printSigned(conversion);
            return true;
        case 'u':
        case 'o':
        case 'x':
        case 'X':
            printUnsigned(conversion);
            return true;
        case 'p':
            printPointer(conversion);
            return true;
        case 'f':
        case 'F':
        case 'e':
        case 'E':
        case 'g':
        case 'G':
        case 'a':
        case 'A':
            printFloat(conversion);
            return true;
        case 'c':
        case 'C':
            printCharacter(conversion);
            return true;
        case 's':
        case 'S':
            printText(conversion);
            return true;
        case '%':
            put('%');
            return true;
        default:
            return false;
        }
    }

    std::int64_t signedArgument(Length length) {
        switch (length) {
        case Length::byte:
            return static_cast<signed char>(va_arg(arguments_.list, int));
        case Length::half:
            return static_cast<short>(va_arg(arguments_.list, int));
        case Length::whole:
            return va_arg(arguments_.list, long);
        case Length::word64:
            return va_arg(arguments_.list, long long);
        case Length::size:
            return static_cast<std::int64_t>(va_arg(arguments_.list, std::size_t));
        default:
            return va_arg(arguments_.list, int);
        }
    }

    std::uint64_t unsignedArgument(Length length) {
        switch (length) {
        case Length::byte:
            return static_cast<unsigned char>(va_arg(arguments_.list, unsigned));
        case Length::half:
            return static_cast<unsigned short>(va_arg(arguments_.list, unsigned));
        case Length::whole:
            return va_arg(arguments_.list, unsigned long);
        case Length::word64:
            return va_arg(arguments_.list, unsigned long long);
        case Length::size:
            return va_arg(arguments_.list, std::size_t);
        default:
            return va_arg(arguments_.list, unsigned);
        }
    }

    void printSigned(const Conversion& conversion) {
        const std::int64_t value = signedArgument(conversion.length);
        const std::uint64_t magnitude =
            value < 0 ? 0 - static_cast<std::uint64_t>(value) : static_cast<std::uint64_t>(value);
        const std::string_view sign = value < 0 ? "-" : conversion.plus ? "+" : conversion.blank ? " " : "";
        printDigits(conversion, sign, magnitude, 10);
    }

    void printUnsigned(const Conversion& conversion) {
        const std::uint64_t value = unsignedArgument(conversion.length);
        switch (conversion.kind) {
        case 'o':
            printDigits(conversion, "", value, 8);
            return;
        case 'x':
            printDigits(conversion, conversion.alternate && value != 0 ? "0x" : "", value, 16);
            return;
        case 'X':
            printDigits(conversion, conversion.alternate && value != 0 ? "0X" : "", value, 16);
            return;
        default:
            printDigits(conversion, "", value, 10);
            return;
        }
    }

    void printPointer(const Conversion& conversion) {
        const auto value = reinterpret_cast<std::uintptr_t>(va_arg(arguments_.list, void*));
        printDigits(conversion, "0x", value, 16);
    }

    void printDigits(const Conversion& conversion, std::string_view prefix, std::uint64_t value, int base) {
        char digits[24];
        const char* const end = std::to_chars(digits, digits + sizeof digits, value, base).ptr;
        NumberParts parts{prefix, 0, std::string_view(digits, static_cast<std::size_t>(end - digits))};
        if (conversion.kind == 'X') {
            std::for_each(digits, digits + parts.digits.size(), [](char& c) { c = c >= 'a' ? char(c - 32) : c; });
        }
        if (value == 0 && conversion.precision == 0) {
            parts.digits = {};
        }
        const auto wanted = static_cast<std::size_t>(std::max(conversion.precision, 0));
        parts.zeros = wanted > parts.digits.size() ? wanted - parts.digits.size() : 0;
        if (conversion.kind == 'o' && conversion.alternate && parts.zeros == 0 &&
            (parts.digits.empty() || parts.digits.front() != '0')) {
            parts.zeros = 1;
        }
        putNumber(conversion, parts);
    }

    void putNumber(const Conversion& conversion, NumberParts parts) {
        const std::size_t size = parts.prefix.size() + parts.zeros + parts.digits.size();
        const auto width = static_cast<std::size_t>(conversion.width);
        std::size_t padding = width > size ? width - size : 0;
        // A precision overrules the zero flag, as does left alignment.
        if (conversion.zeros && !conversion.leftAligned && conversion.precision < 0) {
            parts.zeros += padding;
            padding = 0;
        }
        repeat(' ', conversion.leftAligned ? 0 : padding);
        putBytes(parts.prefix);
        repeat('0', parts.zeros);
        putBytes(parts.digits);
        repeat(' ', conversion.leftAligned ? padding : 0);
    }

    // The library does the rounding and knows the locale's point; it sees one conversion, rebuilt from what was parsed.
    void printFloat(const Conversion& conversion) {
        const double value = va_arg(arguments_.list, double);
        char format[16] = "%";
        char* at = format + 1;
        const auto flag = [&](bool given, char c) {
            if (given) {
                *at++ = c;
            }
        };
        flag(conversion.leftAligned, '-');
        flag(conversion.plus, '+');
        flag(conversion.blank, ' ');
        flag(conversion.alternate, '#');
        flag(conversion.zeros, '0');
        *at++ = '*';
        *at++ = '.';
        *at++ = '*';
        *at++ = conversion.kind;
        *at = '\0';
        char text[FString::kPrintLimit + 1];
        const int printed = std::snprintf(text, sizeof text, format, conversion.width, conversion.precision, value);
        const std::size_t size = std::min(static_cast<std::size_t>(std::max(printed, 0)), sizeof text - 1);
        put(FStringRef(text, static_cast<std::int32_t>(size)));
    }

    // Which width an argument has: that of the format for small letters, the other one for capitals, unless h or l
    // says.
    bool isWideArgument(const Conversion& conversion) const {
        if (conversion.length == Length::half) {
            return false;
        }
        if (conversion.length == Length::whole) {
            return true;
        }
        const bool own = conversion.kind == 's' || conversion.kind == 'c';
        return own == std::is_same_v<Character, char16_t>;
    }

    void printCharacter(const Conversion& conversion) {
        const int argument = va_arg(arguments_.list, int);
        if (isWideArgument(conversion)) {
            const auto c = static_cast<char16_t>(argument);
            putPadded(conversion, FStringRef(&c, 1));
        } else {
            const auto c = static_cast<char>(argument);
            putPadded(conversion, FStringRef(&c, 1));
        }
    }

    void printText(const Conversion& conversion) {
        if (isWideArgument(conversion)) {
            printTextOf(conversion, va_arg(arguments_.list, const char16_t*));
        } else {
            printTextOf(conversion, va_arg(arguments_.list, const char*));
        }
    }

    template <class Source>
    void printTextOf(const Conversion& conversion, const Source* text) {
        if (text == nullptr) {
            putPadded(conversion, "(null)");
            return;
        }
        // With a precision the text need not end with a NUL.
        const std::size_t most =
            conversion.precision < 0 ? FStringRef::kMaximumLength : static_cast<std::size_t>(conversion.precision);
        std::size_t size = 0;
        while (size < most && text[size] != 0) {
            ++size;
        }
        putPadded(conversion, FStringRef(text, static_cast<std::int32_t>(size)));
    }

    void putPadded(const Conversion& conversion, const FStringRef& text) {
        if (text.isWide() == std::is_same_v<Character, char16_t>) {
            putPaddedView(conversion, viewOf(text));
            return;
        }
        FString copy(text);
        const bool converted = text.isWide() ? copy.toMultiByte() : copy.toWide();
        putPaddedView(conversion, converted ? viewOf(copy) : std::basic_string_view<Character>());
    }

    void putPaddedView(const Conversion& conversion, std::basic_string_view<Character> text) {
        const auto width = static_cast<std::size_t>(conversion.width);
        const std::size_t padding = width > text.size() ? width - text.size() : 0;
        repeat(conversion.zeros && !conversion.leftAligned ? '0' : ' ', conversion.leftAligned ? 0 : padding);
        put(text);
        repeat(' ', conversion.leftAligned ? padding : 0);
    }

    static std::basic_string_view<Character> viewOf(const FStringRef& text) {
        if constexpr (std::is_same_v<Character, char16_t>) {
            return text.view16();
        } else {
            return text.view8();
        }
    }

    void put(char c) {
        if (at_ != end_) {
            *at_++ = static_cast<Character>(c);
        }
    }

    void put(std::basic_string_view<Character> text) {
        const std::size_t size = std::min(text.size(), static_cast<std::size_t>(end_ - at_));
        at_ = std::copy_n(text.data(), size, at_);
    }

    // ASCII.
    void putBytes(std::string_view text) {
        std::for_each(text.begin(), text.end(), [this](char c) { put(c); });
    }

    // The text of a float: its point may be any character of the locale.
    void put(const FStringRef& text) {
        if (std::is_same_v<Character, char> || text.isAscii()) {
            putBytes(text.view8());
        } else {
            putPadded(Conversion(), text);
        }
    }

    void repeat(char c, std::size_t count) {
        const std::size_t size = std::min(count, static_cast<std::size_t>(end_ - at_));
        at_ = std::fill_n(at_, size, static_cast<Character>(c));
    }

    Character* const begin_;
    Character* at_;
    Character* const end_;
    Arguments arguments_;
};

} // namespace

std::size_t FTextFormat::print(char* target, std::size_t limit, const char* format, std::va_list arguments) {
    return Printer<char>(target, limit, arguments).print(format);
}

std::size_t FTextFormat::print(char16_t* target, std::size_t limit, const char16_t* format, std::va_list arguments) {
    return Printer<char16_t>(target, limit, arguments).print(format);
}

} // namespace tessera
