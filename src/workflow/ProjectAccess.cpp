#include "workflow/ProjectAccess.h"

#include "shell/hostapi/IProjectOpener.h"
#include "shell/hostapi/ITimeValue.h"
#include "shell/hostapi/ITransport.h"
#include "shell/hostapi/IUrlFactory.h"
#include "workflow/HostServices.h"
#include "workflow/HostText.h"

namespace tessera {

namespace {

// Both ends or none. That left lies before right is the host's to see to.
void setCycle(ITransport& transport, double left, double right) {
    const auto leftTime = queryFor<ITimeValue>(transport.parameter("cycleLeftTime"));
    const auto rightTime = queryFor<ITimeValue>(transport.parameter("cycleRightTime"));
    if (leftTime && rightTime) {
        leftTime->setValue(left, 1);
        rightTime->setValue(right, 1);
    }
}

} // namespace

ProjectAccess& ProjectAccess::instance() {
    static ProjectAccess access;
    return access;
}

FResult ProjectAccess::openProject(std::string_view path, double start, double length) {
    const auto file = queryService<IUrlFactory>();
    if (!file) {
        return kResultFalse;
    }
    const FResult accepted = file->setPath(wideOf(path).c_str(), 0);
    if (accepted != kResultOk) {
        return accepted;
    }
    const FResult opened = open(file.get());
    if (const auto transport = queryService<ITransport>()) {
        transport->locate(start);
        setCycle(*transport, start, start + length);
    }
    return opened;
}

FResult ProjectAccess::open(IHostFile* file) const {
    const auto opener = queryFor<IProjectOpener>(context_);
    return opener ? opener->open(file, 0) : kResultFalse;
}

} // namespace tessera
