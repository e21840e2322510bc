#include "components/ModuleRecord.h"

#include "appservices/defaults/FDefaults.h"
#include "components/RecordText.h"
#include "foundation/object/FRefPtr.h"
#include "foundation/object/FUID.h"
#include "shell/hostapi/ClassInfo.h"
#include "shell/hostapi/ClassInfoEx.h"
#include "shell/hostapi/IModuleFactory3.h"

#include <algorithm>

namespace tessera {
namespace {

constexpr char kVendor[] = "Vendor";
constexpr char kUrl[] = "Url";
constexpr char kEmail[] = "Email";
constexpr char kFlags[] = "Flags";
constexpr char kClassCount[] = "NumClasses";

FString classKey(std::int32_t index, const char* field) {
    FString key;
    key.printf("Class %02i - %s", index, field);
    return key;
}

bool isHexDigit(char16_t c) {
    return (c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'F') || (c >= u'a' && c <= u'f');
}

bool readClassId(const FDefaults& group, std::int32_t index, FUIDBytes& id) {
    constexpr std::int32_t kDigits = FUID::kTextSize - 1;
    FString text;
    FUID uid;
    if (!group.getString(classKey(index, "CID"), text) || text.length() != kDigits) {
        return false;
    }
    for (std::int32_t i = 0; i < kDigits; ++i) {
        if (!isHexDigit(text.char16At(i))) {
            return false;
        }
    }
    if (!uid.fromString(text.text8())) {
        return false;
    }
    id = uid.bytes();
    return true;
}

// The texts of a field that is missing are empty, and its numbers 0.
template <class Field>
void readText(const FDefaults& group, const FStringRef& key, Field& field) {
    FString text;
    group.getString(key, text);
    setField(field, text);
}

template <class Integer>
void readNumber(const FDefaults& group, const FStringRef& key, Integer& number) {
    std::int64_t value = 0;
    group.getInt(key, value);
    number = static_cast<Integer>(value);
}

bool readClass(const FDefaults& group, std::int32_t index, ClassInfoWide& info) {
    if (!readClassId(group, index, info.classId)) {
        return false;
    }
    readNumber(group, classKey(index, "Cardinality"), info.cardinality);
    readText(group, classKey(index, "Category"), info.category);
    readText(group, classKey(index, "Name"), info.name);
    readNumber(group, classKey(index, "ClassFlags"), info.classFlags);
    readText(group, classKey(index, "SubCategories"), info.subcategories);
    readText(group, classKey(index, "Vendor"), info.vendor);
    readText(group, classKey(index, "Version"), info.version);
    readText(group, classKey(index, "SdkVersion"), info.sdkVersion);
    return true;
}

bool writeClass(FDefaults& group, std::int32_t index, const ClassInfoWide& info) {
    char id[FUID::kTextSize];
    FUID(info.classId).toString(id);
    return group.setString(classKey(index, "CID"), id) &&
           group.setInt(classKey(index, "Cardinality"), info.cardinality) &&
           group.setString(classKey(index, "Category"), fieldText(info.category)) &&
           group.setString(classKey(index, "Name"), fieldText(info.name)) &&
           group.setInt(classKey(index, "ClassFlags"), info.classFlags) &&
           group.setString(classKey(index, "SubCategories"), fieldText(info.subcategories)) &&
           group.setString(classKey(index, "Vendor"), fieldText(info.vendor)) &&
           group.setString(classKey(index, "Version"), fieldText(info.version)) &&
           group.setString(classKey(index, "SdkVersion"), fieldText(info.sdkVersion));
}

// What all forms of a class record have.
template <class Info>
void takeCommonFields(const Info& info, ClassInfoWide& wide) {
    wide = {};
    wide.classId = info.classId;
    wide.cardinality = info.cardinality;
    std::copy(std::begin(info.category), std::end(info.category), wide.category);
    setField(wide.name, fieldText(info.name));
}

bool describeClass(IModuleFactory& factory, std::int32_t index, ClassInfoWide& wide) {
    const auto factory3 = queryFor<IModuleFactory3>(&factory);
    if (factory3 && factory3->describeClassWide(index, &wide) == kResultOk) {
        return true;
    }
    const auto factory2 = queryFor<IModuleFactory2>(&factory);
    ClassInfoEx longer;
    if (factory2 && factory2->describeClassEx(index, &longer) == kResultOk) {
        takeCommonFields(longer, wide);
        wide.classFlags = longer.classFlags;
        std::copy(std::begin(longer.subcategories), std::end(longer.subcategories), wide.subcategories);
        setField(wide.vendor, fieldText(longer.vendor));
        setField(wide.version, fieldText(longer.version));
        setField(wide.sdkVersion, fieldText(longer.sdkVersion));
        return true;
    }
    ClassInfo shorter;
    if (factory.describeClass(index, &shorter) != kResultOk) {
        return false;
    }
    takeCommonFields(shorter, wide);
    return true;
}

} // namespace

bool describeModule(IModuleFactory& factory, ModuleRecord& record) {
    record = {};
    if (factory.describeFactory(&record.info) != kResultOk) {
        return false;
    }
    const std::int32_t count = factory.classCount();
    for (std::int32_t i = 0; i < count; ++i) {
        ClassInfoWide info;
        if (!describeClass(factory, i, info)) {
            return false;
        }
        record.classes.push_back(info);
    }
    return true;
}

bool readModuleRecord(const FDefaults& group, ModuleRecord& record) {
    record = {};
    std::int64_t count = 0;
    if (!group.getInt(kClassCount, count) || count < 1) {
        return false;
    }
    readText(group, kVendor, record.info.vendor);
    readText(group, kUrl, record.info.url);
    readText(group, kEmail, record.info.email);
    readNumber(group, kFlags, record.info.flags);
    // A count that is too high ends at the first class that isn't there; each class has keys of its own.
    for (std::int64_t i = 0; i < count; ++i) {
        ClassInfoWide info;
        if (i >= group.getCount() || !readClass(group, static_cast<std::int32_t>(i), info)) {
            return false;
        }
        record.classes.push_back(info);
    }
    return true;
}

bool writeModuleRecord(FDefaults& group, const ModuleRecord& record) {
    group.remove(kClassCount);
    bool written = group.setString(kVendor, fieldText(record.info.vendor)) &&
                   group.setString(kUrl, fieldText(record.info.url)) &&
                   group.setString(kEmail, fieldText(record.info.email)) && group.setInt(kFlags, record.info.flags);
    std::int32_t index = 0;
    for (const ClassInfoWide& info : record.classes) {
        written = written && writeClass(group, index++, info);
    }
    return written && group.setInt(kClassCount, index);
}

} // namespace tessera
