// IProjectObject: an object in the tree of a project. Times are seconds; scope is the word that came with the object
// from ISelection.
#pragma once

#include "foundation/object/IBaseUnknown.h"

#include <cstdint>

namespace tessera {

struct IUndoStack;

struct IProjectObject : IBaseUnknown {
    static constexpr FUIDBytes iid = "{7A6F999F-BDBC-4BCC-AC40-3DABACE8A171}"_uid;

    virtual void reserved3() = 0;

    // Slot 4. Main thread. State bits: 2 means that the object is no longer part of a project.
    virtual std::uint32_t state() = 0;

    // Slot 5. Main thread. A copy that stands in no project yet, with one reference that belongs to the caller; null
    // if it can't be copied. The word is always 0.
    virtual IProjectObject* duplicate(std::int64_t unused) = 0;

    virtual void reserved6() = 0;
    virtual void reserved7() = 0;
    virtual void reserved8() = 0;
    virtual void reserved9() = 0;
    virtual void reserved10() = 0;
    virtual void reserved11() = 0;
    virtual void reserved12() = 0;
    virtual void reserved13() = 0;
    virtual void reserved14() = 0;
    virtual void reserved15() = 0;
    virtual void reserved16() = 0;
    virtual void reserved17() = 0;
    virtual void reserved18() = 0;
    virtual void reserved19() = 0;

    // Slot 20. Main thread. Where on the timeline it starts.
    virtual double timelineStart(std::uint64_t scope) = 0;

    virtual void reserved21() = 0;
    virtual void reserved22() = 0;

    // Slot 23. Main thread, for an object that stands on a track. Moves it to that position, within the open block of
    // the undo stack; a null stack means without undo. The seconds tell how long the audio is that it plays from now:
    // the object keeps its offset in it, and grows or shrinks by as much as its clip did.
    virtual FResult place(double position, double seconds, IUndoStack* undo) = 0;

    // Slot 24. Main thread. Where on the timeline it ends.
    virtual double timelineEnd(std::uint64_t scope) = 0;

    virtual void reserved25() = 0;

    // Slot 26. Main thread. Which second of its clip it starts with; 0 for an object without a clip.
    virtual double clipOffset(std::uint64_t scope) = 0;

    virtual void reserved27() = 0;
    virtual void reserved28() = 0;

    // Slot 29. Main thread. What it stands in, which stays the host's; null at the root and outside a project.
    virtual IProjectObject* parent() = 0;

protected:
    ~IProjectObject() = default;
};

} // namespace tessera
