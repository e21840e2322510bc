// What this host offers to the module: the context that it hands to initialize, and the services behind it. Services
// that an edit doesn't need are left out: the module passes over what a host doesn't have.
#pragma once

#include "Undo.h"

typedef struct Services Services;

// The project is the active one; its event is what the user has selected.
Services* makeServices(Project* project);
void freeServices(Services* services);

// IHostServices and IHostApplicationInfo, as the name and the version say.
Interface* contextInterface(Services* services);
void setHostName(Services* services, const char* name, const char* version);

// What the module has entered: null, or the handler that stays the host's.
Interface* commandHandler(const Services* services);
bool hasCommand(const Services* services, const char* category, const char* name);
// Whether the selected event holds processing that no editor could keep; the module then refuses to edit it.
void setRestricted(Services* services, bool isRestricted);
// The message that the module has had shown last, as UTF-8; empty if there was none.
const char* lastAlert(const Services* services);
// No service knows anybody of the module any more.
bool isLeftAlone(const Services* services);
UndoStack* undoStack(const Services* services);

// What a host does all the time: it calls those who want to be called when there is time. Then it tells who watches the
// project of what has changed meanwhile.
void idle(Services* services);
