// CommandTable: the commands that guests have entered. Main thread.
#pragma once

#include "host/objects/HostCore.h"
#include "host/objects/HostObject.h"
#include "shell/hostapi/ICommandTable.h"

#include <memory>
#include <string>
#include <vector>

namespace tessera::host {

struct HostCommand {
    void* owner = nullptr;
    std::string group;
    std::string title;
    std::string category;
    std::string name;
    bool enabled = false;
};

class CommandTable final : public HostObject<CommandTable, ICommandTable> {
public:
    explicit CommandTable(const std::shared_ptr<HostCore>& core) : HostObject(core->watch, "CommandTable") {}

    const std::vector<HostCommand>& commands() const { return commands_; }
    // Null when there is no such command.
    HostCommand* find(const std::string& category, const std::string& name);

    FResult addCommand(void* moduleHandle, const char* group, const char16_t* name16, std::int64_t unused,
                       const char* category, const char* name) override;
    FResult removeCommands(void* moduleHandle) override;

private:
    std::vector<HostCommand> commands_;
};

} // namespace tessera::host
