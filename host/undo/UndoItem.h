// UndoItem: one change in an undo block, which can be taken back and made again.
#pragma once

namespace tessera::host {

class UndoItem {
public:
    UndoItem() = default;
    UndoItem(const UndoItem&) = delete;
    UndoItem& operator=(const UndoItem&) = delete;
    virtual ~UndoItem() = default;

    // When the block is committed. The host's own changes have been made by then.
    virtual void commit() {}
    virtual void undo() = 0;
    virtual void redo() = 0;
    // The guest is going: what is its own must not be called any more.
    virtual void forgetGuest() {}
};

} // namespace tessera::host
