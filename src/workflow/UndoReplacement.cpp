#include "workflow/UndoReplacement.h"

#include "workflow/HostBorder.h"

namespace tessera {

UndoReplacement::UndoReplacement(IProjectObject* newEvent, IProjectObject* oldEvent, Replaced replaced)
    : newEvent_(newEvent), oldEvent_(oldEvent), replaced_(std::move(replaced)) {}

FResult UndoReplacement::tell(IProjectObject* event) {
    atHostBorder([&] { replaced_(event); });
    return kResultOk;
}

} // namespace tessera
