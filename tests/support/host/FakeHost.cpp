#include "support/host/FakeHost.h"

namespace tessera::test {

FakeHost::FakeHost(AudioStore* given, const std::u16string& projectFolder)
    : audio(given == nullptr ? store : *given),
      services(makeFake<FakeServices>(script)),
      projects(makeFake<FakeProjectList>()),
      registry(makeFake<FakeObjectRegistry>()),
      objectTest(makeFake<FakeObjectTest>()),
      transport(makeFake<FakeTransport>()),
      exports(makeFake<FakeExportHost>()),
      alerts(makeFake<FakeAlertHost>()),
      commandTable(makeFake<FakeCommandTable>()),
      commandTarget(makeFake<FakeCommandTarget>(script)),
      drivers(makeFake<FakeDriverArbiter>()),
      idleHost(makeFake<FakeIdleHost>()),
      selection(makeFake<FakeSelection>(script)),
      undo(makeFake<FakeUndo>(script)),
      project(makeFake<FakeProject>(audio, script, projectFolder)),
      owner(makeFake<FakeEventOwner>()),
      track(makeFake<FakeTrack>()) {
    track->setParent(owner.get());
    owner->setParent(project->object());
    offerAll();
    keepForGood(services);
    projects->active = project.get();
    previous_ = hostServices();
    setHostServices(services.get());
}

FakeHost::~FakeHost() {
    setHostServices(previous_);
}

void FakeHost::keepForGood(const FRefPtr<FakeServices>& services) {
    static auto& kept = *new std::vector<FRefPtr<FakeServices>>;
    kept.push_back(services);
}

FRefPtr<FakeEvent> FakeHost::addEvent(const std::u16string& path, FakeEvent::Stretch stretch) {
    auto clip = makeFake<FakeClip>(audio, script, path);
    auto part = makeFake<FakePart>(script, FRefPtr<IAudioClip>(clip.get()));
    auto event = makeFake<FakeEvent>(script, part, stretch);
    track->add(event.get());
    return event;
}

void FakeHost::offerAll() {
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
    services->offer<IAudioClipFactory>("IAudioClipFactory",
                                       [this] { return FRefPtr<IAudioClipFactory>(makeFake<FakePart>(script).get()); });
    services->offer<IAudioWriterFactory>("IAudioWriterFactory", [this] {
        return FRefPtr<IAudioWriterFactory>(makeFake<FakeWriterFactory>(audio, script).get());
    });
}

} // namespace tessera::test
