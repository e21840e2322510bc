#include "platform/Md5.h"

#include <md5.h>

namespace tessera::platform {

Md5Digest md5(std::string_view bytes) {
    MD5_CTX context;
    MD5Init(&context);
    MD5Update(&context, reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    Md5Digest digest;
    MD5Final(digest.data(), &context);
    return digest;
}

} // namespace tessera::platform
