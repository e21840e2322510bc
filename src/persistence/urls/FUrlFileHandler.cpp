#include "persistence/urls/FUrlFileHandler.h"

#include "foundation/object/FRefPtr.h"
#include "persistence/files/FFileSystem.h"
#include "persistence/paths/FNPath.h"
#include "persistence/urls/FUrl.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace tessera {

namespace {

constexpr std::string_view kAbilities[] = {"CanRead", "CanWrite", "CanIterate"};

// Calls work with the file system and the native path; nothing when either is missing.
template <class Work>
auto withNativePath(const FUrl& url, Work work)
    -> decltype(work(*FFileSystem::getInstance(), std::declval<FNPath&>())) {
    FFileSystem* files = FFileSystem::getInstance();
    const auto path = FRefPtr<FNPath>::adopt(url.toNativePath());
    return files != nullptr && path ? work(*files, *path) : nullptr;
}

} // namespace

FResult FUrlFileHandler::isSupported(const char* key) const {
    const bool known =
        key != nullptr && std::find(std::begin(kAbilities), std::end(kAbilities), key) != std::end(kAbilities);
    return known ? kResultOk : kResultFalse;
}

FStream* FUrlFileHandler::openFile(FUrl& url, std::uint32_t mode, std::int32_t* error) {
    return withNativePath(url, [&](FFileSystem& files, FNPath& path) { return files.openFile(path, mode, error); });
}

FStream* FUrlFileHandler::createFile(FUrl& url, std::uint32_t mode, std::int32_t* error) {
    return withNativePath(url, [&](FFileSystem& files, FNPath& path) { return files.createFile(path, mode, error); });
}

FFileIterator* FUrlFileHandler::newIterator(const FUrl& url, bool resolveLinks) {
    return withNativePath(url, [&](FFileSystem& files, FNPath& path) { return files.newIterator(path, resolveLinks); });
}

} // namespace tessera
