#include "persistence/paths/SpecialFolders.h"

#include "foundation/object/FRefPtr.h"
#include "persistence/paths/FNPath.h"
#include "persistence/paths/IApplicationFolders.h"
#include "platform/KnownFolders.h"
#include "platform/NativePath.h"
#include "platform/TemporaryFolder.h"

#include <optional>
#include <string>

namespace tessera {

namespace {

using Place = std::optional<std::u16string>;

// The shared objects of one family, made on first use. A folder that wasn't to be had is asked for again.
template <std::size_t count>
class SharedFolders {
public:
    template <class Source>
    const FNPath* get(std::size_t index, Source source) {
        if (index >= count) {
            return nullptr;
        }
        if (!folders_[index]) {
            if (const Place place = source()) {
                folders_[index] = FRefPtr<FNPath>::adopt(new FNPath(place->c_str(), PathKind::folder));
            }
        }
        return folders_[index].get();
    }

private:
    FRefPtr<FNPath> folders_[count];
};

Place temporaryPlace() {
    const std::string folder = platform::temporaryFolder();
    return folder.empty() ? std::nullopt : platform::fromNativePath(folder);
}

const FNPath* applicationFolder(ApplicationFolder code) {
    IApplicationFolders* folders = applicationFoldersSource != nullptr ? applicationFoldersSource() : nullptr;
    return folders != nullptr ? folders->folder(code) : nullptr;
}

Place vendorCommonPlace() {
    const FNPath* common = programFolder(ProgramFolder::commonFiles);
    if (common == nullptr) {
        common = programFolder(ProgramFolder::commonFilesOther);
    }
    if (common == nullptr) {
        return std::nullopt;
    }
    const FNPath folder(vendorName(), *common, PathKind::folder);
    return folder.getFullPath().text16();
}

// The system's name for the folder of this width and of the other one is the reverse of ours, for shared files alone.
Place programPlace(ProgramFolder folder) {
    switch (folder) {
    case ProgramFolder::vendorCommonFiles:
        return vendorCommonPlace();
    case ProgramFolder::commonFiles:
        return platform::knownFolder(platform::KnownFolder::commonFilesOther);
    case ProgramFolder::programFilesOrCommon:
        return platform::knownFolder(platform::KnownFolder::programFilesOrCommon);
    case ProgramFolder::commonFilesOther:
        return platform::knownFolder(platform::KnownFolder::commonFiles);
    case ProgramFolder::localApplicationData:
        return platform::knownFolder(platform::KnownFolder::localData);
    case ProgramFolder::programFilesOther:
        return platform::knownFolder(platform::KnownFolder::programFilesOther);
    case ProgramFolder::programFilesNative:
        return platform::knownFolder(platform::KnownFolder::programFilesNative);
    case ProgramFolder::programFiles:
        return platform::knownFolder(platform::KnownFolder::programFiles);
    }
    return std::nullopt;
}

constexpr platform::KnownFolder kKnownFolders[] = {
    platform::KnownFolder::documents, platform::KnownFolder::profile, platform::KnownFolder::pictures,
    platform::KnownFolder::music,     platform::KnownFolder::videos,
};

} // namespace

const FNPath* userFolder(UserFolder folder) {
    static SharedFolders<2> folders;
    switch (folder) {
    case UserFolder::applicationData:
        return folders.get(0, [] { return platform::knownFolder(platform::KnownFolder::userData); });
    case UserFolder::commonApplicationData:
        return folders.get(1, [] { return platform::knownFolder(platform::KnownFolder::commonData); });
    case UserFolder::application:
        return applicationFolder(ApplicationFolder::module);
    }
    return nullptr;
}

const FNPath* programFolder(ProgramFolder folder) {
    static SharedFolders<8> folders;
    return folders.get(static_cast<std::size_t>(folder), [folder] { return programPlace(folder); });
}

const FNPath* knownFolder(KnownFolder folder) {
    static SharedFolders<std::size(kKnownFolders)> folders;
    const auto index = static_cast<std::size_t>(folder);
    return folders.get(index, [index] { return platform::knownFolder(kKnownFolders[index]); });
}

const FNPath* pathFolder(PathFolder folder) {
    static SharedFolders<2> folders;
    switch (folder) {
    case PathFolder::userData:
        return applicationFolder(ApplicationFolder::userData);
    case PathFolder::temporary:
        return folders.get(0, temporaryPlace);
    case PathFolder::module:
        return applicationFolder(ApplicationFolder::module);
    case PathFolder::system:
        return folders.get(1, [] { return platform::knownFolder(platform::KnownFolder::system); });
    }
    return nullptr;
}

} // namespace tessera
