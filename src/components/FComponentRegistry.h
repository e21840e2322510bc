// FComponentRegistry: the classes of all modules that were found, and of the program itself, by category and by
// identifier; the maker of their objects.
//
// A program makes one before it scans for modules, and keeps it until its services have stopped. The first one made is
// the process's: ClassFactory gives it out as IComponentSource. Each class is known once: whoever comes later with the
// same identifier is passed over. The order of categories is that of their names, within a category that of entering.
//
// What is remembered of a module (see ModuleRecord) is used without loading it if the module says that it may be (flag
// 16); else the module is loaded once more, and all its classes have to be of accepted categories. A module with a
// class of an excluded category isn't taken at all. Whether a class is available is kept in the settings, in the group
// "Components\Category <category>\Available". Observers are borrowed, and remove themselves. Main thread.
//
// Objects are given back before the registry goes: it unloads the modules.
#pragma once

#include "components/FComponentDescription.h"
#include "components/FModuleManager.h"
#include "components/VersionCheck.h"
#include "foundation/object/FArray.h"
#include "foundation/object/IComponentSource.h"

#include <map>
#include <unordered_map>
#include <vector>

namespace tessera {

class FPluginComponent;
class IComponentObserver;
struct ModuleRecord;

class FComponentRegistry : public CmClass<FComponentRegistry, FModuleManager, IComponentSource> {
public:
    static FMetaClass metaClass;

    // In place of a category: the name is an identifier of 32 digits.
    static constexpr char kByIdentifier[] = "UID";
    // What deferChanged tells dependents when a class came or went.
    static constexpr std::int32_t kComponentsChanged = 1;

    using Components = std::vector<FRefPtr<FComponentDescription>>;

    // The process's; null when there is none. Borrowed.
    static FComponentRegistry* getInstance();

    FComponentRegistry();
    FComponentRegistry(const FComponentRegistry&) = delete;
    FComponentRegistry& operator=(const FComponentRegistry&) = delete;
    ~FComponentRegistry() override;

    FModuleBase* createModule(FPath* path) override;
    bool loadCache(FDefaults& attributes, FModuleBase& module) override;
    bool storeCache(FDefaults& attributes, FModuleBase& module) override;
    // With the module go its classes; those with objects are kept, out of sight, until these are given back.
    void onModuleRemoved(FModuleBase& module) override;

    IBaseUnknown* createByIdentifier(const FUIDBytes& uid) override;
    std::int32_t count(const char* category) override;
    IBaseUnknown* createAt(const char* category, std::int32_t index) override;

    void acceptCategory(const FStringRef& name) { acceptedCategories_.emplace_back(name); }
    void excludeCategory(const FStringRef& name) { excludedCategories_.emplace_back(name); }

    // Shares the description. False for null and for an identifier that is known.
    bool addComponent(FComponentDescription* description);
    bool removeComponent(const FUIDBytes& uid);
    // Borrowed; null when there is none, or when it isn't of that module. A null module stands for any.
    FComponentDescription* getComponent(const FUIDBytes& uid, const FModule* module = nullptr) const;
    // False, and nothing in out, when there is no such category.
    bool getCategory(const FStringRef& name, Components& out) const;
    // A new object of the first class of that name in the category, with one reference for the caller; or see
    // kByIdentifier. Null when there is none.
    IBaseUnknown* createInstance(const FStringRef& category, const FStringRef& name);
    // Gives up the caller's reference of an object that came from here.
    void releaseInstance(IBaseUnknown* instance) override;
    // Null minimums aren't asked for.
    VersionCheck checkVersion(const FUIDBytes& uid, const FModule* module, const FStringRef* minSdkVersion,
                              const FStringRef* minVersion) const;
    // False when it isn't known. To last, it takes saveAvailability.
    bool setAvailable(const FUIDBytes& uid, bool on);
    // False when there is no such category, or there are no settings.
    bool saveAvailability(const FStringRef& category);
    // Whether the module of the class stays loaded; false for what isn't a class of a module.
    bool setStayLoaded(const FUIDBytes& uid, bool on);
    void addObserver(IComponentObserver* observer);
    void removeObserver(IComponentObserver* observer);

private:
    struct NameOrder {
        using is_transparent = void;
        bool operator()(const FStringRef& a, const FStringRef& b) const { return a < b; }
    };
    struct UIDHash {
        std::size_t operator()(const FUIDBytes& uid) const;
    };

    const Components* findCategory(const FStringRef& name) const;
    bool isExcluded(const ModuleRecord& record) const;
    bool hasAcceptedClasses(FModule& module) const;
    void addComponents(const ModuleRecord& record, FModule& module);
    bool readAvailability(const FComponentDescription& description) const;

    std::map<FString, Components, NameOrder> categories_;
    FArray<IComponentObserver*> observers_;
    std::vector<FString> acceptedCategories_;
    std::vector<FString> excludedCategories_;
    // All that stand in categories_.
    std::unordered_map<FUIDBytes, FComponentDescription*, UIDHash> byIdentifier_;
    // Taken out while there were objects of theirs.
    std::vector<FRefPtr<FPluginComponent>> retired_;
};

} // namespace tessera
