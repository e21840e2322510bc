// IUndoStack and IUndoTarget: the host's undo history, as deep as this host needs it: one block.
#pragma once

#include "Project.h"

typedef struct UndoStack UndoStack;

UndoStack* makeUndoStack(Project* project);
Object* undoObject(UndoStack* undo);
bool hasCommitted(const UndoStack* undo);
// What stands in the menu behind "Undo".
const char* nameToUndo(const UndoStack* undo);
void undoLast(UndoStack* undo);
void redoLast(UndoStack* undo);
