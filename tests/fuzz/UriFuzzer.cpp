// Paths and names may hold anything. A normal path stays as it is; a name that was made valid is short and free of what
// is forbidden; patterns end in reasonable time.
#include "discovery/uri/FileNames.h"
#include "discovery/uri/NativeFileSystem.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

using namespace tessera;

namespace {

void check(bool holds) {
    if (!holds) {
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);

    const Uri uri = Uri::fromPath(text);
    check(uri.path.size() <= text.size() + 1);
    // Once what hid it is gone ("//c:x", "./c:x"), a drive shows as a root; after that nothing changes any more.
    const std::string twice = Uri::normalizedPath(uri.path);
    check(Uri::normalizedPath(twice) == twice);
    check(NativeFileSystem::nativePath(uri).size() <= uri.path.size());
    check(uri.path.ends_with(uri.lastComponent()));

    const std::string name = sanitizeFileName(std::string(text));
    check(!name.empty() && name.size() <= 256);
    check(name.find_first_of(kForbiddenNameCharacters) == std::string::npos);
    check(!isPortableFileName(text) || isValidFileName(text));

    // The first half is the pattern of the second.
    const std::string_view pattern = text.substr(0, size / 2);
    const std::string_view subject = text.substr(size / 2);
    const bool exact = matchesPattern(subject, pattern, NameCase::exact);
    check(!exact || matchesPattern(subject, pattern, NameCase::ignored));
    return 0;
}
