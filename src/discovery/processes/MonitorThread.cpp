#include "discovery/processes/MonitorThread.h"

#include "discovery/processes/WatchedChildren.h"
#include "foundation/object/FMetaClass.h"

namespace tessera {

namespace {

constexpr std::uint32_t kPeriodMs = 200;

} // namespace

MonitorThread::MonitorThread() : FThread("com.marlgrove.childprocess-monitor") {}

const char* MonitorThread::getClassName() const {
    return metaClass.getName();
}

bool MonitorThread::isTypeOf(const char* className, bool askBase) const {
    return metaClass.isTypeOf(className, askBase);
}

std::uint32_t MonitorThread::run() {
    WatchedChildren& children = WatchedChildren::instance();
    do {
        while (!children.isEmpty()) {
            children.checkAll();
            sleep(kPeriodMs);
        }
        // A child may have come in between; then this thread is still its monitor.
    } while (!children.retireMonitor());
    return 0;
}

} // namespace tessera
