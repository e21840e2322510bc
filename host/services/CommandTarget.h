// CommandTarget: who answers for the commands. Main thread.
#pragma once

#include "foundation/object/FRefPtr.h"
#include "host/objects/HostCore.h"
#include "host/objects/HostObject.h"
#include "host/services/CommandTable.h"
#include "shell/hostapi/ICommandHandler.h"
#include "shell/hostapi/ICommandTarget.h"

#include <memory>
#include <string>
#include <vector>

namespace tessera::host {

class CommandTarget final : public HostObject<CommandTarget, UnusedSlots<ICommandTarget>> {
public:
    // What became of a command.
    enum class Outcome { noSuchCommand, disabled, refused, done };

    CommandTarget(const std::shared_ptr<HostCore>& core, std::shared_ptr<CommandTable> table);

    bool mayRun(const std::string& category, const std::string& name);
    // Asks first whether it may run, as a menu does.
    Outcome run(const std::string& category, const std::string& name);
    std::size_t handlerCount() const { return handlers_.size(); }

    FResult enableCommand(const char* category, const char* name) override;
    FResult addHandler(ICommandHandler* handler) override;
    FResult removeHandler(ICommandHandler* handler) override;

private:
    FResult ask(const std::string& category, const std::string& name, bool checkOnly);
    void unusedSlotCalled(const char* interfaceName, int slot) override { reportReserved(interfaceName, slot); }

    const std::shared_ptr<CommandTable> table_;
    std::vector<FRefPtr<ICommandHandler>> handlers_;
};

} // namespace tessera::host
