#include "appservices/translation/FormatConversions.h"

#include <algorithm>
#include <string>

namespace tessera {
namespace {

constexpr std::u16string_view kFlags = u"-+ #0";
constexpr std::u16string_view kDigits = u"0123456789";
constexpr std::u16string_view kLetters = u"diouxXpfegaFEGAcsCS%";
// The longer ones first.
constexpr std::u16string_view kSizes[] = {u"hh", u"h", u"ll", u"l", u"I64", u"I32", u"z"};

bool isLetter(char16_t c) {
    return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z');
}

std::size_t skip(std::u16string_view text, std::size_t at, std::u16string_view set) {
    const std::size_t next = text.find_first_not_of(set, at);
    return next != std::u16string_view::npos ? next : text.size();
}

std::size_t skipCount(std::u16string_view text, std::size_t at) {
    return at < text.size() && text[at] == u'*' ? at + 1 : skip(text, at, kDigits);
}

std::u16string_view sizeAt(std::u16string_view text, std::size_t at) {
    for (const std::u16string_view size : kSizes) {
        if (text.substr(at).starts_with(size)) {
            return size;
        }
    }
    return {};
}

struct Conversion {
    // 0 for none.
    std::size_t length = 0;
    // Width and precision that come as arguments.
    std::size_t stars = 0;
    std::u16string_view size;
    char16_t letter = u'\0';
};

Conversion conversionAtFront(std::u16string_view text) {
    if (!text.starts_with(u'%')) {
        return {};
    }
    std::size_t at = skipCount(text, skip(text, 1, kFlags));
    if (at < text.size() && text[at] == u'.') {
        at = skipCount(text, at + 1);
    }
    Conversion result;
    result.size = sizeAt(text, at);
    at += result.size.size();
    if (at >= text.size() || kLetters.find(text[at]) == std::u16string_view::npos) {
        return {};
    }
    result.letter = text[at];
    result.length = at + 1;
    const std::u16string_view all = text.substr(0, result.length);
    result.stars = static_cast<std::size_t>(std::count(all.begin(), all.end(), u'*'));
    return result;
}

// Conversions that read the same sort of argument may print it as they like.
char16_t sortOf(char16_t letter) {
    if (std::u16string_view(u"diouxX").find(letter) != std::u16string_view::npos) {
        return u'd';
    }
    return std::u16string_view(u"fegaFEGA").find(letter) != std::u16string_view::npos ? u'f' : letter;
}

// What a print with the text takes: for each conversion its stars, its size and a letter for the sort.
std::u16string argumentsOf(std::u16string_view text) {
    std::u16string arguments;
    for (std::size_t at = text.find(u'%'); at != std::u16string_view::npos; at = text.find(u'%', at)) {
        const Conversion conversion = conversionAtFront(text.substr(at));
        at += conversion.length != 0 ? conversion.length : 1;
        arguments.append(conversion.stars, u'*');
        if (conversion.length != 0 && conversion.letter != u'%') {
            arguments.append(conversion.size);
            arguments.push_back(sortOf(conversion.letter));
        }
    }
    return arguments;
}

} // namespace

bool conversionsMatch(std::u16string_view key, std::u16string_view text) {
    std::size_t inKey = key.find(u'%');
    std::size_t inText = text.find(u'%');
    while (inKey != std::u16string_view::npos && inText != std::u16string_view::npos) {
        const char16_t wanted = inKey + 1 < key.size() ? key[inKey + 1] : u'\0';
        const char16_t found = inText + 1 < text.size() ? text[inText + 1] : u'\0';
        if (wanted != found && isLetter(wanted)) {
            return false;
        }
        inKey = key.find(u'%', inKey + 1);
        inText = text.find(u'%', inText + 1);
    }
    return true;
}

bool takeSameArguments(std::u16string_view key, std::u16string_view text) {
    return argumentsOf(key) == argumentsOf(text);
}

std::size_t conversionLength(std::u16string_view text) {
    return conversionAtFront(text).length;
}

} // namespace tessera
