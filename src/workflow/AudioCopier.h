// AudioCopier: copies the audio that an event plays into a new file of a folder. The file gets the name of the
// original, made unique. Main thread; a copy takes as long as it takes.
#pragma once

#include "workflow/CopyResult.h"
#include "workflow/SelectedItem.h"

namespace tessera {

struct IHostServices;

class AudioCopier {
public:
    // services make the writers. The folder's object becomes that of the file. Null for no folder: nothing can be
    // copied then.
    AudioCopier(IHostServices* services, FRefPtr<IHostFile> folder);

    // The stretch of its clip that the item plays, wherever it stands on the timeline.
    CopyResult copyItem(const SelectedItem& item);
    // From start to end, in seconds of the clip; all of it unless start lies before end.
    CopyResult copyRange(IProjectObject& event, double start, double end);

private:
    bool nameTarget(IHostFile* original);

    IHostServices* services_;
    FRefPtr<IHostFile> target_;
};

} // namespace tessera
