// The class records of the host's own objects, in one place so that their order is fixed. The names stand in project
// documents.
#include "host/stored/StoredProject.h"

namespace tessera::host {

FMetaClass StoredClip::metaClass("HostClip", &CmObject::metaClass, &createCmObject<StoredClip>);
FMetaClass StoredEvent::metaClass("HostEvent", &CmObject::metaClass, &createCmObject<StoredEvent>);
FMetaClass StoredTrack::metaClass("HostTrack", &CmObject::metaClass, &createCmObject<StoredTrack>);
FMetaClass StoredProject::metaClass("HostProject", &CmObject::metaClass, &createCmObject<StoredProject>);

} // namespace tessera::host
