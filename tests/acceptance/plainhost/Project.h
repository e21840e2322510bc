// The project of this host: a folder, one track, and on it one event that plays a stretch of a file.
#pragma once

#include "Audio.h"

typedef struct Project Project;

// IProjectObject and IAudioEvent.
typedef struct Event {
    Object object;
    Project* project;
    AudioPart* part;
    double position;    // where on the timeline it starts; this and the next in seconds
    double clipSeconds; // how long the clip is that it was trimmed for
    int64_t firstFrame; // of its clip
    int64_t frames;     // that it plays
    bool isOnTrack;
} Event;

Project* makeProject(const char* utf8Folder);
Object* projectObject(Project* project);
Interface* projectInterface(Project* project);
// As the registry knows it.
Interface* projectObjectInterface(Project* project);

// An event on the track that plays those frames of the file.
void addFirstEvent(Project* project, const char* utf8File, int64_t firstFrame, int64_t frames);
// The event that stands on the track, which stays the project's; null if there is none.
Event* standingEvent(const Project* project);
Interface* eventInterface(Event* event);
// Both check that they change something. A project holds a reference to the event on its track.
void putOnTrack(Project* project, Event* event);
void takeOffTrack(Project* project, Event* event);
Interface* trackInterface(Project* project);

int partsInPool(const Project* project);
