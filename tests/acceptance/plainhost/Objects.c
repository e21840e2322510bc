#include "Objects.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static Object* all;

bool sameUid(const Uid* a, const Uid* b) {
    return memcmp(a, b, sizeof *a) == 0;
}

void failCheck(const char* file, int line, const char* condition) {
    fprintf(stderr, "%s:%d: this doesn't hold: %s\n", file, line, condition);
    fflush(NULL);
    _Exit(1);
}

void* makeObject(size_t size, const ObjectKind* kind) {
    Object* object = calloc(1, size);
    CHECK(object != NULL);
    object->kind = kind;
    atomic_init(&object->references, 1);
    for (int i = 0; i < MOST_FACES; ++i) {
        object->faces[i].interface.table = kind->faces[i].table;
        object->faces[i].object = object;
    }
    object->next = all;
    all = object;
    return object;
}

static void forget(const Object* object) {
    Object** place = &all;
    while (*place != object) {
        place = &(*place)->next;
    }
    *place = object->next;
}

void keepObject(Object* object) {
    atomic_fetch_add(&object->references, 1);
}

void dropObject(Object* object) {
    if (object != NULL) {
        faceRelease(&object->faces[0]);
    }
}

uint32_t objectReferences(const Object* object) {
    return atomic_load(&object->references);
}

Result faceQueryInterface(Face* self, const Uid* id, void** out) {
    Object* object = self->object;
    *out = NULL;
    for (int i = 0; i < MOST_FACES; ++i) {
        const Uid* offered = object->kind->faces[i].id;
        if ((i == 0 && sameUid(id, &kBaseUnknown)) || (offered != NULL && sameUid(id, offered))) {
            keepObject(object);
            *out = &object->faces[i];
            return RESULT_OK;
        }
    }
    return RESULT_NO_INTERFACE;
}

uint32_t faceAddRef(Face* self) {
    return atomic_fetch_add(&self->object->references, 1) + 1;
}

uint32_t faceRelease(Face* self) {
    Object* object = self->object;
    const uint32_t left = atomic_fetch_sub(&object->references, 1) - 1;
    CHECK(left != UINT32_MAX);
    if (left == 0) {
        forget(object);
        object->kind->destroy(object);
    }
    return left;
}

Interface* faceOf(Object* object, int number) {
    return &object->faces[number].interface;
}

void* objectOf(Interface* face) {
    // An interface of this host stands at the start of its face.
    return face == NULL ? NULL : ((Face*)face)->object;
}

int countObjectsBut(const Object* expected) {
    int count = 0;
    for (const Object* object = all; object != NULL; object = object->next) {
        if (object != expected) {
            fprintf(stderr, "%s still has %u references\n", object->kind->name, objectReferences(object));
            ++count;
        }
    }
    return count;
}
