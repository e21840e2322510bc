// EventSwap: puts an event in the place of another one, inside an undo block. Main thread.
#pragma once

#include "shell/hostapi/IProject.h"
#include "shell/hostapi/IProjectObject.h"
#include "shell/hostapi/IUndoStack.h"
#include "shell/hostapi/IUndoStep.h"

namespace tessera {

class EventSwap {
public:
    // The step goes into the block first, so that the host undoes it last. A null undo stack, or an event that stands
    // on no track, can't be swapped.
    EventSwap(IProject* project, IUndoStack* undo, IUndoStep& step) : project_(project), undo_(undo), step_(step) {}

    // What placing the new event gave. An event that can't be taken off its track, or put there, gives 0 as well: what
    // was done up to there stays in the block, and the block is committed.
    FResult swap(IProjectObject& newEvent, IProjectObject& oldEvent);

private:
    void addStep();
    FResult place(IProjectObject& newEvent, IProjectObject& oldEvent);

    IProject* project_;
    IUndoStack* undo_;
    IUndoStep& step_;
};

} // namespace tessera
