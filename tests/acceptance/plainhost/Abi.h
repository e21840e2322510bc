// The binary interface of the module, in C: what a host of any compiler and language has to agree with. Nothing here
// comes from the module's own headers; the numbers are those of docs/host-guide.md.
//
// An interface is a pointer to a word that points to a table of functions. An operation is called by its number in that
// table, with the interface itself as the first argument, by the platform's plain calling convention. The first three
// are the same in every table. There is no destructor in a table.
#pragma once

#include <assert.h>
#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

typedef void (*Slot)(void);

typedef struct Interface {
    const Slot* table;
} Interface;

// 32 bits.
typedef uint32_t Result;
#define RESULT_OK 0u
#define RESULT_NO 1u
#define RESULT_NO_INTERFACE 0x80004002u
#define RESULT_FAILURE 0x80004005u
#define RESULT_BAD_ARGUMENT 0x80070057u

// Texts of 16 bits a unit, in the platform's byte order, ended by a zero. Buffers for paths have room for 1024 units.
typedef uint16_t Char16;
#define PATH_UNITS 1024

// 16 bytes: a little-endian word of 32 bits, two of 16 bits, eight bytes. UID writes one as it is printed in braces.
typedef struct Uid {
    uint8_t bytes[16];
} Uid;
static_assert(sizeof(Uid) == 16, "an identifier is 16 bytes");

#define BYTE_OF(word, number) ((uint8_t)((uint32_t)(word) >> (8 * (number))))
#define UID(a, b, c, d0, d1, d2, d3, d4, d5, d6, d7)                                                                   \
    {                                                                                                                  \
        {                                                                                                              \
            BYTE_OF(a, 0), BYTE_OF(a, 1), BYTE_OF(a, 2), BYTE_OF(a, 3), BYTE_OF(b, 0), BYTE_OF(b, 1), BYTE_OF(c, 0),   \
                BYTE_OF(c, 1), d0, d1, d2, d3, d4, d5, d6, d7                                                          \
        }                                                                                                              \
    }

static const Uid kBaseUnknown = UID(0x00000000, 0x0000, 0x0000, 0xC0, 0, 0, 0, 0, 0, 0, 0x46);

// What the module's factory answers.
static const Uid kModuleFactory = UID(0x7A4D811C, 0x5211, 0x4A1F, 0xAE, 0xD9, 0xD2, 0xEE, 0x0B, 0x43, 0xBF, 0x9F);
static const Uid kModuleFactory2 = UID(0x0007B650, 0xF24B, 0x4C0B, 0xA4, 0x64, 0xED, 0xB9, 0xF0, 0x0B, 0x2A, 0xBB);
static const Uid kModuleFactory3 = UID(0x4555A2AB, 0xC123, 0x4E57, 0x9B, 0x12, 0x29, 0x10, 0x36, 0x87, 0x89, 0x31);

// What the host's context answers.
static const Uid kHostServices = UID(0xEEC89683, 0x80DB, 0x4336, 0x91, 0x77, 0x27, 0x3E, 0x13, 0x8A, 0x76, 0x3B);
static const Uid kApplicationInfo = UID(0xA8E1A52A, 0x8E24, 0x416A, 0xB9, 0x59, 0x21, 0x74, 0x24, 0x43, 0xFB, 0x74);

// Services that the module asks the context for.
static const Uid kCommandTable = UID(0xA42A9119, 0x161E, 0x4547, 0x98, 0xA2, 0x6F, 0xB7, 0x69, 0x14, 0x0E, 0x24);
static const Uid kCommandTarget = UID(0x762F3F61, 0x11D1, 0x4115, 0x92, 0xF9, 0x7A, 0xC6, 0xF2, 0x39, 0x46, 0x0F);
static const Uid kAlertHost = UID(0x37BDB6A1, 0x65FB, 0x4994, 0x98, 0x86, 0x04, 0x54, 0x94, 0x61, 0xA2, 0xBB);
static const Uid kIdleHost = UID(0x9E871847, 0xF1AB, 0x4776, 0xA0, 0x6C, 0x6F, 0x94, 0x5D, 0x7F, 0xDD, 0x4D);
static const Uid kSelection = UID(0x05B21566, 0x9B33, 0x4363, 0xAF, 0x1E, 0x7C, 0x4B, 0x52, 0xD9, 0x92, 0x38);
static const Uid kProjectList = UID(0x3D7C2813, 0x8ABF, 0x4AAE, 0xA2, 0x3A, 0x11, 0xBF, 0x37, 0x21, 0x4C, 0x36);
static const Uid kObjectRegistry = UID(0xF5246D56, 0x8654, 0x4D60, 0xB0, 0x26, 0xAF, 0xB5, 0x7B, 0x69, 0x7B, 0x37);
static const Uid kObjectTest = UID(0x0407EB04, 0x3713, 0x4E28, 0x9A, 0x82, 0x34, 0xAB, 0x48, 0x77, 0xB1, 0x09);
static const Uid kUndoStack = UID(0x3F322518, 0x90F4, 0x462A, 0xB9, 0xE9, 0x53, 0x5C, 0x45, 0x4C, 0x26, 0x5E);
static const Uid kUrlFactory = UID(0x0AF38EA1, 0x40F2, 0x4B14, 0x96, 0x5B, 0xF9, 0x7C, 0xA4, 0xFF, 0x94, 0xD1);
static const Uid kClipFactory = UID(0xCB1EE990, 0xBC4F, 0x40C7, 0xA0, 0xE0, 0x1D, 0x1E, 0xE7, 0x55, 0x1F, 0x55);
static const Uid kClipAccess = UID(0x98ECBB42, 0x93A1, 0x4849, 0x98, 0xFE, 0x6F, 0x8C, 0x40, 0xEC, 0x22, 0xD3);
static const Uid kWriterFactory = UID(0xA03CBE81, 0xE5DB, 0x473E, 0xA9, 0x08, 0x23, 0x68, 0x6A, 0x34, 0xD4, 0xBF);

// What those and the objects of a project answer beside.
static const Uid kUndoTarget = UID(0x7199C83A, 0x68C9, 0x40BF, 0x9F, 0x14, 0x2D, 0xCD, 0xFF, 0x1A, 0x1C, 0xB3);
static const Uid kEventRestrictions = UID(0xE5E6482F, 0x701F, 0x964D, 0xAF, 0x5E, 0x79, 0x57, 0x62, 0xCD, 0xFE, 0xE4);
static const Uid kProjectObject = UID(0x7A6F999F, 0xBDBC, 0x4BCC, 0xAC, 0x40, 0x3D, 0xAB, 0xAC, 0xE8, 0xA1, 0x71);
static const Uid kAudioEvent = UID(0x21FFE452, 0xD832, 0x40D6, 0xAE, 0x8B, 0x6D, 0xB6, 0xAE, 0x40, 0x01, 0x65);
static const Uid kEventOwner = UID(0x5354D6AC, 0xC0D4, 0x4532, 0xB1, 0xBD, 0xA3, 0x3E, 0x22, 0x9B, 0x9F, 0x3D);
static const Uid kEventTrack = UID(0x1A3A5B5E, 0xAC16, 0x424B, 0x8A, 0xA2, 0x20, 0x69, 0xFF, 0xE3, 0xF0, 0xA9);
static const Uid kFolderNode = UID(0xE34A31B4, 0xADCB, 0x40BC, 0xBC, 0xE6, 0x43, 0x93, 0xCF, 0xBF, 0x48, 0xBF);
static const Uid kAudioClip = UID(0x0251DA1B, 0x82F7, 0x43B1, 0x90, 0x17, 0x50, 0x4B, 0x58, 0x7B, 0x06, 0x23);

// The records that the factory fills. 8-bit texts are padded with zeros.
typedef struct FactoryInfo {
    char vendor[64];
    char url[256];
    char email[128];
    int32_t flags;
} FactoryInfo;
static_assert(sizeof(FactoryInfo) == 452 && offsetof(FactoryInfo, flags) == 448, "no padding");

typedef struct ClassInfo {
    Uid id;
    int32_t cardinality;
    char category[32];
    char name[64];
} ClassInfo;
static_assert(sizeof(ClassInfo) == 116 && offsetof(ClassInfo, name) == 52, "no padding");

typedef struct ClassInfoEx {
    Uid id;
    int32_t cardinality;
    char category[32];
    char name[64];
    uint32_t flags;
    char subcategories[128];
    char vendor[64];
    char version[64];
    char sdkVersion[64];
} ClassInfoEx;
static_assert(sizeof(ClassInfoEx) == 440 && offsetof(ClassInfoEx, sdkVersion) == 376, "no padding");

typedef struct ClassInfoWide {
    Uid id;
    int32_t cardinality;
    char category[32];
    Char16 name[64];
    uint32_t flags;
    char subcategories[128];
    Char16 vendor[64];
    Char16 version[64];
    Char16 sdkVersion[64];
} ClassInfoWide;
static_assert(sizeof(ClassInfoWide) == 696 && offsetof(ClassInfoWide, sdkVersion) == 568, "no padding");

// The functions that the file of the module exports.
typedef Interface* (*GetPluginFactoryFunction)(void);
typedef bool (*InitDllFunction)(void);
typedef bool (*ExitDllFunction)(void);

// How a host calls the module: the function at that place of the table, as what it is.
#define CALL(interface, slot, type) ((type)(interface)->table[slot])

// Slots 0 to 2 of every interface.
static inline Result queryInterface(Interface* any, const Uid* id, void** out) {
    return CALL(any, 0, Result(*)(Interface*, const Uid*, void**))(any, id, out);
}
static inline uint32_t addRef(Interface* any) {
    return CALL(any, 1, uint32_t(*)(Interface*))(any);
}
static inline uint32_t releaseRef(Interface* any) {
    return CALL(any, 2, uint32_t(*)(Interface*))(any);
}

// The factory: one table for all of its interfaces.
static inline Result factoryDescribe(Interface* factory, FactoryInfo* info) {
    return CALL(factory, 3, Result(*)(Interface*, FactoryInfo*))(factory, info);
}
static inline int32_t factoryClassCount(Interface* factory) {
    return CALL(factory, 4, int32_t(*)(Interface*))(factory);
}
static inline Result factoryDescribeClass(Interface* factory, int32_t index, ClassInfo* info) {
    return CALL(factory, 5, Result(*)(Interface*, int32_t, ClassInfo*))(factory, index, info);
}
static inline Result factoryCreate(Interface* factory, const Uid* classId, const Uid* interfaceId, void** out) {
    return CALL(factory, 6, Result(*)(Interface*, const Uid*, const Uid*, void**))(factory, classId, interfaceId, out);
}
static inline Result factoryDescribeClassEx(Interface* factory, int32_t index, ClassInfoEx* info) {
    return CALL(factory, 7, Result(*)(Interface*, int32_t, ClassInfoEx*))(factory, index, info);
}
static inline Result factoryDescribeClassWide(Interface* factory, int32_t index, ClassInfoWide* info) {
    return CALL(factory, 8, Result(*)(Interface*, int32_t, ClassInfoWide*))(factory, index, info);
}
static inline Result factoryAttachHost(Interface* factory, Interface* context) {
    return CALL(factory, 9, Result(*)(Interface*, Interface*))(factory, context);
}

// The object of the class "Service", as createObject gives it for kBaseUnknown.
static inline Result pluginInitialize(Interface* plugin, Interface* context) {
    return CALL(plugin, 3, Result(*)(Interface*, Interface*))(plugin, context);
}
static inline Result pluginTerminate(Interface* plugin) {
    return CALL(plugin, 4, Result(*)(Interface*))(plugin);
}

// What the module hands to the host's services.
static inline Result handlerCheckOrExecute(Interface* handler, const char* category, const char* name, bool checkOnly) {
    return CALL(handler, 3, Result(*)(Interface*, const char*, const char*, bool))(handler, category, name, checkOnly);
}
static inline void idleClientOnIdle(Interface* client) {
    CALL(client, 3, void (*)(Interface*))(client);
}
static inline void observerUpdate(Interface* observer, Interface* subject, int32_t code) {
    CALL(observer, 3, void (*)(Interface*, Interface*, int32_t))(observer, subject, code);
}
static inline void listListenerActivated(Interface* listener, Interface* project) {
    CALL(listener, 3, void (*)(Interface*, Interface*))(listener, project);
}
static inline Result undoStepPerform(Interface* step) {
    return CALL(step, 3, Result(*)(Interface*))(step);
}
static inline Result undoStepUndo(Interface* step) {
    return CALL(step, 4, Result(*)(Interface*))(step);
}
static inline Result undoStepRedo(Interface* step) {
    return CALL(step, 5, Result(*)(Interface*))(step);
}
