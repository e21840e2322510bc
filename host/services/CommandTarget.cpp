#include "host/services/CommandTarget.h"

#include "host/objects/GuestCall.h"

#include <utility>

namespace tessera::host {

CommandTarget::CommandTarget(const std::shared_ptr<HostCore>& core, std::shared_ptr<CommandTable> table)
    : HostObject(core->watch, "CommandTarget"), table_(std::move(table)) {}

// The first handler that doesn't decline has the last word.
FResult CommandTarget::ask(const std::string& category, const std::string& name, bool checkOnly) {
    const std::vector<FRefPtr<ICommandHandler>> asked = handlers_;
    for (const auto& handler : asked) {
        const FResult answer = callGuest(
            *watch(), "ICommandHandler.checkOrExecute",
            [&] { return handler->checkOrExecute(category.c_str(), name.c_str(), checkOnly); }, kResultFalse);
        if (answer == kResultOk) {
            return answer;
        }
    }
    return kResultFalse;
}

bool CommandTarget::mayRun(const std::string& category, const std::string& name) {
    const HostCommand* const command = table_->find(category, name);
    return command != nullptr && command->enabled && ask(category, name, true) == kResultOk;
}

CommandTarget::Outcome CommandTarget::run(const std::string& category, const std::string& name) {
    if (table_->find(category, name) == nullptr) {
        return Outcome::noSuchCommand;
    }
    if (!mayRun(category, name)) {
        return Outcome::disabled;
    }
    return ask(category, name, false) == kResultOk ? Outcome::done : Outcome::refused;
}

FResult CommandTarget::enableCommand(const char* category, const char* name) {
    if (!guestMay("enableCommand") || category == nullptr || name == nullptr) {
        return kInvalidArgument;
    }
    HostCommand* const command = table_->find(category, name);
    if (command == nullptr) {
        return kResultFalse;
    }
    command->enabled = true;
    return kResultOk;
}

FResult CommandTarget::addHandler(ICommandHandler* handler) {
    if (!guestMay("addHandler") || handler == nullptr) {
        return kInvalidArgument;
    }
    handlers_.emplace_back(handler);
    return kResultOk;
}

FResult CommandTarget::removeHandler(ICommandHandler* handler) {
    const bool removed = guestMayLate("removeHandler") &&
                         std::erase_if(handlers_, [&](const auto& held) { return held.get() == handler; }) > 0;
    return removed ? kResultOk : kResultFalse;
}

} // namespace tessera::host
