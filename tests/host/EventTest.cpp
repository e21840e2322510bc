#include "host/HostFixture.h"

#include "foundation/object/FRefPtr.h"
#include "host/model/AudioPart.h"
#include "shell/hostapi/IEventOwner.h"
#include "shell/hostapi/IEventTrack.h"

namespace tessera::host {
namespace {

class EventTest : public HostFixture {
protected:
    static constexpr std::uint64_t kWhole = ScopeTable::kWholeEvent;
};

TEST_F(EventTest, TellsWhereItStandsAndWhatItPlays) {
    makeProject({makeSound("a.wav", 10000)});
    ASSERT_EQ(host().trimEvent(1, 2, 3), "");
    ASSERT_EQ(host().moveEvent(1, 7.5), "");
    EXPECT_NEAR(event(1)->timelineStart(kWhole), 7.5, 1e-5);
    EXPECT_NEAR(event(1)->timelineEnd(kWhole), 10.5, 1e-5);
    EXPECT_NEAR(event(1)->clipOffset(kWhole), 2, 1e-5);
}

// Whoever asks turns seconds into frames by cutting off.
TEST_F(EventTest, TimesComeOutAsTheirFrames) {
    for (const int rate : {8000, 22050, 44100, 48000, 88200, 96000, 192000}) {
        makeProject({makeSound("a.wav", 32000, 1, rate)});
        for (int frame = 1; frame < 32000; frame += 37) {
            const double start = 1000.1;
            event(1)->setPlace({start, static_cast<double>(32000 - frame) / rate, static_cast<double>(frame) / rate});
            const double offset = event(1)->clipOffset(kWhole);
            const double end = (event(1)->timelineEnd(kWhole) - event(1)->timelineStart(kWhole)) + offset;
            ASSERT_EQ(static_cast<std::int64_t>(rate * offset), frame) << rate;
            ASSERT_EQ(static_cast<std::int64_t>(rate * (end - offset)), 32000 - frame) << rate;
        }
        ASSERT_EQ(host().closeProject(), "");
    }
}

TEST_F(EventTest, ARangeIsTheStretchOfTheEventInIt) {
    makeProject({makeSound("a.wav", 10000)});
    ASSERT_EQ(host().trimEvent(1, 2, 6), "");
    ASSERT_EQ(host().moveEvent(1, 10), "");
    const std::uint64_t inside = host().core()->scopes.add({11, 12.5});
    EXPECT_NEAR(event(1)->timelineStart(inside), 11, 1e-5);
    EXPECT_NEAR(event(1)->timelineEnd(inside), 12.5, 1e-5);
    EXPECT_NEAR(event(1)->clipOffset(inside), 3, 1e-5);
    const std::uint64_t beyond = host().core()->scopes.add({15, 99});
    EXPECT_NEAR(event(1)->timelineEnd(beyond), 16, 1e-5);
    EXPECT_NEAR(event(1)->clipOffset(beyond), 7, 1e-5);
}

TEST_F(EventTest, AScopeThatNobodyGaveIsReported) {
    makeProject({makeSound("a.wav", 1000)});
    EXPECT_NEAR(event(1)->timelineEnd(4711), 1, 1e-5);
    ASSERT_EQ(misuses().size(), 1U);
    EXPECT_NE(misuses().front().find("timelineEnd"), std::string::npos);
}

// A guest that knows an event only from the selection finds its place on the timeline by this.
TEST_F(EventTest, AsAMediaItemItIsKnownByItsNumber) {
    makeProject({makeSound("a.wav", 1000), makeSound("b.wav", 2000)});
    for (int number = 1; number <= 2; ++number) {
        const auto item = queryFor<IMediaAttributes>(event(number)->unknown());
        ASSERT_TRUE(item);
        EXPECT_EQ(item->itemId(), static_cast<std::uint32_t>(number));
    }
    double start = -1;
    double end = -1;
    host().project()->root()->itemRange(event(2)->itemId(), &start, &end);
    EXPECT_EQ(start, 1);
    EXPECT_EQ(end, 3);
    const std::shared_ptr<Event> removed = event(1);
    ASSERT_EQ(host().removeEvent(1), "");
    EXPECT_EQ(removed->itemId(), 0u);
}

TEST_F(EventTest, ADuplicateStandsNowhereAndBelongsToTheCaller) {
    makeProject({makeSound("a.wav", 1000)});
    const auto copy = FRefPtr<IProjectObject>::adopt(event(1)->duplicate(0));
    EXPECT_NE(copy.get(), static_cast<IProjectObject*>(event(1).get()));
    EXPECT_EQ(copy->parent(), nullptr);
    EXPECT_EQ(copy->state(), 2U);
    EXPECT_EQ(event(1)->state(), 0U);
    EXPECT_EQ(queryFor<IAudioEvent>(copy.get())->audioPart(), event(1)->audioPart());
}

TEST_F(EventTest, ItsParentsLeadToTrackAndOwner) {
    makeProject({makeSound("a.wav", 1000)});
    IProjectObject* const track = event(1)->parent();
    const FRefPtr<IEventTrack> eventTrack = queryFor<IEventTrack>(track);
    ASSERT_TRUE(eventTrack);
    const FRefPtr<IEventOwner> owner = queryFor<IEventOwner>(track->parent());
    ASSERT_TRUE(owner);
    EXPECT_FALSE(queryFor<IEventOwner>(track));
    EXPECT_EQ(owner->trackOf(eventTrack.get()), eventTrack.get());
    EXPECT_EQ(track->parent()->parent(), nullptr);
}

TEST_F(EventTest, NotesAreNoAudio) {
    makeProject({});
    ASSERT_EQ(host().addNotes({}), "");
    EXPECT_FALSE(queryFor<IAudioEvent>(static_cast<IProjectObject*>(event(1).get())));
}

struct PlaceRow {
    const char* name;
    int newFrames;
    double length;
};

// An event that plays seconds 2 to 5 of 10; its clip comes back with another length.
TEST_F(EventTest, PlaceLetsItGrowWithItsClip) {
    for (const PlaceRow& row : {PlaceRow{"as long", 10000, 3}, PlaceRow{"longer", 13000, 6},
                                PlaceRow{"shorter", 8500, 1.5}, PlaceRow{"gone", 2000, 0}}) {
        SCOPED_TRACE(row.name);
        makeProject({makeSound("a.wav", 10000)});
        ASSERT_EQ(host().trimEvent(1, 2, 3), "");
        std::string error;
        const auto clip = AudioClip::open(host().core(), makeSound("b.wav", row.newFrames), &error);
        ASSERT_NE(clip, nullptr) << error;
        const auto part = std::make_shared<AudioPart>(host().core(), clip);
        ASSERT_EQ(event(1)->setAudioPart(0, part.get(), 0), kResultOk);
        ASSERT_EQ(static_cast<IProjectObject&>(*event(1)).place(4, clip->seconds(), nullptr), kResultOk);
        EXPECT_NEAR(event(1)->place().start, 4, 1e-9);
        EXPECT_NEAR(event(1)->place().length, row.length, 1e-9);
        EXPECT_NEAR(event(1)->place().offset, 2, 1e-9);
        ASSERT_EQ(host().closeProject(), "");
    }
}

TEST_F(EventTest, PlaceNeedsATrack) {
    makeProject({makeSound("a.wav", 1000)});
    const auto copy = FRefPtr<IProjectObject>::adopt(event(1)->duplicate(0));
    EXPECT_EQ(copy->place(0, 1, nullptr), kResultFalse);
}

TEST_F(EventTest, AForeignPartIsRefused) {
    makeProject({makeSound("a.wav", 1000)});
    IAudioPart* const before = event(1)->audioPart();
    EXPECT_EQ(event(1)->setAudioPart(0, nullptr, 0), kInvalidArgument);
    const auto empty = std::make_shared<AudioPart>(host().core());
    EXPECT_EQ(event(1)->setAudioPart(0, empty.get(), 0), kInvalidArgument);
    EXPECT_EQ(event(1)->audioPart(), before);
}

} // namespace
} // namespace tessera::host
