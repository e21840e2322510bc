// HostSelection: what the user has selected in the host, as far as it is audio. It reads the host's selection anew at
// each question. A host without a selection gives empty answers. Main thread.
#pragma once

#include "shell/hostapi/ISelection.h"
#include "workflow/SelectedItem.h"

#include <vector>

namespace tessera {

struct IHostServices;

class HostSelection {
public:
    explicit HostSelection(IHostServices* services);

    // In the host's order; whatever isn't an audio event is left out.
    std::vector<SelectedItem> selectedEvents() const;
    // Audio events of which a stretch is selected.
    std::vector<SelectedItem> selectedRanges() const;
    // The first of selectedEvents, or an item without object.
    SelectedItem firstSelectedEvent() const;
    // Whether the event holds processing that a bare copy of its audio would lose. False for a null object.
    bool isRestricted(IProjectObject* object) const;

private:
    std::vector<SelectedItem> read(std::int32_t kind) const;

    FRefPtr<ISelection> selection_;
};

} // namespace tessera
