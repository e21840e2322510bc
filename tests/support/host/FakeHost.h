// FakeHost: a host with one project of one track, whose services are small doubles. What happened stands in the
// script; the files are in memory, or in the store that it is given. It is the module's host from construction to
// destruction.
#pragma once

#include "support/host/FakeSelection.h"
#include "support/host/FakeServices.h"
#include "support/host/FakeUndo.h"
#include "support/host/MemoryStore.h"
#include "workflow/HostServices.h"

namespace tessera::test {

struct FakeHost {
    explicit FakeHost(AudioStore* given = nullptr, const std::u16string& projectFolder = u"/projects/song")
        : audio(given == nullptr ? store : *given), project(makeFake<FakeProject>(audio, script, projectFolder)) {
        track->setParent(owner.get());
        owner->setParent(project->object());
        offerAll();
        keepForGood(services);
        projects->active = project.get();
        previous_ = hostServices();
        setHostServices(services.get());
    }
    ~FakeHost() { setHostServices(previous_); }
    FakeHost(const FakeHost&) = delete;
    FakeHost& operator=(const FakeHost&) = delete;

    // A module keeps its reference to a host's services for good, as those of a host last as long as its process does.
    static void keepForGood(const FRefPtr<FakeServices>& services) {
        static auto& kept = *new std::vector<FRefPtr<FakeServices>>;
        kept.push_back(services);
    }

    // An event on the track that plays the file.
    FRefPtr<FakeEvent> addEvent(const std::u16string& path, FakeEvent::Stretch stretch) {
        auto clip = makeFake<FakeClip>(audio, script, path);
        auto part = makeFake<FakePart>(script, FRefPtr<IAudioClip>(clip.get()));
        auto event = makeFake<FakeEvent>(script, part, stretch);
        track->add(event.get());
        return event;
    }

    HostScript script;
    MemoryStore store{script};
    AudioStore& audio;
    FRefPtr<FakeServices> services = makeFake<FakeServices>(script);
    FRefPtr<FakeProjectList> projects = makeFake<FakeProjectList>();
    FRefPtr<FakeObjectRegistry> registry = makeFake<FakeObjectRegistry>();
    FRefPtr<FakeObjectTest> objectTest = makeFake<FakeObjectTest>();
    FRefPtr<FakeTransport> transport = makeFake<FakeTransport>();
    FRefPtr<FakeExportHost> exports = makeFake<FakeExportHost>();
    FRefPtr<FakeAlertHost> alerts = makeFake<FakeAlertHost>();
    FRefPtr<FakeCommandTable> commandTable = makeFake<FakeCommandTable>();
    FRefPtr<FakeCommandTarget> commandTarget = makeFake<FakeCommandTarget>(script);
    FRefPtr<FakeDriverArbiter> drivers = makeFake<FakeDriverArbiter>();
    FRefPtr<FakeIdleHost> idleHost = makeFake<FakeIdleHost>();
    FRefPtr<FakeSelection> selection = makeFake<FakeSelection>(script);
    FRefPtr<FakeUndo> undo = makeFake<FakeUndo>(script);
    FRefPtr<FakeProject> project;
    FRefPtr<FakeEventOwner> owner = makeFake<FakeEventOwner>();
    FRefPtr<FakeTrack> track = makeFake<FakeTrack>();

private:
    void offerAll() {
        services->offer<ISelection>("ISelection", selection);
        services->offer<IProjectList>("IProjectList", projects);
        services->offer<IObjectRegistry>("IObjectRegistry", registry);
        services->offer<IObjectTest>("IObjectTest", objectTest);
        services->offer<ITransport>("ITransport", transport);
        services->offer<IExportHost>("IExportHost", exports);
        services->offer<IAlertHost>("IAlertHost", alerts);
        services->offer<ICommandTable>("ICommandTable", commandTable);
        services->offer<ICommandTarget>("ICommandTarget", commandTarget);
        services->offer<IDriverArbiter>("IDriverArbiter", drivers);
        services->offer<IIdleHost>("IIdleHost", idleHost);
        services->offer<IUndoStack>("IUndoStack", undo);
        services->offer<IUrlFactory>("IUrlFactory",
                                     [this] { return FRefPtr<IUrlFactory>(makeFake<FakeFile>(audio, script).get()); });
        services->offer<IAudioClipAccess>("IAudioClipAccess", [this] {
            return FRefPtr<IAudioClipAccess>(makeFake<FakeClipAccess>(audio, script).get());
        });
        services->offer<IAudioClipFactory>(
            "IAudioClipFactory", [this] { return FRefPtr<IAudioClipFactory>(makeFake<FakePart>(script).get()); });
        services->offer<IAudioWriterFactory>("IAudioWriterFactory", [this] {
            return FRefPtr<IAudioWriterFactory>(makeFake<FakeWriterFactory>(audio, script).get());
        });
    }

    IHostServices* previous_;
};

} // namespace tessera::test
