// UndoStack: what was done to the open project, in blocks that can be taken back and made again.
//
// Changes are made at once and collect in the open block until commit closes it. A block that nobody commits is taken
// back by rollBack(), which the host calls when whoever opened it has returned. Committing drops what was undone and
// could have been made again. Main thread.
#pragma once

#include "host/model/Event.h"
#include "host/model/Track.h"
#include "host/objects/HostCore.h"
#include "host/objects/HostObject.h"
#include "host/undo/UndoItem.h"
#include "shell/hostapi/IUndoStack.h"
#include "shell/hostapi/IUndoTarget.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace tessera::host {

class Project;

class UndoStack final : public HostObject<UndoStack, UnusedSlots<IUndoStack>, UnusedSlots<IUndoTarget>> {
public:
    explicit UndoStack(const std::shared_ptr<HostCore>& core) : HostObject(core->watch, "UndoStack") {}

    // The project that the changes belong to; another one empties the history.
    void setProject(const std::shared_ptr<Project>& project);

    // A change that has been made already.
    void record(std::unique_ptr<UndoItem> item);
    void addEventTo(const std::shared_ptr<Track>& track, const std::shared_ptr<Event>& event);
    void removeEventFrom(const std::shared_ptr<Track>& track, const std::shared_ptr<Event>& event);
    void commitBlock(const std::string& name);
    // True if there was anything to take back.
    bool rollBack();

    // The name of the block, or empty when there is none.
    std::string nameToUndo() const { return next_ == 0 ? std::string() : blocks_[next_ - 1].name; }
    std::string nameToRedo() const { return next_ == blocks_.size() ? std::string() : blocks_[next_].name; }
    bool undo();
    bool redo();
    // How many blocks the guest has committed so far.
    int guestCommits() const { return guestCommits_; }
    void forgetGuest();

    FResult commit(IProject* project, const char* name) override;
    FResult addEvent(IEventTrack* track, IProjectObject* event) override;
    FResult removeEvent(IEventTrack* track, IProjectObject* event) override;
    FResult addStep(IUndoStep* step) override;

private:
    using Items = std::vector<std::unique_ptr<UndoItem>>;
    struct Block {
        std::string name;
        Items items;
    };

    void noteChange();
    void unusedSlotCalled(const char* interfaceName, int slot) override { reportReserved(interfaceName, slot); }

    std::weak_ptr<Project> project_;
    Items open_;
    std::vector<Block> blocks_;
    std::size_t next_ = 0; // blocks before it are done, the others undone
    int guestCommits_ = 0;
};

} // namespace tessera::host
