// EditCommandHandler: answers the host's two questions about the command "Edit in Tessera": may it run now, and run it.
//
// The check is cheaper than the execution on purpose: whether an event holds processing isn't asked, so such an event
// leaves the command enabled, and the user learns the reason from the one message that the module ever shows. Main
// thread.
#pragma once

#include "shell/hostapi/ICommandHandler.h"
#include "workflow/HostGuest.h"

namespace tessera {

class HostSelection;
struct IPeerLink;

class EditCommandHandler final : public HostGuest<ICommandHandler> {
public:
    static constexpr char kCategory[] = "Tessera Exchange";
    static constexpr char kName[] = "Edit in Tessera";
    static constexpr char16_t kName16[] = u"Edit in Tessera";

    // Not owned; null while the service doesn't run, and then the command can't.
    void setPeerLink(IPeerLink* peerLink) { peerLink_ = peerLink; }

    // kResultFalse for a foreign category, kResultOk without any action for a foreign name within the own one.
    FResult checkOrExecute(const char* category, const char* name, bool checkOnly) override;

private:
    bool canRun(const HostSelection& selection) const;
    FResult execute(const HostSelection& selection);

    IPeerLink* peerLink_ = nullptr;
};

} // namespace tessera
