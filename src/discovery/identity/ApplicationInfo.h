// ApplicationInfo: the identity of the program and its folders.
//
// The object of this process is made at the first call of applicationInfo(), and is what paths ask for the program's
// folders (see IApplicationFolders). A program that has a name of its own sets it during start-up, on the main thread,
// before anybody reads; later nothing changes. Paths and texts belong to the object.
#pragma once

#include "foundation/text/FString.h"
#include "persistence/paths/FNPath.h"
#include "persistence/paths/IApplicationFolders.h"

namespace tessera {

class ApplicationInfo : public IApplicationFolders {
public:
    static constexpr const char* kDefaultVendor = "Marlgrove";

    ApplicationInfo();
    ApplicationInfo(const ApplicationInfo&) = delete;
    ApplicationInfo& operator=(const ApplicationInfo&) = delete;
    virtual ~ApplicationInfo() = default;

    const FNPath* folder(ApplicationFolder code) override;
    // As it was set; may be empty.
    const FString& vendor() override { return vendor_; }

    // "Uninitialized" until the program says who it is.
    const FString& productName() const { return productName_; }
    const FString& versionText() const { return versionText_; }
    const FString& subName() const { return subName_; }
    const FString& applicationName() const { return applicationName_; }
    // The name of the module's file, and the folder that holds it. Both empty when the system doesn't tell.
    const FNPath& moduleName() const { return moduleName_; }
    const FNPath& moduleFolder() const { return moduleFolder_; }
    // The user's application data, then the vendor, then the application's name. Nothing makes these folders.
    const FNPath& userDataFolder() const { return userDataFolder_; }
    // What the vendor's programs on this machine share.
    const FNPath& sharedFilesFolder() const { return sharedFilesFolder_; }
    // The vendor for the name of a folder: the default one when it is empty.
    FString vendorFolderName() const;

    void setProductName(const FStringRef& name) { productName_ = name; }
    void setVersionText(const FStringRef& text) { versionText_ = text; }
    void setSubName(const FStringRef& name) { subName_ = name; }
    // These two are part of folder names, which follow them.
    void setVendor(const FStringRef& vendor);
    void setApplicationName(const FStringRef& name);

private:
    void findModule();
    void buildFolders();

    FString productName_;
    FString versionText_;
    FString subName_;
    FString vendor_;
    FString applicationName_;
    FNPath moduleName_;
    FNPath moduleFolder_;
    FNPath userDataFolder_;
    FNPath sharedFilesFolder_;
};

ApplicationInfo& applicationInfo();

} // namespace tessera
