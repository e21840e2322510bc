#include "Services.h"

#include <stdlib.h>
#include <string.h>

#define MOST_CLIENTS 8
// The word that comes with a selected event, and that its operations get back.
#define SCOPE 0x5C09Eu

struct Services {
    Object* context;
    Object* commandTable;
    Object* commandTarget;
    Object* alertHost;
    Object* idleHost;
    Object* selection;
    Object* projectList;
    Object* registry;
    Object* objectTest;
    UndoStack* undo;

    Project* project;
    const char* name;
    const char* version;
    char category[64];
    char command[64];
    void* commandOwner;
    bool isEnabled;
    Interface* handler;
    Interface* clients[MOST_CLIENTS];
    int clientCount;
    int32_t selectedKind;
    bool isRestricted;
    char alert[UTF8_BYTES];
    Interface* listListener;
    Interface* observed;
    Interface* observer;
    Event* eventAtLastTurn; // compared, never looked into
};

// There is one host in this program.
static Services host;

static void destroyPlain(Object* object) {
    free(object);
}

// ICommandTable.

static Result addCommand(Face* self, void* owner, const char* group, const Char16* name16, int64_t unused,
                         const char* category, const char* name) {
    (void)self;
    CHECK(unused == 0 && group != NULL && name16 != NULL);
    CHECK(strlen(category) < sizeof host.category && strlen(name) < sizeof host.command);
    memcpy(host.category, category, strlen(category) + 1);
    memcpy(host.command, name, strlen(name) + 1);
    host.commandOwner = owner;
    return RESULT_OK;
}

static Result removeCommands(Face* self, void* owner) {
    (void)self;
    if (host.command[0] == 0 || owner != host.commandOwner) {
        return RESULT_NO;
    }
    host.command[0] = 0;
    host.isEnabled = false;
    return RESULT_OK;
}

static const Slot kCommandTableTable[] = {
    BASE_SLOTS,
    [3] = (Slot)addCommand,
    [4] = (Slot)removeCommands,
};
static const ObjectKind kCommandTableKind = {"command table", destroyPlain, {{&kCommandTable, kCommandTableTable}}};

// ICommandTarget.

static Result enableCommand(Face* self, const char* category, const char* name) {
    (void)self;
    host.isEnabled = strcmp(category, host.category) == 0 && strcmp(name, host.command) == 0;
    return host.isEnabled ? RESULT_OK : RESULT_NO;
}

static Result addHandler(Face* self, Interface* handler) {
    (void)self;
    CHECK(host.handler == NULL);
    addRef(handler);
    host.handler = handler;
    return RESULT_OK;
}

static Result removeHandler(Face* self, Interface* handler) {
    (void)self;
    if (host.handler != handler) {
        return RESULT_NO;
    }
    host.handler = NULL;
    releaseRef(handler);
    return RESULT_OK;
}

static const Slot kCommandTargetTable[] = {
    BASE_SLOTS,
    [3] = (Slot)enableCommand,
    [5] = (Slot)addHandler,
    [6] = (Slot)removeHandler,
};
static const ObjectKind kCommandTargetKind = {"command target", destroyPlain, {{&kCommandTarget, kCommandTargetTable}}};

// IAlertHost. A user would read the message and press the button, which is the first one.

static int32_t showAlert(Face* self, const Char16* message, const Char16* button, int64_t unused1, int64_t unused2) {
    (void)self;
    CHECK(unused1 == 0 && unused2 == 0);
    CHECK(button[0] == 'O' && button[1] == 'K' && button[2] == 0);
    toUtf8(message, host.alert);
    return 0;
}

static const Slot kAlertTable[] = {
    BASE_SLOTS,
    [3] = (Slot)showAlert,
};
static const ObjectKind kAlertKind = {"alert host", destroyPlain, {{&kAlertHost, kAlertTable}}};

// IIdleHost. It holds no references: a client that goes away removes itself first.

static Result addClient(Face* self, Interface* client) {
    (void)self;
    CHECK(host.clientCount < MOST_CLIENTS);
    host.clients[host.clientCount++] = client;
    return RESULT_OK;
}

static Result removeClient(Face* self, Interface* client) {
    (void)self;
    for (int i = 0; i < host.clientCount; ++i) {
        if (host.clients[i] == client) {
            memmove(&host.clients[i], &host.clients[i + 1], (size_t)(host.clientCount - i - 1) * sizeof client);
            --host.clientCount;
            return RESULT_OK;
        }
    }
    return RESULT_NO;
}

static const Slot kIdleTable[] = {
    BASE_SLOTS,
    [4] = (Slot)addClient,
    [5] = (Slot)removeClient,
};
static const ObjectKind kIdleKind = {"idle host", destroyPlain, {{&kIdleHost, kIdleTable}}};

// ISelection and IEventRestrictions: the user has selected the event, and no range.

static uint64_t currentScope(Face* self) {
    (void)self;
    return SCOPE;
}

static Result selectKind(Face* self, uint64_t scope, int32_t kind) {
    (void)self;
    const int32_t events = 1;
    const int32_t ranges = 9;
    host.selectedKind = kind;
    return scope == SCOPE && (kind == events || kind == ranges) ? RESULT_OK : RESULT_NO;
}

static int32_t selectedCount(Face* self) {
    (void)self;
    return host.selectedKind == 1 && standingEvent(host.project) != NULL ? 1 : 0;
}

static Result selectedItem(Face* self, int32_t index, void** object, uint64_t* scope) {
    *object = NULL;
    if (index < 0 || index >= selectedCount(self)) {
        return RESULT_BAD_ARGUMENT;
    }
    Event* event = standingEvent(host.project);
    keepObject(&event->object);
    *object = eventInterface(event);
    *scope = SCOPE;
    return RESULT_OK;
}

static uint8_t isRestricted(Face* self, Interface* event) {
    (void)self;
    CHECK(event == eventInterface(standingEvent(host.project)));
    return host.isRestricted ? 1 : 0;
}

static const Slot kSelectionTable[] = {
    BASE_SLOTS, [3] = (Slot)currentScope, [5] = (Slot)selectKind, [6] = (Slot)selectedCount, [7] = (Slot)selectedItem,
};
static const Slot kRestrictionsTable[] = {
    BASE_SLOTS, [3] = (Slot)isRestricted, [4] = (Slot)isRestricted, [5] = (Slot)isRestricted, [8] = (Slot)isRestricted,
};
static const ObjectKind kSelectionKind = {
    "selection", destroyPlain, {{&kSelection, kSelectionTable}, {&kEventRestrictions, kRestrictionsTable}}};

// IProjectList. Who joins is told of the active project at once.

static Result addListListener(Face* self, Interface* listener) {
    (void)self;
    CHECK(host.listListener == NULL);
    host.listListener = listener;
    listListenerActivated(listener, projectInterface(host.project));
    return RESULT_OK;
}

static Result removeListListener(Face* self, Interface* listener) {
    (void)self;
    if (host.listListener != listener) {
        return RESULT_NO;
    }
    host.listListener = NULL;
    return RESULT_OK;
}

static const Slot kProjectListTable[] = {
    BASE_SLOTS,
    [6] = (Slot)addListListener,
    [7] = (Slot)removeListListener,
};
static const ObjectKind kProjectListKind = {"project list", destroyPlain, {{&kProjectList, kProjectListTable}}};

// IObjectRegistry: who is to be told of changes of the project.

static Result addObserver(Face* self, Interface* object, Interface* observer) {
    (void)self;
    CHECK(host.observer == NULL && object == projectObjectInterface(host.project));
    host.observed = object;
    host.observer = observer;
    return RESULT_OK;
}

static Result removeObserver(Face* self, Interface* object, Interface* observer) {
    (void)self;
    if (host.observer != observer || host.observed != object) {
        return RESULT_NO;
    }
    host.observer = NULL;
    return RESULT_OK;
}

static const Slot kRegistryTable[] = {
    BASE_SLOTS,
    [3] = (Slot)addObserver,
    [4] = (Slot)removeObserver,
};
static const ObjectKind kRegistryKind = {"object registry", destroyPlain, {{&kObjectRegistry, kRegistryTable}}};

// IObjectTest. Objects of the module come here as well, so the objects are asked who they are: an object has one answer
// to kBaseUnknown, whichever of its tables is asked.

static void* identityOf(Interface* any) {
    void* identity = NULL;
    if (any != NULL && queryInterface(any, &kBaseUnknown, &identity) == RESULT_OK) {
        releaseRef(identity);
    }
    return identity;
}

static Result compareObjects(Face* self, Interface* a, Interface* b) {
    (void)self;
    return identityOf(a) == identityOf(b) ? RESULT_OK : RESULT_NO;
}

static const Slot kObjectTestTable[] = {
    BASE_SLOTS,
    [3] = (Slot)compareObjects,
};
static const ObjectKind kObjectTestKind = {"object test", destroyPlain, {{&kObjectTest, kObjectTestTable}}};

// The context.

static Object* newServiceObject(const Uid* id) {
    if (sameUid(id, &kUrlFactory)) {
        return &makeHostFile()->object;
    }
    if (sameUid(id, &kClipAccess)) {
        return &makeClip()->object;
    }
    if (sameUid(id, &kClipFactory)) {
        return &makePart()->object;
    }
    return sameUid(id, &kWriterFactory) ? makeWriterFactory() : NULL;
}

static Result queryService(Face* self, const Uid* id, void** out) {
    (void)self;
    // Of these each caller gets a new one.
    Object* made = newServiceObject(id);
    if (made != NULL) {
        *out = faceOf(made, 0);
        return RESULT_OK;
    }
    Object* const shared[] = {host.alertHost, host.commandTable, host.commandTarget,
                              host.idleHost,  host.selection,    host.projectList,
                              host.registry,  host.objectTest,   undoObject(host.undo)};
    for (size_t i = 0; i < sizeof shared / sizeof *shared; ++i) {
        if (sameUid(id, shared[i]->kind->faces[0].id)) {
            return queryInterface(faceOf(shared[i], 0), id, out);
        }
    }
    *out = NULL;
    return RESULT_NO_INTERFACE;
}

static const char* applicationName(Face* self) {
    (void)self;
    return host.name;
}

static const char* applicationVersion(Face* self) {
    (void)self;
    return host.version;
}

static const Slot kServicesTable[] = {
    BASE_SLOTS,
    [3] = (Slot)queryService,
};
static const Slot kApplicationTable[] = {
    BASE_SLOTS,
    [3] = (Slot)applicationName,
    [4] = (Slot)applicationVersion,
};
static const ObjectKind kContextKind = {
    "context", destroyPlain, {{&kHostServices, kServicesTable}, {&kApplicationInfo, kApplicationTable}}};

Services* makeServices(Project* project) {
    host.context = makeObject(sizeof(Object), &kContextKind);
    host.commandTable = makeObject(sizeof(Object), &kCommandTableKind);
    host.commandTarget = makeObject(sizeof(Object), &kCommandTargetKind);
    host.alertHost = makeObject(sizeof(Object), &kAlertKind);
    host.idleHost = makeObject(sizeof(Object), &kIdleKind);
    host.selection = makeObject(sizeof(Object), &kSelectionKind);
    host.projectList = makeObject(sizeof(Object), &kProjectListKind);
    host.registry = makeObject(sizeof(Object), &kRegistryKind);
    host.objectTest = makeObject(sizeof(Object), &kObjectTestKind);
    host.undo = makeUndoStack(project);
    host.project = project;
    host.eventAtLastTurn = standingEvent(project);
    return &host;
}

void freeServices(Services* services) {
    dropObject(services->context);
    dropObject(services->commandTable);
    dropObject(services->commandTarget);
    dropObject(services->alertHost);
    dropObject(services->idleHost);
    dropObject(services->selection);
    dropObject(services->projectList);
    dropObject(services->registry);
    dropObject(services->objectTest);
    dropObject(undoObject(services->undo));
}

Interface* contextInterface(Services* services) {
    return faceOf(services->context, 0);
}

void setHostName(Services* services, const char* name, const char* version) {
    services->name = name;
    services->version = version;
}

Interface* commandHandler(const Services* services) {
    return services->handler;
}

bool hasCommand(const Services* services, const char* category, const char* name) {
    return services->isEnabled && strcmp(services->category, category) == 0 && strcmp(services->command, name) == 0;
}

void setRestricted(Services* services, bool isRestricted) {
    services->isRestricted = isRestricted;
}

const char* lastAlert(const Services* services) {
    return services->alert;
}

bool isLeftAlone(const Services* services) {
    return services->handler == NULL && services->command[0] == 0 && services->clientCount == 0 &&
           services->listListener == NULL && services->observer == NULL;
}

UndoStack* undoStack(const Services* services) {
    return services->undo;
}

static bool isClient(const Services* services, const Interface* client) {
    for (int i = 0; i < services->clientCount; ++i) {
        if (services->clients[i] == client) {
            return true;
        }
    }
    return false;
}

void idle(Services* services) {
    // A client may add and remove clients while it is called.
    Interface* clients[MOST_CLIENTS];
    const int count = services->clientCount;
    memcpy(clients, services->clients, sizeof clients);
    for (int i = 0; i < count; ++i) {
        if (isClient(services, clients[i])) {
            idleClientOnIdle(clients[i]);
        }
    }
    if (services->observer != NULL && standingEvent(services->project) != services->eventAtLastTurn) {
        services->eventAtLastTurn = standingEvent(services->project);
        const int32_t hasChanged = 1;
        observerUpdate(services->observer, services->observed, hasChanged);
    }
}
