// What a guest does wrong is a line with a name, never a crash.
#include "host/HostFixture.h"

#include "host/GuestDoubles.h"
#include "shell/hostapi/IAudioClipFactory.h"
#include "shell/hostapi/IUrlFactory.h"

#include <thread>

namespace tessera::host {
namespace {

class GuestWatchTest : public HostFixture {};

TEST_F(GuestWatchTest, ACallFromAnotherThreadIsReportedAndRefused) {
    makeProject({makeSound("a.wav", 10)});
    const FRefPtr<ISelection> selection = service<ISelection>();
    std::uint64_t scope = 1;
    std::thread([&] { scope = selection->currentScope(); }).join();
    EXPECT_EQ(scope, 0U);
    EXPECT_EQ(misuses(), std::vector<std::string>{
                             "Selection.currentScope was called from another thread than the host's main thread"});
    EXPECT_NE(output().find("misuse by the module: Selection.currentScope"), std::string::npos);
}

TEST_F(GuestWatchTest, ReferencesMayBeCountedOnAnyThread) {
    const FRefPtr<ISelection> selection = service<ISelection>();
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < 1000; ++round) {
                selection->addRef();
                selection->release();
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(host().selection().guestReferences(), 1);
    EXPECT_TRUE(misuses().empty());
}

TEST_F(GuestWatchTest, AfterTerminateOnlyTakingBackIsAllowed) {
    const FRefPtr<IIdleHost> idle = service<IIdleHost>();
    RecordingIdleClient client;
    idle->addClient(&client);
    host().core()->watch->setLife(GuestLife::terminated);
    EXPECT_EQ(idle->removeClient(&client), kResultOk);
    EXPECT_TRUE(misuses().empty());
    EXPECT_EQ(idle->addClient(&client), kInvalidArgument);
    EXPECT_EQ(misuses(), std::vector<std::string>{"IdleHost.addClient was called after terminate"});
}

TEST_F(GuestWatchTest, AReferenceGivenBackTwiceIsReported) {
    FRefPtr<IUrlFactory> file = service<IUrlFactory>();
    IUrlFactory* const bare = file.get();
    file.reset();
    EXPECT_EQ(bare->release(), 0U);
    EXPECT_EQ(misuses(),
              std::vector<std::string>{"HostFile.release: a reference was given back that nobody had taken"});
}

// The object stays until the host's next quiet moment.
TEST_F(GuestWatchTest, AnObjectThatWasJustLetGoOfIsStillNoFreedMemory) {
    FRefPtr<IUrlFactory> file = service<IUrlFactory>();
    IUrlFactory* const bare = file.get();
    file.reset();
    EXPECT_EQ(bare->setPath(u"/a", 0), kResultOk);
    host().turn();
}

TEST_F(GuestWatchTest, AReservedSlotIsReportedByItsNumber) {
    service<ITransport>()->reserved10();
    EXPECT_EQ(misuses(), std::vector<std::string>{"Transport: the reserved slot 10 of ITransport was called"});
}

TEST_F(GuestWatchTest, ReferencesThatAreStillHeldAreToldByName) {
    FRefPtr<IUrlFactory> file = service<IUrlFactory>();
    const FRefPtr<IUrlFactory> again = file;
    const FRefPtr<ISelection> selection = service<ISelection>();
    const FRefPtr<IProjectList> allowed = service<IProjectList>();
    const auto held = host().core()->watch->held();
    ASSERT_EQ(held.size(), 2U);
    EXPECT_EQ(held[0].className, "HostFile");
    EXPECT_EQ(held[0].references, 2);
    EXPECT_EQ(held[1].className, "Selection");
    EXPECT_EQ(held[1].references, 1);
}

TEST_F(GuestWatchTest, ObjectsOutliveTheHostForAsLongAsTheyAreHeld) {
    auto other = makeApplication();
    FRefPtr<IUrlFactory> file;
    ASSERT_EQ(other->context().queryService(IUrlFactory::iid, file.receive()), kResultOk);
    other.reset();
    EXPECT_EQ(file->setPath(u"/a", 0), kResultOk);
}

TEST_F(GuestWatchTest, AnUnknownServiceAndANullPointerAreAnswered) {
    void* out = this;
    EXPECT_EQ(host().context().queryService("{01234567-89AB-CDEF-0123-456789ABCDEF}"_uid, &out), kNoInterface);
    EXPECT_EQ(out, nullptr);
    EXPECT_TRUE(misuses().empty());
    EXPECT_EQ(host().context().queryService(ISelection::iid, nullptr), kInvalidArgument);
    EXPECT_EQ(host().selection().queryInterface(ISelection::iid, nullptr), kInvalidArgument);
    EXPECT_EQ(misuses().size(), 2U);
}

TEST_F(GuestWatchTest, ForeignObjectsAreNeverTakenForOurs) {
    makeProject({makeSound("a.wav", 10)});
    RecordingObserver foreign;
    IBaseUnknown* const stranger = &foreign;
    EXPECT_EQ(ownObject<Event>(stranger), nullptr);
    EXPECT_EQ(ownObject<Event>(nullptr), nullptr);
    EXPECT_EQ(ownObject<Track>(static_cast<IProjectObject*>(event(1).get())), nullptr);
    EXPECT_EQ(ownObject<Event>(static_cast<IAudioEvent*>(event(1).get())), event(1).get());
    EXPECT_EQ(event(1)->guestReferences(), 0);
}

} // namespace
} // namespace tessera::host
