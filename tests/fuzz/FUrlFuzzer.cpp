// Addresses and virtual paths from outside: taking apart, building, percent coding, archive keys.
#include "foundation/object/FRefPtr.h"
#include "persistence/archives/VirtualPath.h"
#include "persistence/paths/FNPath.h"
#include "persistence/paths/PathText.h"
#include "persistence/urls/FUrl.h"
#include "persistence/urls/PercentCoding.h"

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
    return std::u16string(pathtext::viewOf(string));
}

void checkUrl(const FString& text) {
    FUrl url(text);
    const FUrl copy(url);
    require(textOf(url.getFullPath()) == textOf(copy.getFullPath()));
    require(textOf(url.getName()).find(u'/') == std::u16string::npos);
    // Built from its parts again it is the same.
    url.setFile(FString(copy.getFile()));
    require(textOf(url.getPath()) == textOf(copy.getPath()) && textOf(url.getName()) == textOf(copy.getName()));
    const auto native = FRefPtr<FNPath>::adopt(url.toNativePath());
    require(static_cast<bool>(native) == url.isFileScheme());
    std::size_t steps = 0;
    while (!url.parentIsRoot()) {
        require(url.ascend() && ++steps <= textOf(text).size() + 1);
    }
}

void checkCoding(const FString& text) {
    FString coded(text);
    encodePercent(coded);
    FString back(coded);
    require(decodePercent(back));
    require(textOf(back) == textOf(text));
}

void checkVirtual(const std::u16string& text) {
    const auto key = archiveKey(text);
    const std::u16string inner = innerPath(text);
    require(!key || (!key->empty() && key->size() < text.size()));
    require(inner.size() <= text.size() + 1);
    if (key && text.starts_with(u"vfs:")) {
        require(text.find(*key) != std::u16string::npos);
    }
    const FNPath path(pathtext::stringOf(text), PathKind::file);
    isVirtualPath(path);
    virtualScheme(virtualTextOf(path));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FString text;
    if (size > 4096 || !text.assignUtf8(reinterpret_cast<const char*>(data), static_cast<std::int32_t>(size))) {
        return 0;
    }
    checkUrl(text);
    checkCoding(text);
    checkVirtual(textOf(text));
    FString decoded(text);
    decodePercent(decoded);
    return 0;
}
