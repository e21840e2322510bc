#include "shell/ModuleFactory.h"

#include "shell/ModuleGlobals.h"

#include <algorithm>
#include <cstdlib>
#include <new>

namespace tessera {

namespace {

constexpr std::int32_t kGrowth = 10;

template <std::size_t Size>
void widen(const char (&text)[Size], char16_t (&wide)[Size]) {
    const char* end = std::find(text, text + Size, '\0');
    char16_t* rest =
        std::transform(text, end, wide, [](char c) { return static_cast<char16_t>(static_cast<signed char>(c)); });
    std::fill(rest, wide + Size, u'\0');
}

ClassInfoWide widened(const ClassInfoEx& info) {
    ClassInfoWide wide;
    wide.classId = info.classId;
    wide.cardinality = info.cardinality;
    std::copy(std::begin(info.category), std::end(info.category), wide.category);
    widen(info.name, wide.name);
    wide.classFlags = info.classFlags;
    std::copy(std::begin(info.subcategories), std::end(info.subcategories), wide.subcategories);
    widen(info.vendor, wide.vendor);
    widen(info.version, wide.version);
    widen(info.sdkVersion, wide.sdkVersion);
    return wide;
}

// The longer record begins with the fields of the shorter one.
template <class To, class From>
To withCommonFields(const From& from) {
    To to;
    to.classId = from.classId;
    to.cardinality = from.cardinality;
    std::copy(std::begin(from.category), std::end(from.category), to.category);
    std::copy(std::begin(from.name), std::end(from.name), to.name);
    return to;
}

} // namespace

ModuleFactory::~ModuleFactory() {
    if (moduleGlobals().factory == this) {
        moduleGlobals().factory = nullptr;
    }
    std::free(entries_);
}

FResult ModuleFactory::queryInterface(const FUIDBytes& uid, void** out) {
    if (out == nullptr) {
        return kInvalidArgument;
    }
    // One table serves all four.
    if (uid == IModuleFactory::iid || uid == IModuleFactory2::iid || uid == IModuleFactory3::iid ||
        uid == IBaseUnknown::iid) {
        addRef();
        *out = static_cast<IModuleFactory3*>(this);
        return kResultOk;
    }
    *out = nullptr;
    return kNoInterface;
}

std::uint32_t ModuleFactory::addRef() {
    return references_.fetch_add(1, std::memory_order_relaxed) + 1;
}

std::uint32_t ModuleFactory::release() {
    const std::uint32_t left = references_.fetch_sub(1, std::memory_order_acq_rel) - 1;
    if (left == 0) {
        delete this;
    }
    return left;
}

FResult ModuleFactory::describeFactory(FactoryInfo* info) {
    if (info != nullptr) {
        *info = info_;
    }
    return kResultOk;
}

FResult ModuleFactory::describeClass(std::int32_t index, ClassInfo* info) {
    if (info == nullptr || !hasIndex(index)) {
        return kInvalidArgument;
    }
    const ClassEntry& entry = entries_[index];
    if (entry.wideOnly != 0) {
        *info = {};
        return kResultFalse;
    }
    *info = withCommonFields<ClassInfo>(entry.info);
    return kResultOk;
}

FResult ModuleFactory::createObject(const FUIDBytes& classId, const FUIDBytes& interfaceId, void** out) {
    if (out == nullptr) {
        return kInvalidArgument;
    }
    *out = nullptr;
    const ClassEntry* entry = find(classId);
    IBaseUnknown* object = entry == nullptr ? nullptr : entry->create(entry->context);
    if (object == nullptr) {
        return kNoInterface;
    }
    const FResult result = object->queryInterface(interfaceId, out);
    object->release();
    if (result != kResultOk) {
        *out = nullptr;
        return kNoInterface;
    }
    return kResultOk;
}

FResult ModuleFactory::describeClassEx(std::int32_t index, ClassInfoEx* info) {
    if (info == nullptr || !hasIndex(index)) {
        return kInvalidArgument;
    }
    const ClassEntry& entry = entries_[index];
    if (entry.wideOnly != 0) {
        *info = {};
        return kResultFalse;
    }
    *info = entry.info;
    return kResultOk;
}

FResult ModuleFactory::describeClassWide(std::int32_t index, ClassInfoWide* info) {
    if (info == nullptr || !hasIndex(index)) {
        return kInvalidArgument;
    }
    *info = entries_[index].wideInfo;
    return kResultOk;
}

FResult ModuleFactory::attachHost(IBaseUnknown*) {
    return kResultOk;
}

bool ModuleFactory::addClass(const ClassInfoEx* info, CreateFunction create, std::uintptr_t context) {
    return info != nullptr && append({*info, widened(*info), create, context, 0});
}

bool ModuleFactory::addClass(const ClassInfo* info, CreateFunction create, std::uintptr_t context) {
    if (info == nullptr) {
        return false;
    }
    const auto longer = withCommonFields<ClassInfoEx>(*info);
    return addClass(&longer, create, context);
}

bool ModuleFactory::addClass(const ClassInfoWide* info, CreateFunction create, std::uintptr_t context) {
    if (info == nullptr) {
        return false;
    }
    ClassEntry entry{{}, *info, create, context, 1};
    // createObject looks classes up in the 8-bit record.
    entry.info.classId = info->classId;
    return append(entry);
}

const ClassEntry* ModuleFactory::find(const FUIDBytes& classId) const {
    const ClassEntry* end = entries_ + count_;
    const ClassEntry* found = std::find_if(entries_, entries_ + count_,
                                           [&](const ClassEntry& entry) { return entry.info.classId == classId; });
    return found == end ? nullptr : found;
}

bool ModuleFactory::grow() {
    const std::size_t size = sizeof(ClassEntry) * static_cast<std::size_t>(capacity_ + kGrowth);
    auto* entries = static_cast<ClassEntry*>(std::realloc(static_cast<void*>(entries_), size));
    if (entries == nullptr) {
        return false;
    }
    entries_ = entries;
    capacity_ += kGrowth;
    return true;
}

bool ModuleFactory::append(const ClassEntry& entry) {
    if (entry.create == nullptr || (count_ == capacity_ && !grow())) {
        return false;
    }
    new (entries_ + count_) ClassEntry(entry);
    ++count_;
    return true;
}

} // namespace tessera
