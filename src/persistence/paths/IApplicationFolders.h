// IApplicationFolders: what paths need to know of the program: its folders and its vendor. The application-information
// service implements it and says so through applicationFolders.
#pragma once

#include <cstdint>

namespace tessera {

class FNPath;
class FString;

enum class ApplicationFolder : std::int32_t {
    // Where the user's own data of this program lies.
    userData = 1,
    // Where the module lies, with what ships beside it.
    module = 3,
};

struct IApplicationFolders {
    // Null where the folder isn't known. Shared, not to be changed.
    virtual const FNPath* folder(ApplicationFolder code) = 0;
    // May be empty.
    virtual const FString& vendor() = 0;

protected:
    ~IApplicationFolders() = default;
};

// Gives the service, made on first use. Null as long as nobody set it: then the application folders are empty paths,
// and the vendor is the default one.
using ApplicationFoldersSource = IApplicationFolders* (*)();
extern ApplicationFoldersSource applicationFoldersSource;

// The service's vendor, or "Marlgrove" where that is missing or empty.
FString vendorName();

} // namespace tessera
