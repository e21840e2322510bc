// ModuleRecord: what a module says of itself and its classes, and the form in which that is remembered in a group of
// settings.
//
// "Vendor", "Url", "Email", "Flags", "NumClasses", and for each class its nine fields under keys such as
// "Class 00 - CID". A group that doesn't hold a whole record is refused; what it holds is never believed further than
// that: texts are cut to their fields, and classes are made as they are met.
#pragma once

#include "shell/hostapi/ClassInfoWide.h"
#include "shell/hostapi/FactoryInfo.h"

#include <vector>

namespace tessera {

class FDefaults;
struct IModuleFactory;

struct ModuleRecord {
    FactoryInfo info;
    std::vector<ClassInfoWide> classes;
};

// False when the factory doesn't describe itself, or one of its classes. The class records come in the newest form that
// the factory has.
bool describeModule(IModuleFactory& factory, ModuleRecord& record);

// False without classes, and for a class whose identifier isn't 32 hexadecimal digits. Other fields may be missing.
bool readModuleRecord(const FDefaults& group, ModuleRecord& record);

// When something can't be kept in settings, the group is left without "NumClasses", so that it isn't read later.
bool writeModuleRecord(FDefaults& group, const ModuleRecord& record);

} // namespace tessera
