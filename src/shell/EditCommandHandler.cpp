#include "shell/EditCommandHandler.h"

#include "shell/hostapi/IAlertHost.h"
#include "workflow/HostBorder.h"
#include "workflow/HostSelection.h"
#include "workflow/HostServices.h"
#include "workflow/IPeerLink.h"

#include <string_view>

namespace tessera {

namespace {

constexpr char16_t kRefusal[] =
    u"The selected audio event contains processing information that cannot be edited in Tessera. To be able to use "
    u"\"Edit in Tessera\", you must render or bounce the audio event first.";
constexpr char16_t kRefusalButton[] = u"OK";

bool isText(const char* text, std::string_view expected) {
    return text != nullptr && text == expected;
}

void showRefusal() {
    if (const auto alerts = queryService<IAlertHost>()) {
        alerts->show(kRefusal, kRefusalButton, 0, 0);
    }
}

} // namespace

FResult EditCommandHandler::checkOrExecute(const char* category, const char* name, bool checkOnly) {
    if (!isText(category, kCategory)) {
        return kResultFalse;
    }
    if (!isText(name, kName)) {
        return kResultOk;
    }
    return atHostBorder(kResultFalse, [&] {
        const HostSelection selection(hostServices());
        if (checkOnly) {
            return canRun(selection) ? kResultOk : kResultFalse;
        }
        return execute(selection);
    });
}

bool EditCommandHandler::canRun(const HostSelection& selection) const {
    if (peerLink_ == nullptr || !peerLink_->isPeerAvailable()) {
        return false;
    }
    return selection.selectedEvents().size() == 1 || !selection.selectedRanges().empty();
}

FResult EditCommandHandler::execute(const HostSelection& selection) {
    if (selection.isRestricted(selection.firstSelectedEvent().object.get())) {
        showRefusal();
        return kResultOk;
    }
    return peerLink_ != nullptr && peerLink_->editSelection() != nullptr ? kResultOk : kResultFalse;
}

} // namespace tessera
