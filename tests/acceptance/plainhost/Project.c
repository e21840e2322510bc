#include "Project.h"

#include <stdlib.h>
#include <string.h>

// A time that is a whole number of frames comes out a hair above it: the module cuts off what is behind the point.
#define HAIR 1e-7

#define MOST_PARTS 8

// What belongs to a project and knows it: its track and its pool.
typedef struct Member {
    Object object;
    Project* project;
} Member;

struct Project {
    Object object;
    HostFile* folder;
    Member* track;
    Member* pool;
    Object* timeline;
    Event* event; // the one on the track
    AudioPart* parts[MOST_PARTS];
    int partCount;
    Interface* listener;
};

// An event.

static Event* eventOf(Face* self) {
    return (Event*)self->object;
}

static int32_t rateOf(const Event* event) {
    return event->part->clip->format.sampleRate;
}

static uint32_t eventState(Face* self) {
    const uint32_t isRemoved = 2;
    return eventOf(self)->isOnTrack ? 0 : isRemoved;
}

static Event* makeEvent(Project* project, AudioPart* part);

static Interface* eventDuplicate(Face* self, int64_t unused) {
    CHECK(unused == 0);
    const Event* event = eventOf(self);
    Event* copy = makeEvent(event->project, event->part);
    copy->position = event->position;
    copy->clipSeconds = event->clipSeconds;
    copy->firstFrame = event->firstFrame;
    copy->frames = event->frames;
    return eventInterface(copy);
}

static double eventTimelineStart(Face* self, uint64_t scope) {
    (void)scope;
    return eventOf(self)->position;
}

static double eventTimelineEnd(Face* self, uint64_t scope) {
    (void)scope;
    const Event* event = eventOf(self);
    return event->position + (double)event->frames / rateOf(event) + HAIR;
}

static double eventClipOffset(Face* self, uint64_t scope) {
    (void)scope;
    const Event* event = eventOf(self);
    return (double)event->firstFrame / rateOf(event) + HAIR;
}

// The seconds are those of the whole clip: the event grows by as much as its clip did.
static Result eventPlace(Face* self, double position, double seconds, Interface* undo) {
    CHECK(undo != NULL);
    Event* event = eventOf(self);
    const double grown = (seconds - event->clipSeconds) * rateOf(event);
    event->position = position;
    event->clipSeconds = seconds;
    event->frames += (int64_t)(grown < 0 ? grown - 0.5 : grown + 0.5);
    return RESULT_OK;
}

static Interface* eventParent(Face* self) {
    const Event* event = eventOf(self);
    return event->isOnTrack ? faceOf(&event->project->track->object, 0) : NULL;
}

static Interface* eventAudioPart(Face* self) {
    return partInterface(eventOf(self)->part);
}

static Result eventSetAudioPart(Face* self, int64_t unused1, Interface* part, int64_t unused2) {
    CHECK(unused1 == 0 && unused2 == 0 && part != NULL);
    Event* event = eventOf(self);
    AudioPart* next = objectOf(part);
    keepObject(&next->object);
    dropObject(&event->part->object);
    event->part = next;
    return RESULT_OK;
}

static void destroyEvent(Object* object) {
    dropObject(&((Event*)object)->part->object);
    free(object);
}

static const Slot kEventObjectTable[] = {
    BASE_SLOTS,
    [4] = (Slot)eventState,
    [5] = (Slot)eventDuplicate,
    [20] = (Slot)eventTimelineStart,
    [23] = (Slot)eventPlace,
    [24] = (Slot)eventTimelineEnd,
    [26] = (Slot)eventClipOffset,
    [29] = (Slot)eventParent,
};

static const Slot kAudioEventTable[] = {
    BASE_SLOTS,
    [3] = (Slot)eventAudioPart,
    [4] = (Slot)eventSetAudioPart,
};

static const ObjectKind kEventKind = {
    "event", destroyEvent, {{&kProjectObject, kEventObjectTable}, {&kAudioEvent, kAudioEventTable}}};

static Event* makeEvent(Project* project, AudioPart* part) {
    Event* event = makeObject(sizeof *event, &kEventKind);
    keepObject(&part->object);
    event->project = project;
    event->part = part;
    return event;
}

Interface* eventInterface(Event* event) {
    return faceOf(&event->object, 0);
}

// The track: an object of the project's tree, and what events stand on.

static Interface* trackParent(Face* self) {
    return projectObjectInterface(((Member*)self->object)->project);
}

static void destroyPlain(Object* object) {
    free(object);
}

static const Slot kTrackObjectTable[] = {
    BASE_SLOTS,
    [29] = (Slot)trackParent,
};

static const Slot kTrackTable[] = {BASE_SLOTS};

static const ObjectKind kTrackKind = {
    "track", destroyPlain, {{&kProjectObject, kTrackObjectTable}, {&kEventTrack, kTrackTable}}};

Interface* trackInterface(Project* project) {
    return faceOf(&project->track->object, 1);
}

// The root of the tree, which the module looks at for its identity.
static const Slot kTimelineTable[] = {BASE_SLOTS};
static const ObjectKind kTimelineKind = {"timeline", destroyPlain, {{NULL, kTimelineTable}}};

// The pool.

static Result poolAdd(Face* self, Interface* node, int64_t unused) {
    Project* project = ((Member*)self->object)->project;
    CHECK(unused == 0 && node != NULL && project->partCount < MOST_PARTS);
    AudioPart* part = objectOf(node);
    keepObject(&part->object);
    project->parts[project->partCount++] = part;
    return RESULT_OK;
}

static const Slot kPoolTable[] = {
    BASE_SLOTS,
    [7] = (Slot)poolAdd,
};
static const ObjectKind kPoolKind = {"pool", destroyPlain, {{NULL, kPoolTable}}};

int partsInPool(const Project* project) {
    return project->partCount;
}

// The project: itself, the top of its tree, and what the events belong to.

static Project* projectOf(Face* self) {
    return (Project*)self->object;
}

static Interface* projectFolder(Face* self) {
    return hostFileInterface(projectOf(self)->folder);
}

// It was never saved.
static Interface* projectFile(Face* self) {
    (void)self;
    return NULL;
}

static Interface* projectPool(Face* self) {
    return faceOf(&projectOf(self)->pool->object, 0);
}

static Interface* projectRoot(Face* self) {
    return faceOf(projectOf(self)->timeline, 0);
}

static double projectPositionOf(Face* self, Interface* event) {
    (void)self;
    return ((const Event*)objectOf(event))->position;
}

static Result projectAddListener(Face* self, Interface* listener) {
    CHECK(projectOf(self)->listener == NULL);
    projectOf(self)->listener = listener;
    return RESULT_OK;
}

static Result projectRemoveListener(Face* self, Interface* listener) {
    if (projectOf(self)->listener != listener) {
        return RESULT_NO;
    }
    projectOf(self)->listener = NULL;
    return RESULT_OK;
}

static uint32_t projectState(Face* self) {
    (void)self;
    return 0;
}

static Interface* projectParent(Face* self) {
    (void)self;
    return NULL;
}

static Interface* ownerTrackOf(Face* self, Interface* eventTrack) {
    Interface* track = trackInterface(projectOf(self));
    return eventTrack == track ? track : NULL;
}

static void destroyProject(Object* object) {
    Project* project = (Project*)object;
    CHECK(project->listener == NULL);
    if (project->event != NULL) {
        takeOffTrack(project, project->event);
    }
    for (int i = 0; i < project->partCount; ++i) {
        dropObject(&project->parts[i]->object);
    }
    dropObject(&project->track->object);
    dropObject(project->timeline);
    dropObject(&project->pool->object);
    dropObject(&project->folder->object);
    free(project);
}

static const Slot kProjectTable[] = {
    BASE_SLOTS,
    [9] = (Slot)projectFolder,
    [10] = (Slot)projectFile,
    [11] = (Slot)projectPool,
    [12] = (Slot)projectRoot,
    [16] = (Slot)projectPositionOf,
    [19] = (Slot)projectAddListener,
    [20] = (Slot)projectRemoveListener,
};

static const Slot kProjectObjectTable[] = {
    BASE_SLOTS,
    [4] = (Slot)projectState,
    [29] = (Slot)projectParent,
};

static const Slot kOwnerTable[] = {
    BASE_SLOTS,
    [16] = (Slot)ownerTrackOf,
};

static const ObjectKind kProjectKind = {
    "project",
    destroyProject,
    {{NULL, kProjectTable}, {&kProjectObject, kProjectObjectTable}, {&kEventOwner, kOwnerTable}}};

static Member* makeMember(Project* project, const ObjectKind* kind) {
    Member* member = makeObject(sizeof *member, kind);
    member->project = project;
    return member;
}

Project* makeProject(const char* utf8Folder) {
    Project* project = makeObject(sizeof *project, &kProjectKind);
    project->folder = makeHostFileAt(utf8Folder, true);
    project->track = makeMember(project, &kTrackKind);
    project->pool = makeMember(project, &kPoolKind);
    project->timeline = makeObject(sizeof(Object), &kTimelineKind);
    return project;
}

Object* projectObject(Project* project) {
    return &project->object;
}

Interface* projectInterface(Project* project) {
    return faceOf(&project->object, 0);
}

Interface* projectObjectInterface(Project* project) {
    return faceOf(&project->object, 1);
}

void addFirstEvent(Project* project, const char* utf8File, int64_t firstFrame, int64_t frames) {
    HostFile* file = makeHostFileAt(utf8File, false);
    AudioClip* clip = makeClip();
    AudioPart* part = makePart();
    CHECK(bindClip(clip, file));
    bindPart(part, clip);
    Event* event = makeEvent(project, part);
    event->position = 2.5;
    event->clipSeconds = clipSeconds(clip);
    event->firstFrame = firstFrame;
    event->frames = frames;
    putOnTrack(project, event);
    dropObject(&event->object);
    dropObject(&part->object);
    dropObject(&clip->object);
    dropObject(&file->object);
}

Event* standingEvent(const Project* project) {
    return project->event;
}

void putOnTrack(Project* project, Event* event) {
    CHECK(project->event == NULL && !event->isOnTrack);
    keepObject(&event->object);
    event->isOnTrack = true;
    project->event = event;
}

void takeOffTrack(Project* project, Event* event) {
    CHECK(project->event == event && event->isOnTrack);
    event->isOnTrack = false;
    project->event = NULL;
    dropObject(&event->object);
}
