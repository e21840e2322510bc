#include "workflow/UndoBlock.h"

#include "workflow/HostServices.h"

namespace tessera {

UndoBlock::UndoBlock(IProject* project, const char* name)
    : stack_(queryService<IUndoStack>()), project_(project), name_(name) {}

UndoBlock::~UndoBlock() {
    if (stack_ && commit_) {
        stack_->commit(project_, name_);
    }
}

} // namespace tessera
