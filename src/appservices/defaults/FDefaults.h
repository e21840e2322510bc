// FDefaults: one group of settings: named values under the group's name, with a version of their own.
//
// Values are numbers, texts and objects, kept by key; keys are compared exactly. Setters are false, and nothing
// changes, for an empty key and for a key or text that no file gives back: a key of more than 47 bytes or, roughly, a
// text that is no longer than 2048 characters and takes more than 2047 bytes. Getters are false, and leave their target
// alone, when the key is missing or its value can't be had in that form. Objects are shared. Not synchronised.
#pragma once

#include "foundation/containers/CmOrderedArray.h"
#include "foundation/messages/FStringIDAttribute.h"
#include "foundation/object/FRefPtr.h"

#include <cstdint>

namespace tessera {

class FDefaults : public CmClass<FDefaults, CmObject> {
public:
    static FMetaClass metaClass;

    // No version.
    static constexpr std::int32_t kNoVersion = 0;

    explicit FDefaults(const FStringRef& groupName = FStringRef(), std::int32_t version = kNoVersion);

    // 8-bit text, as far as the system's code page has the characters.
    FStringRef getGroupName() const { return groupName_; }
    void setGroupName(const FStringRef& name);
    std::int32_t getVersion() const { return version_; }
    // A group without values isn't saved.
    bool isEmpty() const { return getCount() == 0; }
    std::int32_t getCount() const { return values_ ? values_->getCount() : 0; }
    // In the order of the keys. Borrowed; null for a bad index.
    FStringIDAttribute* at(std::int32_t index) const;

    bool setInt(const FStringRef& key, std::int64_t value);
    bool setFloat(const FStringRef& key, double value);
    bool setString(const FStringRef& key, const FStringRef& text);
    // Takes a reference. A null object removes the key.
    bool setObject(const FStringRef& key, CmObject* object);
    // A float is cut; in a text the first number counts.
    bool getInt(const FStringRef& key, std::int64_t& value) const;
    bool getFloat(const FStringRef& key, double& value) const;
    // For texts alone.
    bool getString(const FStringRef& key, FString& text) const;
    // Borrowed. Null as well when the object isn't of that class or one below it; null for any class. An object that
    // was read is built now.
    CmObject* getObject(const FStringRef& key, const char* className = nullptr) const;
    // Whether it was there.
    bool remove(const FStringRef& key);

    // Set the value only where there is none; false where there is one.
    bool initInt(const FStringRef& key, std::int64_t value) { return !has(key) && setInt(key, value); }
    bool initFloat(const FStringRef& key, double value) { return !has(key) && setFloat(key, value); }
    bool initString(const FStringRef& key, const FStringRef& text) { return !has(key) && setString(key, text); }
    bool initObject(const FStringRef& key, CmObject* object) { return !has(key) && setObject(key, object); }
    bool has(const FStringRef& key) const { return find(key) != nullptr; }

    // "Group", "Version" where there is one, and the tree "Values". Restoring keeps the values that are there, and
    // leaves out what the setters refuse.
    bool storeAttributes(FAttributes& attributes) const override;
    bool restoreAttributes(FAttributes& attributes) override;

private:
    FStringIDAttribute* find(const FStringRef& key) const;
    FStringIDAttribute* findForm(const FStringRef& key) const;
    // The value under the key, made if need be; null when the key isn't fit.
    FStringIDAttribute* obtain(const FStringRef& key);
    void makeValues();
    void bringKeysIntoForm();
    void dropUnstorable();

    FString groupName_;
    // Made with the first value; owns them.
    FRefPtr<CmOrderedArray> values_;
    std::int32_t version_;
};

} // namespace tessera
