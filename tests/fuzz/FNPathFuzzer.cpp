// Path texts from outside: parsing, order, parents, extensions and the two ways of relative paths.
#include "foundation/object/FRefPtr.h"
#include "persistence/paths/FNPath.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

using namespace tessera;

void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

std::u16string textOf(const FString& string) {
    return string.text16();
}

// Bytes as characters; the highest few stand for halves of surrogate pairs and other rarities.
std::u16string anyText(const std::uint8_t* data, std::size_t size) {
    std::u16string text(data, data + size);
    for (char16_t& c : text) {
        c = c >= 0xf8 ? static_cast<char16_t>(0xd7fc + (c - 0xf8) * 0x101) : c;
    }
    return text;
}

// An absolute path of plain components, of which neither is empty nor "." nor "..".
std::u16string plainPath(const std::uint8_t* data, std::size_t size) {
    std::u16string text = u"C:\\r";
    for (std::size_t i = 0; i < std::min<std::size_t>(size, 60); ++i) {
        text += data[i] % 4 == 3 && text.back() != u'\\' ? u'\\' : static_cast<char16_t>(u'a' + data[i] % 4);
    }
    return text;
}

void checkParsing(const std::u16string& text) {
    FNPath path(text.c_str(), PathKind::file);
    const std::u16string full = textOf(path.getFullPath());
    require(textOf(path.getName()).find(u'\\') == std::u16string::npos);
    if (!path.getName().isEmpty() && !full.starts_with(u".\\")) {
        const FNPath again(full.c_str(), PathKind::file);
        require(FPath::comparePaths(&path, &again, false) == 0);
    }
    FString extension;
    FString base;
    const bool found = path.getExtension(extension);
    path.getBaseName(base, true);
    require(textOf(path.getName()) == textOf(base) + (found ? u"." + textOf(extension) : u""));
    char16_t buffer[260];
    path.getNativePath(buffer);
    path.setFileType(FFileType("Type", "wav"));
    path.ensureExtension(true);
    require(path.getExtension(extension) && textOf(path.getName()).size() <= 260);
    for (std::size_t steps = 0; !path.parentIsRoot() && path.ascend(); ++steps) {
        require(steps <= text.size());
    }
}

void checkOrder(const FPath& a, const FPath& b) {
    for (const bool caseSensitive : {false, true}) {
        require(FPath::comparePaths(&a, &b, caseSensitive) == -FPath::comparePaths(&b, &a, caseSensitive));
    }
    if (a.isParentOf(&b)) {
        require(!b.isParentOf(&a) && FPath::comparePaths(&a, &b, false) < 0);
    }
}

void checkRelative(const FNPath& base, const FNPath& target) {
    FNPath way(target);
    require(way.makeRelative(&base) && !way.isAbsolute());
    require(way.resolve(base) && FPath::comparePaths(&way, &target, true) == 0);
}

void checkWrapping(std::u16string text, int width) {
    std::erase(text, u'\n');
    FString wrapped(text.c_str());
    FPath::wrapForDisplay(wrapped, width / 2, width, width % 7);
    std::u16string joined = textOf(wrapped);
    std::erase(joined, u'\n');
    require(joined == text.c_str());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // Longer texts only repeat what shorter ones show.
    if (size < 2 || size > 1200) {
        return 0;
    }
    const std::size_t middle = 1 + data[0] * (size - 1) / 256;
    const std::uint8_t* second = data + middle;
    const std::u16string left = anyText(data + 1, middle - 1);
    const std::u16string right = anyText(second, size - middle);
    checkParsing(left);
    checkOrder(FNPath(left.c_str(), PathKind::file), FNPath(right.c_str(), PathKind::file));
    checkRelative(FNPath(plainPath(data + 1, middle - 1).c_str(), PathKind::folder),
                  FNPath(plainPath(second, size - middle).c_str(), PathKind::file));
    checkWrapping(left, data[0]);
    return 0;
}
