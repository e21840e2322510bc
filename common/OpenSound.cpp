#include "common/OpenSound.h"

#include "common/Utf8Path.h"

#include <type_traits>

// The library has it, and declares it, only where paths are made of wide characters.
extern "C" SNDFILE* sf_wchar_open(const wchar_t* path, int mode, SF_INFO* info);

namespace tessera::programs {
namespace {

template <class Character>
SNDFILE* openNative(const Character* path, int mode, SF_INFO* info) {
    if constexpr (std::is_same_v<Character, wchar_t>) {
        return sf_wchar_open(path, mode, info);
    } else {
        return sf_open(path, mode, info);
    }
}

} // namespace

SNDFILE* openSound(const std::string& utf8Path, int mode, SF_INFO* info) {
    return openNative(nativePath(utf8Path).c_str(), mode, info);
}

} // namespace tessera::programs
