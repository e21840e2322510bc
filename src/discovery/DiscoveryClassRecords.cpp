// The class records of this layer, in one place so that their order is fixed, and what the layers below ask of it.
#include "discovery/events/WinIPCSemaphore.h"
#include "discovery/identity/ApplicationInfo.h"
#include "discovery/processes/MonitorThread.h"
#include "foundation/object/FMetaClass.h"

namespace tessera {

namespace {

IApplicationFolders* programFolders() {
    return &applicationInfo();
}

// Set with the records, so that it is there before any path asks for a folder of the program.
[[maybe_unused]] const bool foldersAreKnown = [] {
    applicationFoldersSource = programFolders;
    return true;
}();

} // namespace

FMetaClass WinIPCSemaphore::metaClass("WinIPCSemaphore", nullptr, createInterface<WinIPCSemaphore, IIPCSemaphore>,
                                      IIPCSemaphore::iid);
FMetaClass MonitorThread::metaClass("MonitorThread", nullptr, nullptr);

} // namespace tessera
