#include "persistence/xml/XmlEntities.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>
#include <string_view>

namespace tessera {

namespace {

// Each row spells its code: the names leave gaps, so no code follows from the place of a name. The second row of
// "iquest" is never found; the table has it.
constexpr FXmlEntity kEntities[] = {
    {"quot", 0x22, 0x22, true},    {"amp", 0x26, 0x26, true},     {"lt", 0x3C, 0x3C, true},
    {"gt", 0x3E, 0x3E, true},      {"bsol", 0x5C, 0x5C, false},   {"apos", 0x27, 0x27, false},
    {"excl", 0x21, 0x21, false},   {"num", 0x23, 0x23, false},    {"dollar", 0x24, 0x24, true},
    {"percnt", 0x25, 0x25, false}, {"lpar", 0x28, 0x28, false},   {"rpar", 0x29, 0x29, false},
    {"ast", 0x2A, 0x2A, false},    {"plus", 0x2B, 0x2B, false},   {"comma", 0x2C, 0x2C, false},
    {"hyphen", 0x2D, 0x2D, false}, {"period", 0x2E, 0x2E, false}, {"sol", 0x2F, 0x2F, false},
    {"colon", 0x3A, 0x3A, false},  {"semi", 0x3B, 0x3B, false},   {"equals", 0x3D, 0x3D, false},
    {"quest", 0x3F, 0x3F, false},  {"commat", 0x40, 0x40, false}, {"lsqb", 0x5B, 0x5B, false},
    {"rsqb", 0x5D, 0x5D, false},   {"circ", 0x5E, 0x5E, true},    {"horbar", 0x5F, 0x5F, false},
    {"grave", 0x60, 0x60, true},   {"lcub", 0x7B, 0x7B, false},   {"verbar", 0x7C, 0x7C, false},
    {"rcub", 0x7D, 0x7D, false},   {"tilde", 0x7E, 0x7E, false},  {"nl", 0x0A, 0x0A, true},
    {"cr", 0x0D, 0x0D, true},      {"nbsp", 0xA0, 0xCA, true},    {"iexcl", 0xA1, 0xC1, false},
    {"cent", 0xA2, 0xA2, false},   {"pound", 0xA3, 0xA3, false},  {"curren", 0xA4, 0xDB, false},
    {"yen", 0xA5, 0xB4, false},    {"brvbar", 0xA6, 0xFF, false}, {"sect", 0xA7, 0xA4, false},
    {"uml", 0xA8, 0xAC, false},    {"copy", 0xA9, 0xA9, false},   {"ordf", 0xAA, 0xBB, false},
    {"laquo", 0xAB, 0xC7, false},  {"not", 0xAC, 0xC2, false},    {"reg", 0xAE, 0xA8, false},
    {"macr", 0xAF, 0xF8, false},   {"deg", 0xB0, 0xA1, false},    {"plusmn", 0xB1, 0xB1, false},
    {"sup2", 0xB2, 0xFF, false},   {"sup3", 0xB3, 0xFF, false},   {"acute", 0xB4, 0xAB, false},
    {"micro", 0xB5, 0xB5, false},  {"para", 0xB6, 0xA6, false},   {"middot", 0xB7, 0xE1, false},
    {"cedil", 0xB8, 0xFC, false},  {"sup1", 0xB9, 0xFF, false},   {"ordm", 0xBA, 0xBC, false},
    {"raquo", 0xBB, 0xC8, false},  {"frac14", 0xBC, 0xFF, false}, {"frac12", 0xBD, 0xFF, false},
    {"half", 0xBD, 0xFF, false},   {"frac34", 0xBE, 0xFF, false}, {"iquest", 0xBF, 0xC0, false},
    {"iquest", 0xBF, 0xC0, false}, {"Agrave", 0xC0, 0xCB, false}, {"Aacute", 0xC1, 0xE7, false},
    {"Atilde", 0xC3, 0xCC, false}, {"Auml", 0xC4, 0x80, false},   {"Aring", 0xC5, 0x81, false},
    {"AElig", 0xC6, 0xAE, false},  {"Ccedil", 0xC7, 0x82, false}, {"Egrave", 0xC8, 0xE9, false},
    {"Eacute", 0xC9, 0x83, false}, {"Ecirc", 0xCA, 0xE6, false},  {"Euml", 0xCB, 0xE8, false},
    {"Igrave", 0xCC, 0xED, false}, {"Iacute", 0xCD, 0xEA, false}, {"Icirc", 0xCE, 0xEB, false},
    {"Iuml", 0xCF, 0xEC, false},   {"ETH", 0xD0, 0xFF, false},    {"Ntilde", 0xD1, 0x84, false},
    {"Ograve", 0xD2, 0xF1, false}, {"Oacute", 0xD3, 0xEE, false}, {"Ocirc", 0xD4, 0xEF, false},
    {"Otilde", 0xD5, 0xCD, false}, {"Ouml", 0xD6, 0x85, false},   {"times", 0xD7, 0xFF, false},
    {"Oslash", 0xD8, 0xAF, false}, {"Ugrave", 0xD9, 0xF4, false}, {"Uacute", 0xDA, 0xF2, false},
    {"Ucirc", 0xDB, 0xF3, false},  {"Uuml", 0xDC, 0x86, false},   {"Yacute", 0xDD, 0xFF, false},
    {"THORN", 0xDE, 0xFF, false},  {"szlig", 0xDF, 0xA7, false},  {"agrave", 0xE0, 0x88, false},
    {"aacute", 0xE1, 0x87, false}, {"acirc", 0xE2, 0x89, false},  {"atilde", 0xE3, 0x8B, false},
    {"auml", 0xE4, 0x8A, false},   {"aring", 0xE5, 0x8C, false},  {"aelig", 0xE6, 0xBE, false},
    {"ccedil", 0xE7, 0x8D, false}, {"egrave", 0xE8, 0x8F, false}, {"eacute", 0xE9, 0x8E, false},
    {"ecirc", 0xEA, 0x90, false},  {"euml", 0xEB, 0x91, false},   {"igrave", 0xEC, 0x93, false},
    {"iacute", 0xED, 0x92, false}, {"icirc", 0xEE, 0x94, false},  {"iuml", 0xEF, 0x95, false},
    {"eth", 0xF0, 0xFF, false},    {"ntilde", 0xF1, 0x96, false}, {"ograve", 0xF2, 0x98, false},
    {"oacute", 0xF3, 0x97, false}, {"ocirc", 0xF4, 0x99, false},  {"otilde", 0xF5, 0x9B, false},
    {"ouml", 0xF6, 0x9A, false},   {"divide", 0xF7, 0xD6, false}, {"oslash", 0xF8, 0xBF, false},
    {"ugrave", 0xF9, 0x9D, false}, {"uacute", 0xFA, 0x9C, false}, {"ucirc", 0xFB, 0x9E, false},
    {"uuml", 0xFC, 0x9F, false},   {"yacute", 0xFD, 0xFF, false}, {"thorn", 0xFE, 0xFF, false},
    {"yuml", 0xFF, 0xD8, false},
};
static_assert(std::size(kEntities) == 130);

constexpr std::size_t kLongestName = 6;

// The row by whose name a byte is written, for each byte; -1 for none.
constexpr std::array<std::int16_t, 256> makeReverseMap() {
    std::array<std::int16_t, 256> rows{};
    rows.fill(-1);
    for (std::size_t row = 0; row < std::size(kEntities); ++row) {
        if (kEntities[row].writable) {
            rows[kEntities[row].ansi] = static_cast<std::int16_t>(row);
        }
    }
    return rows;
}

constexpr std::array<std::int16_t, 256> kReverseMap = makeReverseMap();

int digitOf(char byte) {
    if (byte >= '0' && byte <= '9') {
        return byte - '0';
    }
    if (byte >= 'a' && byte <= 'f') {
        return byte - 'a' + 10;
    }
    return byte >= 'A' && byte <= 'F' ? byte - 'A' + 10 : 16;
}

// As "%d" and "%x" scan: blanks, a sign and "0x" may come first, and what comes behind the digits isn't looked at. Only
// the low bits count, so the number may wrap. 0 when there is none.
std::uint8_t scanByte(std::string_view number, int base) {
    number.remove_prefix(std::min(number.find_first_not_of(" \t\n\v\f\r"), number.size()));
    const bool isNegative = number.starts_with('-');
    if (isNegative || number.starts_with('+')) {
        number.remove_prefix(1);
    }
    if (base == 16 && (number.starts_with("0x") || number.starts_with("0X"))) {
        number.remove_prefix(2);
    }
    std::uint32_t value = 0;
    for (const char byte : number) {
        const int digit = digitOf(byte);
        if (digit >= base) {
            break;
        }
        value = value * static_cast<std::uint32_t>(base) + static_cast<std::uint32_t>(digit);
    }
    return static_cast<std::uint8_t>(isNegative ? 0 - value : value);
}

// The byte that is meant by what stands between "&" and ";", or 0.
std::uint8_t byteOf(std::string_view entity, FXmlEntityColumn column) {
    if (entity.starts_with("#x")) {
        return scanByte(entity.substr(2), 16);
    }
    if (entity.starts_with('#')) {
        return scanByte(entity.substr(1), 10);
    }
    if (entity.size() > kLongestName) {
        return 0;
    }
    for (const FXmlEntity& row : kEntities) {
        if (entity == row.name) {
            return column == FXmlEntityColumn::ansi ? row.ansi : row.second;
        }
    }
    return 0;
}

} // namespace

std::span<const FXmlEntity> xmlEntities() {
    return kEntities;
}

const char* writableXmlEntity(std::uint8_t byte) {
    const std::int16_t row = kReverseMap[byte];
    return row >= 0 ? kEntities[row].name : nullptr;
}

std::size_t resolveXmlEntities(char* text, std::size_t length, FXmlEntityColumn column, bool* hasHighByte) {
    const std::string_view source(text, length);
    std::size_t read = 0;
    std::size_t written = 0;
    const auto keep = [&](std::size_t end) {
        std::memmove(text + written, text + read, end - read);
        written += end - read;
        read = end;
    };
    while (read < length) {
        keep(std::min(source.find('&', read), length));
        // No entity holds a further "&", which keeps a text of nothing else from being searched anew at each.
        const std::size_t end = source.find_first_of("&;", read + 1);
        if (end == source.npos) {
            keep(length);
            break;
        }
        const std::uint8_t byte =
            source[end] == ';' ? byteOf(source.substr(read + 1, end - read - 1), column) : std::uint8_t(0);
        if (byte == 0) {
            keep(end);
            continue;
        }
        text[written++] = static_cast<char>(byte);
        read = end + 1;
        if (hasHighByte != nullptr && byte >= 0x80) {
            *hasHighByte = true;
        }
    }
    return written;
}

} // namespace tessera
