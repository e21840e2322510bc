#include "host/services/CommandTable.h"

#include "host/text/Text16.h"

#include <algorithm>

namespace tessera::host {

HostCommand* CommandTable::find(const std::string& category, const std::string& name) {
    const auto found = std::find_if(commands_.begin(), commands_.end(), [&](const HostCommand& command) {
        return command.category == category && command.name == name;
    });
    return found == commands_.end() ? nullptr : &*found;
}

FResult CommandTable::addCommand(void* moduleHandle, const char* group, const char16_t* name16, std::int64_t unused,
                                 const char* category, const char* name) {
    if (!guestMay("addCommand") || group == nullptr || name16 == nullptr || category == nullptr || name == nullptr) {
        return kInvalidArgument;
    }
    if (unused != 0) {
        reportMisuse("addCommand", "the fourth word is not 0");
    }
    if (find(category, name) != nullptr) {
        reportMisuse("addCommand", "this command is in the table already");
        return kResultFalse;
    }
    commands_.push_back({moduleHandle, group, toUtf8(name16).value_or(""), category, name});
    return kResultOk;
}

FResult CommandTable::removeCommands(void* moduleHandle) {
    if (!guestMayLate("removeCommands")) {
        return kResultFailure;
    }
    const auto removed =
        std::erase_if(commands_, [&](const HostCommand& command) { return command.owner == moduleHandle; });
    return removed > 0 ? kResultOk : kResultFalse;
}

} // namespace tessera::host
