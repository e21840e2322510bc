// FakeHost: a host with one project of one track, whose services are small doubles. What happened stands in the
// script; the files are in memory, or in the store that it is given. It is the module's host from construction to
// destruction. What makes the doubles stands in a source of its own: it takes a compiler longer than most tests do.
#pragma once

#include "support/host/FakeSelection.h"
#include "support/host/FakeServices.h"
#include "support/host/FakeUndo.h"
#include "support/host/MemoryStore.h"
#include "workflow/HostServices.h"

namespace tessera::test {

struct FakeHost {
    explicit FakeHost(AudioStore* given = nullptr, const std::u16string& projectFolder = u"/projects/song");
    ~FakeHost();
    FakeHost(const FakeHost&) = delete;
    FakeHost& operator=(const FakeHost&) = delete;

    // A module keeps its reference to a host's services for good, as those of a host last as long as its process does.
    static void keepForGood(const FRefPtr<FakeServices>& services);

    // An event on the track that plays the file.
    FRefPtr<FakeEvent> addEvent(const std::u16string& path, FakeEvent::Stretch stretch);

    HostScript script;
    MemoryStore store{script};
    AudioStore& audio;
    FRefPtr<FakeServices> services;
    FRefPtr<FakeProjectList> projects;
    FRefPtr<FakeObjectRegistry> registry;
    FRefPtr<FakeObjectTest> objectTest;
    FRefPtr<FakeTransport> transport;
    FRefPtr<FakeExportHost> exports;
    FRefPtr<FakeAlertHost> alerts;
    FRefPtr<FakeCommandTable> commandTable;
    FRefPtr<FakeCommandTarget> commandTarget;
    FRefPtr<FakeDriverArbiter> drivers;
    FRefPtr<FakeIdleHost> idleHost;
    FRefPtr<FakeSelection> selection;
    FRefPtr<FakeUndo> undo;
    FRefPtr<FakeProject> project;
    FRefPtr<FakeEventOwner> owner;
    FRefPtr<FakeTrack> track;

private:
    void offerAll();

    IHostServices* previous_;
};

} // namespace tessera::test
