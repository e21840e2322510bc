#include "platform/Md5.h"

#include <cstring>
#include <windows.h>

namespace tessera::platform {
namespace {

// No header declares them. They can't fail, other than a provider of digests, which may be refused to a program.
struct Context {
    ULONG bits[2];
    ULONG state[4];
    UCHAR block[64];
    UCHAR digest[16];
};
static_assert(sizeof(Context) == 104);

} // namespace

extern "C" {
void WINAPI MD5Init(Context* context);
void WINAPI MD5Update(Context* context, const UCHAR* bytes, ULONG count);
void WINAPI MD5Final(Context* context);
}

Md5Digest md5(std::string_view bytes) {
    constexpr std::size_t kMost = 0x40000000;
    Context context = {};
    MD5Init(&context);
    while (!bytes.empty()) {
        const std::string_view part = bytes.substr(0, kMost);
        MD5Update(&context, reinterpret_cast<const UCHAR*>(part.data()), static_cast<ULONG>(part.size()));
        bytes.remove_prefix(part.size());
    }
    MD5Final(&context);
    Md5Digest digest;
    std::memcpy(digest.data(), context.digest, digest.size());
    return digest;
}

} // namespace tessera::platform
