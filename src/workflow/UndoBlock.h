// UndoBlock: what is done to the host's project in its scope is one entry of the host's undo history. Main thread.
#pragma once

#include "foundation/object/FRefPtr.h"
#include "shell/hostapi/IProject.h"
#include "shell/hostapi/IUndoStack.h"

namespace tessera {

class UndoBlock {
public:
    // name is UTF-8 and outlives the block. A host without undo is served without.
    UndoBlock(IProject* project, const char* name);
    UndoBlock(const UndoBlock&) = delete;
    UndoBlock& operator=(const UndoBlock&) = delete;
    // Closes the block under its name, unless it was revoked.
    ~UndoBlock();

    IUndoStack* stack() const { return stack_.get(); }
    void revoke() { commit_ = false; }

private:
    FRefPtr<IUndoStack> stack_;
    IProject* project_;
    const char* name_;
    bool commit_ = true;
};

} // namespace tessera
