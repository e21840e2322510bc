#include "Undo.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#define MOST_ENTRIES 8

// Either a step of the module, or an event that came to the track or left it.
typedef struct Entry {
    Interface* step;
    Event* event;
    bool added;
} Entry;

struct UndoStack {
    Object object;
    Project* project;
    Entry entries[MOST_ENTRIES];
    int count;
    bool committed;
    char name[64];
};

static UndoStack* undoOf(Face* self) {
    return (UndoStack*)self->object;
}

static Entry* newEntry(UndoStack* undo) {
    CHECK(!undo->committed && undo->count < MOST_ENTRIES);
    return &undo->entries[undo->count++];
}

static void enterEvent(UndoStack* undo, Event* event, bool added) {
    Entry* entry = newEntry(undo);
    keepObject(&event->object);
    entry->event = event;
    entry->added = added;
}

static Result addEvent(Face* self, Interface* track, Interface* event) {
    UndoStack* undo = undoOf(self);
    CHECK(track == trackInterface(undo->project));
    enterEvent(undo, objectOf(event), true);
    putOnTrack(undo->project, objectOf(event));
    return RESULT_OK;
}

static Result removeEvent(Face* self, Interface* track, Interface* event) {
    UndoStack* undo = undoOf(self);
    CHECK(track == trackInterface(undo->project));
    enterEvent(undo, objectOf(event), false);
    takeOffTrack(undo->project, objectOf(event));
    return RESULT_OK;
}

// The steps of the module are performed now; the events have been moved as they came.
static Result commit(Face* self, Interface* project, const char* name) {
    UndoStack* undo = undoOf(self);
    CHECK(project == projectInterface(undo->project) && undo->count > 0 && strlen(name) < sizeof undo->name);
    memcpy(undo->name, name, strlen(name) + 1);
    undo->committed = true;
    for (int i = 0; i < undo->count; ++i) {
        if (undo->entries[i].step != NULL) {
            CHECK(undoStepPerform(undo->entries[i].step) == RESULT_OK);
        }
    }
    return RESULT_OK;
}

static Result addStep(Face* self, Interface* step) {
    addRef(step);
    newEntry(undoOf(self))->step = step;
    return RESULT_OK;
}

static void destroy(Object* object) {
    UndoStack* undo = (UndoStack*)object;
    for (int i = 0; i < undo->count; ++i) {
        if (undo->entries[i].step != NULL) {
            releaseRef(undo->entries[i].step);
        } else {
            dropObject(&undo->entries[i].event->object);
        }
    }
    free(undo);
}

static const Slot kStackTable[] = {
    BASE_SLOTS,
    [4] = (Slot)commit,
    [5] = (Slot)addEvent,
    [6] = (Slot)removeEvent,
};

static const Slot kTargetTable[] = {
    BASE_SLOTS,
    [13] = (Slot)addStep,
};

static const ObjectKind kKind = {"undo stack", destroy, {{&kUndoStack, kStackTable}, {&kUndoTarget, kTargetTable}}};

UndoStack* makeUndoStack(Project* project) {
    UndoStack* undo = makeObject(sizeof *undo, &kKind);
    undo->project = project;
    return undo;
}

Object* undoObject(UndoStack* undo) {
    return &undo->object;
}

bool hasCommitted(const UndoStack* undo) {
    return undo->committed;
}

const char* nameToUndo(const UndoStack* undo) {
    return undo->name;
}

static void moveEvent(UndoStack* undo, const Entry* entry, bool onto) {
    if (onto) {
        putOnTrack(undo->project, entry->event);
    } else {
        takeOffTrack(undo->project, entry->event);
    }
}

void undoLast(UndoStack* undo) {
    for (int i = undo->count - 1; i >= 0; --i) {
        const Entry* entry = &undo->entries[i];
        if (entry->step != NULL) {
            CHECK(undoStepUndo(entry->step) == RESULT_OK);
        } else {
            moveEvent(undo, entry, !entry->added);
        }
    }
}

void redoLast(UndoStack* undo) {
    for (int i = 0; i < undo->count; ++i) {
        const Entry* entry = &undo->entries[i];
        if (entry->step != NULL) {
            CHECK(undoStepRedo(entry->step) == RESULT_OK);
        } else {
            moveEvent(undo, entry, entry->added);
        }
    }
}
