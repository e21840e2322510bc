// IDefaultPool: settings by group and key, as everybody but the owner of the pool sees them.
//
// Group names are 8-bit texts and are compared exactly. Everything about a value goes through the group of that name
// with version 0, which is made if need be, also by a question; so a group with another version loses all its values to
// the first of these calls. Use such a group through getGroup alone. What is false and what is null tells FDefaults;
// everything is once the pool has been closed, and for a null or empty group name. Objects that are handed out are
// borrowed. Main thread.
#pragma once

#include "foundation/object/IBaseUnknown.h"

#include <cstdint>

namespace tessera {

class CmObject;
class FDefaults;
class FString;
class FStringRef;

struct IDefaultPool : IBaseUnknown {
    static constexpr FUIDBytes iid = "{3C1E0B5A-7F42-4D86-9B0F-52A1D8E6C974}"_uid;

    enum class Missing : bool { left, made };

    // The group of that name and version. One of another version is destroyed with all its values. Borrowed, until the
    // group is removed or replaced, or the pool loads; null when there is none and it wasn't to be made.
    virtual FDefaults* getGroup(const char* name, std::int32_t version, Missing missing) = 0;

    virtual bool setInt(const char* group, const FStringRef& key, std::int64_t value) = 0;
    virtual bool getInt(const char* group, const FStringRef& key, std::int64_t& value) = 0;
    virtual bool setFloat(const char* group, const FStringRef& key, double value) = 0;
    virtual bool getFloat(const char* group, const FStringRef& key, double& value) = 0;
    virtual bool setString(const char* group, const FStringRef& key, const FStringRef& text) = 0;
    virtual bool getString(const char* group, const FStringRef& key, FString& text) = 0;
    virtual bool setObject(const char* group, const FStringRef& key, CmObject* object) = 0;
    virtual CmObject* getObject(const char* group, const FStringRef& key, const char* className) = 0;
    virtual bool remove(const char* group, const FStringRef& key) = 0;

    virtual bool initInt(const char* group, const FStringRef& key, std::int64_t value) = 0;
    virtual bool initFloat(const char* group, const FStringRef& key, double value) = 0;
    virtual bool initString(const char* group, const FStringRef& key, const FStringRef& text) = 0;
    virtual bool initObject(const char* group, const FStringRef& key, CmObject* object) = 0;

    // The object's state is kept with the settings, under its class name: its storeAttributes is asked at each save,
    // and its restoreAttributes when what was loaded is handed out. Not owned: it unregisters before it goes. Null, and
    // what is registered already, are passed over.
    virtual void registerAutoSaver(CmObject* object) = 0;
    virtual void unregisterAutoSaver(CmObject* object) = 0;
    // The group with all its values; asked for again, it is empty.
    virtual void removeGroup(const char* name) = 0;

protected:
    ~IDefaultPool() = default;
};

} // namespace tessera
