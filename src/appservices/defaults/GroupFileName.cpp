#include "appservices/defaults/GroupFileName.h"

#include "platform/Md5.h"

namespace tessera {

FString groupFileName(std::string_view groupName) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    const platform::Md5Digest digest = platform::md5(groupName);
    char text[2 * sizeof digest];
    char* out = text;
    for (const std::uint8_t byte : digest) {
        *out++ = kDigits[byte >> 4];
        *out++ = kDigits[byte & 15];
    }
    return FString(text, sizeof text);
}

} // namespace tessera
