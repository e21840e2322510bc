#include "workflow/EventClip.h"

#include "foundation/object/FRefPtr.h"
#include "shell/hostapi/IAudioEvent.h"
#include "shell/hostapi/IAudioPart.h"
#include "shell/hostapi/IProjectObject.h"

namespace tessera {

IAudioClip* clipOf(IProjectObject& event) {
    const auto audioEvent = queryFor<IAudioEvent>(&event);
    IAudioPart* part = audioEvent ? audioEvent->audioPart() : nullptr;
    return part == nullptr ? nullptr : part->clip();
}

} // namespace tessera
