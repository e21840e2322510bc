#include "link/IncomingMessages.h"

#include "link/DriverClient.h"
#include "link/LinkSocket.h"
#include "workflow/EditSession.h"
#include "workflow/ProjectAccess.h"

#include <algorithm>

namespace tessera {

namespace {

using Action = void (*)(const FieldList& fields, LinkSocket& link);

struct VerbAction {
    std::string_view verb;
    Action action;
};

void abandonEdit(const FieldList&, LinkSocket&) {
    EditSession::instance().abandonEdit();
}

void finishEdit(const FieldList& fields, LinkSocket&) {
    EditSession::instance().finishEdit(fieldText(fields, 2));
}

void openProject(const FieldList& fields, LinkSocket&) {
    ProjectAccess::instance().openProject(fieldText(fields, 2), fieldNumber(fields, 3), fieldNumber(fields, 4));
}

// The host has given up the driver when the answer goes out. The peer waits for it in any case, so it goes out also
// from a host that arbitrates nothing.
void releaseDriver(const FieldList& fields, LinkSocket& link) {
    const std::string& text = fieldText(fields, 2);
    DriverClient::instance().requestRelease(text);
    link.send(text, SendMode::NonBlocking);
}

constexpr VerbAction kActions[] = {
    {WireVerb::cancelFileEdit, abandonEdit},
    {WireVerb::finishedFileEdit, finishEdit},
    {WireVerb::openProject, openProject},
    {WireVerb::requestKiteDriver, releaseDriver},
};

} // namespace

void handleMessage(const FieldList& fields, LinkSocket& link) {
    const auto* found = std::ranges::find(kActions, std::string_view(fieldText(fields, 1)), &VerbAction::verb);
    if (found != std::end(kActions)) {
        found->action(fields, link);
    }
}

} // namespace tessera
