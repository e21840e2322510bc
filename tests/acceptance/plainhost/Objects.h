// How this host plays an interface: an object of its own, with one table for each interface that it offers, and a count
// of references. What the module gets is a pointer to a face of the object, whose first word is the table.
#pragma once

#include "Abi.h"

#include <stdatomic.h>

#define MOST_FACES 4

typedef struct Object Object;

typedef struct Face {
    Interface interface; // what the module sees
    Object* object;
} Face;

// One interface of an object: the identifier that is asked for, and the table behind it. An interface without an
// identifier is reached through operations alone.
typedef struct FaceKind {
    const Uid* id;
    const Slot* table;
} FaceKind;

typedef struct ObjectKind {
    const char* name;
    void (*destroy)(Object* object); // frees it; called when the last reference has gone
    FaceKind faces[MOST_FACES];      // the first one also answers kBaseUnknown
} ObjectKind;

// The first member of every object.
struct Object {
    const ObjectKind* kind;
    atomic_uint references;
    Face faces[MOST_FACES];
    Object* next;
};

// Slots 0 to 2, for the tables of this host. A slot that a table leaves out is null: nobody may call it.
Result faceQueryInterface(Face* self, const Uid* id, void** out);
uint32_t faceAddRef(Face* self);
uint32_t faceRelease(Face* self);
#define BASE_SLOTS [0] = (Slot)faceQueryInterface, [1] = (Slot)faceAddRef, [2] = (Slot)faceRelease

// `size` bytes, all zero but for the object at their start, with one reference that belongs to the caller.
void* makeObject(size_t size, const ObjectKind* kind);
void keepObject(Object* object);
void dropObject(Object* object); // null is passed over
uint32_t objectReferences(const Object* object);

Interface* faceOf(Object* object, int number);
// The object behind a face of this host that the module gives back, or null for null.
void* objectOf(Interface* face);

// Prints the objects that still live, but for the given one; how many.
int countObjectsBut(const Object* expected);

bool sameUid(const Uid* a, const Uid* b);

// For what a test has to see: prints the line and ends the program with 1.
#define CHECK(condition) ((condition) ? (void)0 : failCheck(__FILE__, __LINE__, #condition))
void failCheck(const char* file, int line, const char* condition);
