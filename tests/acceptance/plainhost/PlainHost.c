// A host in plain C, built without any header of the module. It loads the module by its file, plays the host's side of
// the interfaces by slot number, has an event edited by a peer, and checks every frame that came back.
//   plain_host MODULE PEER EDITOR FOLDER [--walk-out]
// The folder is made, and all files of the run stay below it. Ends with 0 if all is well. A host that walks out ends
// with the module at work, as after an error of its own: the process has to end all the same.
#include "Editor.h"
#include "Services.h"

#include <stdlib.h>
#include <string.h>

#define RATE 8000
#define FRAMES 40001
#define FIRST_FRAME 20003
#define PLAYED_FRAMES 16385
#define DEADLINE_MS 60000

static const Uid kServiceClass = UID(0x973C3773, 0xAC41, 0x4593, 0xBD, 0xF4, 0x89, 0xC7, 0x68, 0xF4, 0xBF, 0x5A);
static const Uid kNobodys = UID(0x12345678, 0x1234, 0x5678, 1, 2, 3, 4, 5, 6, 7, 8);
static const char kCategory[] = "Tessera Exchange";
static const char kCommand[] = "Edit in Tessera";

// Noise that is the same at each run.
static void fillFrames(Frame* frames, size_t count) {
    uint32_t state = 1;
    for (size_t i = 0; i < count * FRAME_BYTES; ++i) {
        state = state * 1664525u + 1013904223u;
        frames[i / FRAME_BYTES].bytes[i % FRAME_BYTES] = (uint8_t)(state >> 24);
    }
}

static void writeSound(const char* utf8Path, const Frame* frames, size_t count) {
    Char16 path[PATH_UNITS];
    toText16(utf8Path, path);
    WavFormat format = {CHANNELS, RATE, BITS, 0};
    FILE* file = wavCreate(path, &format);
    CHECK(file != NULL && fwrite(frames, sizeof *frames, count, file) == count);
    format.frames = (int64_t)count;
    CHECK(wavFlush(file, &format));
    fclose(file);
}

// The file holds exactly these frames.
static void checkSound(const Char16* path, const Frame* frames, size_t count) {
    WavFormat format;
    FILE* file = wavOpen(path, &format);
    CHECK(file != NULL);
    CHECK(format.channels == CHANNELS && format.sampleRate == RATE && format.bits == BITS);
    CHECK(format.frames == (int64_t)count);
    Frame* read = malloc(count * sizeof *read);
    CHECK(read != NULL && fread(read, sizeof *read, count, file) == count);
    CHECK(memcmp(read, frames, count * sizeof *read) == 0);
    free(read);
    fclose(file);
}

// A record with a guard behind it, which has to survive: the module writes the stated bytes and no more.
#define GUARD_BYTES 64
#define GUARDED(type)                                                                                                  \
    struct {                                                                                                           \
        type record;                                                                                                   \
        uint8_t guard[GUARD_BYTES];                                                                                    \
    }

static bool guardStands(const uint8_t* guard) {
    for (int i = 0; i < GUARD_BYTES; ++i) {
        if (guard[i] != 0xA5) {
            return false;
        }
    }
    return true;
}

static bool isAscii(const Char16* wide, const char* text) {
    while (*text != 0 && *wide == (Char16)*text) {
        ++wide;
        ++text;
    }
    return *wide == 0 && *text == 0;
}

static void checkRecords(Interface* factory) {
    GUARDED(FactoryInfo) vendor;
    GUARDED(ClassInfo) narrow;
    GUARDED(ClassInfoEx) extended;
    GUARDED(ClassInfoWide) wide;
    memset(&vendor, 0xA5, sizeof vendor);
    memset(&narrow, 0xA5, sizeof narrow);
    memset(&extended, 0xA5, sizeof extended);
    memset(&wide, 0xA5, sizeof wide);
    CHECK(factoryDescribe(factory, &vendor.record) == RESULT_OK);
    CHECK(factoryDescribeClass(factory, 0, &narrow.record) == RESULT_OK);
    CHECK(factoryDescribeClassEx(factory, 0, &extended.record) == RESULT_OK);
    CHECK(factoryDescribeClassWide(factory, 0, &wide.record) == RESULT_OK);
    CHECK(guardStands(vendor.guard) && guardStands(narrow.guard));
    CHECK(guardStands(extended.guard) && guardStands(wide.guard));

    CHECK(strcmp(vendor.record.vendor, "Marlgrove Audio Works GmbH") == 0 && vendor.record.flags == 0x10);
    CHECK(sameUid(&narrow.record.id, &kServiceClass) && narrow.record.cardinality == 1);
    CHECK(strcmp(narrow.record.category, "Service") == 0 && strcmp(narrow.record.name, kCategory) == 0);
    CHECK(memcmp(&extended.record, &narrow.record, sizeof narrow.record) == 0);
    CHECK(extended.record.flags == 0 && extended.record.subcategories[0] == 0 && extended.record.vendor[0] == 0);
    CHECK(strcmp(extended.record.version, "1.5.10.6") == 0 && extended.record.sdkVersion[0] == 0);
    CHECK(memcmp(&wide.record, &narrow.record, offsetof(ClassInfoWide, name)) == 0);
    CHECK(isAscii(wide.record.name, kCategory) && isAscii(wide.record.version, "1.5.10.6"));

    CHECK(factoryDescribeClass(factory, -1, &narrow.record) == RESULT_BAD_ARGUMENT);
    CHECK(factoryDescribeClass(factory, 1, &narrow.record) == RESULT_BAD_ARGUMENT);
    CHECK(factoryDescribe(factory, NULL) == RESULT_OK);
}

static void checkFactory(Interface* factory) {
    const Uid* const answered[] = {&kBaseUnknown, &kModuleFactory, &kModuleFactory2, &kModuleFactory3};
    void* out = NULL;
    for (int i = 0; i < 4; ++i) {
        CHECK(queryInterface(factory, answered[i], &out) == RESULT_OK && out == factory);
        releaseRef(out);
    }
    CHECK(queryInterface(factory, &kNobodys, &out) == RESULT_NO_INTERFACE && out == NULL);
    const uint32_t references = addRef(factory);
    CHECK(releaseRef(factory) == references - 1);
    CHECK(factoryClassCount(factory) == 1);
    checkRecords(factory);
    out = &out;
    CHECK(factoryCreate(factory, &kNobodys, &kBaseUnknown, &out) == RESULT_NO_INTERFACE && out == NULL);
    out = &out;
    CHECK(factoryCreate(factory, &kServiceClass, &kNobodys, &out) == RESULT_NO_INTERFACE && out == NULL);
}

static Interface* loadFactory(void* library) {
    CHECK(library != NULL);
    const GetPluginFactoryFunction getFactory = (GetPluginFactoryFunction)functionIn(library, "GetPluginFactory");
    const InitDllFunction initDll = (InitDllFunction)functionIn(library, "InitDll");
    CHECK(getFactory != NULL && initDll != NULL && functionIn(library, "ExitDll") != NULL);
    CHECK(initDll());
    Interface* factory = getFactory();
    CHECK(factory != NULL && getFactory() == factory);
    releaseRef(factory);
    return factory;
}

// The module stays in the process although the host has given it back: its singletons live to the very end.
static void checkStaysLoaded(void* library) {
    const GetPluginFactoryFunction getFactory = (GetPluginFactoryFunction)functionIn(library, "GetPluginFactory");
    giveLibraryBack(library);
    Interface* factory = getFactory();
    CHECK(factory != NULL && factoryClassCount(factory) == 1);
    CHECK(releaseRef(factory) == 0);
}

static Interface* createPlugin(Interface* factory, Services* services) {
    CHECK(factoryAttachHost(factory, contextInterface(services)) == RESULT_OK);
    CHECK(factoryClassCount(factory) == 1);
    void* plugin = NULL;
    CHECK(factoryCreate(factory, &kServiceClass, &kBaseUnknown, &plugin) == RESULT_OK && plugin != NULL);
    return plugin;
}

// A host with another name, or too old, is refused and left alone.
static void checkRefusal(Interface* plugin, Services* services) {
    setHostName(services, "Nobody's Workstation", "99.0.0");
    CHECK(pluginInitialize(plugin, contextInterface(services)) == RESULT_NO);
    setHostName(services, "Harrow Max", "8.5.9");
    CHECK(pluginInitialize(plugin, contextInterface(services)) == RESULT_NO);
    CHECK(isLeftAlone(services));
    CHECK(pluginTerminate(plugin) == RESULT_OK);
}

static bool canEdit(const Services* services) {
    return handlerCheckOrExecute(commandHandler(services), kCategory, kCommand, true) == RESULT_OK;
}

static bool cannotEdit(const Services* services) {
    return !canEdit(services);
}

static bool isEdited(const Services* services) {
    return hasCommitted(undoStack(services));
}

// The host's main loop, until the condition holds.
static void runUntil(Services* services, bool (*condition)(const Services* services)) {
    const int64_t end = clockMs() + DEADLINE_MS;
    while (!condition(services)) {
        CHECK(clockMs() < end);
        idle(services);
        sleepMs(5);
    }
}

static Program* startPeer(const char* peer, const char* editor) {
    char command[UTF8_BYTES + 32];
    CHECK(snprintf(command, sizeof command, "\"%s\" {in} {out}", editor) < UTF8_BYTES);
    const char* const arguments[] = {peer, "--once", "--editor", command, NULL};
    return startProgram(arguments);
}

// What can't be edited is refused with a message, and the command counts as handled.
static void checkRestriction(Services* services) {
    const char kBegin[] = "The selected audio event contains processing information";
    setRestricted(services, true);
    CHECK(handlerCheckOrExecute(commandHandler(services), kCategory, kCommand, false) == RESULT_OK);
    CHECK(strncmp(lastAlert(services), kBegin, sizeof kBegin - 1) == 0);
    setRestricted(services, false);
}

// The user chooses the command; the peer gets the stretch, edits it, and what it made replaces the event.
static void edit(Services* services, Project* project, const char* originalPath, const Frame* original) {
    Frame expected[FRAMES + ADDED_FRAMES];
    memcpy(expected, original, FIRST_FRAME * sizeof *original);
    editFrames(original + FIRST_FRAME, PLAYED_FRAMES, expected + FIRST_FRAME);
    memcpy(expected + FIRST_FRAME + PLAYED_FRAMES + ADDED_FRAMES, original + FIRST_FRAME + PLAYED_FRAMES,
           (FRAMES - FIRST_FRAME - PLAYED_FRAMES) * sizeof *original);

    Event* oldEvent = standingEvent(project);
    CHECK(handlerCheckOrExecute(commandHandler(services), kCategory, kCommand, false) == RESULT_OK);
    runUntil(services, isEdited);
    CHECK(strcmp(nameToUndo(undoStack(services)), kCommand) == 0);

    Event* newEvent = standingEvent(project);
    CHECK(newEvent != NULL && newEvent != oldEvent && partsInPool(project) == 1);
    CHECK(newEvent->position == oldEvent->position && newEvent->firstFrame == FIRST_FRAME);
    CHECK(newEvent->frames == PLAYED_FRAMES + ADDED_FRAMES);
    checkSound(newEvent->part->clip->file->path, expected, FRAMES + ADDED_FRAMES);

    undoLast(undoStack(services));
    CHECK(standingEvent(project) == oldEvent && oldEvent->frames == PLAYED_FRAMES);
    redoLast(undoStack(services));
    CHECK(standingEvent(project) == newEvent);
    idle(services);

    Char16 path[PATH_UNITS];
    toText16(originalPath, path);
    checkSound(path, original, FRAMES);
}

// A folder, or a file in one, by its UTF-8 path.
static const char* joined(char* buffer, const char* folder, const char* name) {
    CHECK(snprintf(buffer, UTF8_BYTES, "%s%s%s", folder, kSeparator, name) < UTF8_BYTES);
    return buffer;
}

static void makeFolderAt(const char* utf8Path) {
    Char16 path[PATH_UNITS];
    toText16(utf8Path, path);
    CHECK(makeFolder(path));
}

static Project* prepareProject(const char* folder, char* sound, Frame* original) {
    char projectFolder[UTF8_BYTES];
    char audioFolder[UTF8_BYTES];
    makeFolderAt(joined(projectFolder, folder, "Lied"));
    makeFolderAt(joined(audioFolder, projectFolder, "Audio"));
    fillFrames(original, FRAMES);
    // Characters of one, two, three and four bytes.
    writeSound(joined(sound, folder, "Take \xC3\xB6 \xE2\x82\xAC \xF0\x9F\x8E\xB5.wav"), original, FRAMES);
    Project* project = makeProject(projectFolder);
    addFirstEvent(project, sound, FIRST_FRAME, PLAYED_FRAMES);
    return project;
}

static void run(const char* modulePath, const char* peerPath, const char* editorPath, const char* folder,
                bool walkOut) {
    static Frame original[FRAMES];
    char sound[UTF8_BYTES];
    Project* project = prepareProject(folder, sound, original);
    Services* services = makeServices(project);
    void* library = loadLibrary(modulePath);
    Interface* factory = loadFactory(library);
    checkFactory(factory);
    Interface* plugin = createPlugin(factory, services);
    checkRefusal(plugin, services);

    setHostName(services, "Harrow Max", "9.0.20");
    CHECK(pluginInitialize(plugin, contextInterface(services)) == RESULT_OK);
    CHECK(commandHandler(services) != NULL && hasCommand(services, kCategory, kCommand));
    CHECK(!canEdit(services));
    Program* peer = startPeer(peerPath, editorPath);
    runUntil(services, canEdit);
    if (walkOut) {
        endProgram(peer, 0);
        return;
    }
    checkRestriction(services);
    edit(services, project, sound, original);
    // The peer leaves after one edit, and the module hears of it.
    runUntil(services, cannotEdit);
    CHECK(endProgram(peer, DEADLINE_MS) == 0);

    CHECK(pluginTerminate(plugin) == RESULT_OK);
    CHECK(isLeftAlone(services));
    releaseRef(plugin);
    CHECK(releaseRef(factory) == 0);
    checkStaysLoaded(library);
    // The services of the context are the module's to the end of the process; everything else has come back.
    const Object* context = objectOf(contextInterface(services));
    freeServices(services);
    dropObject(projectObject(project));
    CHECK(countObjectsBut(context) == 0);
}

int main(int argc, char** argv) {
    if (argc != 5 && (argc != 6 || strcmp(argv[5], "--walk-out") != 0)) {
        fprintf(stderr, "usage: plain_host MODULE PEER EDITOR FOLDER [--walk-out]\n");
        return 2;
    }
    char** arguments = utf8Arguments(argc, argv);
    const char* const folder = absolutePath(arguments[4]);
    makeFolderAt(folder);
    useFolder(folder);
    run(absolutePath(arguments[1]), absolutePath(arguments[2]), absolutePath(arguments[3]), folder, argc == 6);
    puts(argc == 6 ? "walking out" : "the edit came back, frame by frame");
    return 0;
}
