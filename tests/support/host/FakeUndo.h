// FakeUndo: a host's undo history that really undoes and redoes. Changes are made at once and collect in an open block;
// commit closes it and performs the module's steps.
#pragma once

#include "shell/hostapi/IUndoStep.h"
#include "support/host/FakeProject.h"

#include <functional>

namespace tessera::test {

class FakeUndo final : public FakeObject<UnusedSlots<IUndoStack>, UnusedSlots<IUndoTarget>> {
public:
    struct Block {
        std::string name;
        IProject* project = nullptr;
        std::vector<FRefPtr<IUndoStep>> steps;
        std::vector<std::function<void()>> undo;
        std::vector<std::function<void()>> redo;
    };

    explicit FakeUndo(HostScript& script) : script_(script) {}

    FResult commit(IProject* project, const char* name) override {
        script_.note("undo.commit");
        open_.project = project;
        open_.name = name;
        for (const auto& step : open_.steps) {
            step->perform();
        }
        blocks.push_back(std::move(open_));
        position_ = blocks.size();
        open_ = {};
        return kResultOk;
    }
    FResult addEvent(IEventTrack* track, IProjectObject* event) override {
        script_.note("undo.addEvent");
        return script_.fails("undo.addEvent") ? kResultFailure : change(track, event, true);
    }
    FResult removeEvent(IEventTrack* track, IProjectObject* event) override {
        script_.note("undo.removeEvent");
        return script_.fails("undo.removeEvent") ? kResultFailure : change(track, event, false);
    }
    FResult addStep(IUndoStep* step) override {
        script_.note("undo.addStep");
        open_.steps.emplace_back(step);
        return kResultOk;
    }
    FResult queryInterface(const FUIDBytes& uid, void** out) override {
        if (uid == IUndoTarget::iid && script_.fails("undo.target")) {
            *out = nullptr;
            return kNoInterface;
        }
        return FakeObject::queryInterface(uid, out);
    }

    void undo() {
        Block& block = blocks.at(--position_);
        for (auto step = block.undo.rbegin(); step != block.undo.rend(); ++step) {
            (*step)();
        }
        for (const auto& step : block.steps) {
            step->undo();
        }
    }
    void redo() {
        Block& block = blocks.at(position_++);
        for (const auto& step : block.redo) {
            step();
        }
        for (const auto& step : block.steps) {
            step->redo();
        }
    }
    bool hasOpenBlock() const { return !open_.undo.empty() || !open_.steps.empty(); }
    void dropOpenBlock() { open_ = {}; }

    std::vector<Block> blocks;

private:
    static void put(FakeTrack& track, FakeEvent* event, bool there) {
        if (there) {
            track.add(event);
        } else {
            track.remove(event);
        }
    }

    FResult change(IEventTrack* track, IProjectObject* event, bool add) {
        FRefPtr<FakeTrack> onTrack(static_cast<FakeTrack*>(track));
        FRefPtr<FakeEvent> audioEvent(static_cast<FakeEvent*>(event));
        put(*onTrack, audioEvent.get(), add);
        open_.undo.emplace_back([=] { put(*onTrack, audioEvent.get(), !add); });
        open_.redo.emplace_back([=] { put(*onTrack, audioEvent.get(), add); });
        return kResultOk;
    }

    HostScript& script_;
    Block open_;
    // Of the next block to redo.
    std::size_t position_ = 0;
};

} // namespace tessera::test
