// GuestStep: a step of the guest's in an undo block. It holds a reference of the guest's object until the history lets
// go of the block or the guest goes.
#pragma once

#include "foundation/object/FRefPtr.h"
#include "host/checks/GuestWatch.h"
#include "host/objects/GuestCall.h"
#include "host/undo/UndoItem.h"
#include "shell/hostapi/IUndoStep.h"

#include <memory>
#include <utility>

namespace tessera::host {

class GuestStep final : public UndoItem {
public:
    GuestStep(std::shared_ptr<GuestWatch> watch, IUndoStep* step) : watch_(std::move(watch)), step_(step) {}

    void commit() override {
        call("IUndoStep.perform", &IUndoStep::perform);
        performed_ = true;
    }
    void undo() override {
        if (performed_) {
            call("IUndoStep.undo", &IUndoStep::undo);
        }
    }
    void redo() override { call("IUndoStep.redo", &IUndoStep::redo); }
    void forgetGuest() override { step_.reset(); }

private:
    void call(const char* name, FResult (IUndoStep::*operation)()) {
        if (step_) {
            callGuest(*watch_, name, [&] { (step_.get()->*operation)(); });
        }
    }

    const std::shared_ptr<GuestWatch> watch_;
    FRefPtr<IUndoStep> step_;
    bool performed_ = false;
};

} // namespace tessera::host
