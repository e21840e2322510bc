#include "workflow/EditSession.h"

#include "EditRoad.h"
#include "shell/hostapi/IStreamEditTarget.h"
#include "support/SlotOf.h"

#include <filesystem>

namespace tessera {
namespace {

using test::FakeEvent;
using test::FakeObject;
using test::makeFake;
using test::MemorySound;
using test::slotOf;

using Sent = std::vector<std::string>;

class EditSessionTest : public EditRoad {};

TEST_F(EditSessionTest, ItsTableKeepsItsOrder) {
    EXPECT_EQ(slotOf(&EditSession::start), 0u);
    EXPECT_EQ(slotOf(&EditSession::stop), 1u);
    EXPECT_EQ(slotOf(&EditSession::beginEdit), 2u);
    EXPECT_EQ(slotOf(&EditSession::finishEdit), 3u);
    EXPECT_EQ(slotOf(&EditSession::abandonEdit), 4u);
}

TEST_F(EditSessionTest, BeginCopiesTheStretchThatTheEventPlays) {
    IHostFile* file = session_.beginEdit();
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(widePathOf(file), exchange(u"take.wav"));
    EXPECT_EQ(host_.store.find(exchange(u"take.wav"))->bytes, slice(original(), 2000, 3000));
    EXPECT_EQ(host_.store.find(exchange(u"take.wav"))->format, kFormat);
    EXPECT_EQ(peer_.sent, Sent{"open " + pathOf(file)});
}

TEST_F(EditSessionTest, BeginMakesTheExchangeFolder) {
    session_.beginEdit();
    EXPECT_TRUE(std::filesystem::is_directory(testing_support::temporaryPath() / "Marlgrove" / "TeEx"));
}

TEST_F(EditSessionTest, BeginWithNothingSelectedOnlyAsksThePeerToOpenNothing) {
    host_.selection->clear();
    EXPECT_EQ(session_.beginEdit(), nullptr);
    EXPECT_EQ(peer_.sent, Sent{"open "});
    EXPECT_EQ(host_.store.sounds().size(), 1u);
    EXPECT_EQ(session_.finishEdit(""), kResultFalse);
}

TEST_F(EditSessionTest, ARangeTakesPrecedenceOverTheEvent) {
    event_->setScope(9, {31, 32, 4});
    host_.selection->select(9, event_.get(), 9);
    session_.beginEdit();
    EXPECT_EQ(host_.store.find(exchange(u"take.wav"))->bytes, slice(original(), 4000, 1000));
}

TEST_F(EditSessionTest, ARangeWithoutAnEventIsNotEnough) {
    host_.selection->clear();
    host_.selection->select(9, event_.get());
    EXPECT_EQ(session_.beginEdit(), nullptr);
}

TEST_F(EditSessionTest, AnEventOfNoLengthIsTheWholeClip) {
    host_.selection->clear();
    host_.selection->select(1, host_.addEvent(u"/audio/take.wav", {5, 5, 1}).get());
    session_.beginEdit();
    EXPECT_EQ(host_.store.find(exchange(u"take.wav"))->bytes, original());
}

TEST_F(EditSessionTest, TheWriterIsDescribedInTheOrderThatHostsExpect) {
    host_.script.clear();
    session_.beginEdit();
    std::vector<std::string> calls = host_.script.calls();
    std::erase_if(calls, [](const std::string& call) { return !call.starts_with("writerFactory"); });
    EXPECT_EQ(calls,
              (Sent{"writerFactory.setSampleRate(1000)", "writerFactory.setFile", "writerFactory.setBitsPerSample(24)",
                    "writerFactory.setChannels(2)", "writerFactory.create"}));
}

TEST_F(EditSessionTest, OnlyWidthsOf8And32SayTheirSampleKind) {
    const std::pair<std::int32_t, const char*> widths[] = {
        {32, "writerFactory.setSampleKind(2)"}, {8, "writerFactory.setSampleKind(0)"}, {16, nullptr}, {24, nullptr}};
    for (const auto& [bits, expected] : widths) {
        host_.store.add(u"/audio/other.wav", {1, 1000, bits}, Bytes(64));
        host_.selection->clear();
        host_.selection->select(1, host_.addEvent(u"/audio/other.wav", {0, 0, 0}).get());
        host_.script.clear();
        session_.beginEdit();
        const auto kinds = std::ranges::count_if(host_.script.calls(), [](const std::string& call) {
            return call.starts_with("writerFactory.setSampleKind");
        });
        EXPECT_EQ(kinds, expected == nullptr ? 0 : 1) << bits;
        EXPECT_EQ(expected == nullptr ? 1 : host_.script.count(expected), 1) << bits;
    }
}

TEST_F(EditSessionTest, AudioGoesInBlocksOf16384FramesWithTheLastMarked) {
    host_.store.add(u"/audio/long.wav", kFormat, bytesOf(40000, 5));
    host_.selection->clear();
    host_.selection->select(1, host_.addEvent(u"/audio/long.wav", {0, 0, 0}).get());
    host_.script.clear();
    session_.beginEdit();
    std::vector<std::string> calls = host_.script.calls();
    std::erase_if(calls, [](const std::string& call) { return !call.starts_with("writer."); });
    EXPECT_EQ(calls, (Sent{"writer.attach", "writer.seek(0)", "writer.write(16384)", "writer.write(16384)",
                           "writer.write(7232, last)"}));
    EXPECT_EQ(host_.store.find(exchange(u"long.wav"))->bytes, bytesOf(40000, 5));
}

TEST_F(EditSessionTest, ASourceThatGivesOutEarlyFailsTheCopy) {
    host_.store.find(u"/audio/take.wav")->readable = 4000;
    EXPECT_EQ(session_.beginEdit(), nullptr);
    EXPECT_EQ(peer_.sent, Sent{"open "});
    // A partly written file stays where it is.
    EXPECT_TRUE(host_.store.exists(exchange(u"take.wav")));
    // The event is watched all the same, with no file for it.
    host_.projects->deactivate();
    EXPECT_EQ(peer_.sent, (Sent{"open ", "cancel "}));
}

TEST_F(EditSessionTest, ASecondBeginCancelsTheFirstBeforeItOpens) {
    session_.beginEdit();
    session_.beginEdit();
    const std::string first = "TeEx/take.wav";
    const std::string second = "TeEx/take 2.wav";
    ASSERT_EQ(peer_.sent.size(), 3u);
    EXPECT_TRUE(peer_.sent[1].starts_with("cancel ") && peer_.sent[1].ends_with(first)) << peer_.sent[1];
    EXPECT_TRUE(peer_.sent[2].starts_with("open ") && peer_.sent[2].ends_with(second)) << peer_.sent[2];
}

TEST_F(EditSessionTest, FinishSplicesAndSwapsTheEventInOneBlock) {
    session_.beginEdit();
    const Bytes edited = bytesOf(3000, 2);
    edit(exchange(u"take.wav"), edited);
    EXPECT_EQ(session_.finishEdit("whatever the peer says"), kResultOk);

    ASSERT_EQ(host_.track->events.size(), 1u);
    EXPECT_EQ(host_.track->events[0]->original(), event_.get());
    // The original lies in the project beside it only as far as it had been there; the copy of it is in the exchange
    // folder under the second name, which the spliced file then bears.
    EXPECT_EQ(playedFile(), u"/projects/song/Audio/take 2.wav");
    EXPECT_EQ(playedBytes(), joined({slice(original(), 0, 2000), edited, slice(original(), 5000, 5000)}));
    EXPECT_EQ(host_.store.find(exchange(u"take 2.wav"))->bytes, original());
    EXPECT_EQ(host_.project->fakePool().nodes.size(), 1u);
    ASSERT_EQ(host_.undo->blocks.size(), 1u);
    EXPECT_EQ(host_.undo->blocks[0].name, "Edit in Tessera");
    EXPECT_EQ(host_.undo->blocks[0].project, host_.project.get());
    EXPECT_EQ(host_.script.count("event.place(30.000000, 10.000000)"), 1);
    EXPECT_EQ(peer_.sent.size(), 1u);
}

TEST_F(EditSessionTest, TheStepStandsInTheBlockBeforeTheChanges) {
    session_.beginEdit();
    host_.script.clear();
    session_.finishEdit("");
    std::vector<std::string> calls = host_.script.calls();
    std::erase_if(calls,
                  [](const std::string& call) { return !call.starts_with("undo.") && !call.starts_with("event."); });
    EXPECT_EQ(calls, (Sent{"undo.addStep", "undo.removeEvent", "undo.addEvent", "event.place(30.000000, 10.000000)",
                           "undo.commit"}));
}

struct Length {
    const char* name;
    std::int64_t frames;
};

class EditSessionLengths : public EditSessionTest, public testing::WithParamInterface<Length> {};

TEST_P(EditSessionLengths, HeadEditAndTailComeBackBitForBit) {
    session_.beginEdit();
    const Bytes edited = bytesOf(GetParam().frames, 3);
    edit(exchange(u"take.wav"), edited);
    EXPECT_EQ(session_.finishEdit(""), kResultOk);
    EXPECT_EQ(playedBytes(), joined({slice(original(), 0, 2000), edited, slice(original(), 5000, 5000)}));
    const double seconds = static_cast<double>(kFrames - 3000 + GetParam().frames) / 1000;
    EXPECT_EQ(host_.script.count("event.place(30.000000, " + std::to_string(seconds) + ")"), 1);
}

INSTANTIATE_TEST_SUITE_P(Rows, EditSessionLengths,
                         testing::Values(Length{"Empty", 0}, Length{"Shorter", 1}, Length{"Equal", 3000},
                                         Length{"Twice", 6000}, Length{"SeveralBlocks", 50000}),
                         [](const auto& row) { return row.param.name; });

TEST_F(EditSessionTest, ARangeThatReachesTheEndHasNoTail) {
    host_.selection->clear();
    host_.selection->select(1, host_.addEvent(u"/audio/take.wav", {0, 4, 6}).get());
    session_.beginEdit();
    edit(exchange(u"take.wav"), bytesOf(100, 2));
    host_.script.clear();
    EXPECT_EQ(session_.finishEdit(""), kResultOk);
    EXPECT_EQ(host_.script.count("reader.seek(10000)"), 1);
    EXPECT_EQ(host_.store.find(u"/projects/song/Audio/take 2.wav")->bytes,
              joined({slice(original(), 0, 6000), bytesOf(100, 2)}));
}

TEST_F(EditSessionTest, ReadersOfTheSpliceAreAttachedToItsWriter) {
    session_.beginEdit();
    host_.script.clear();
    session_.finishEdit("");
    std::vector<std::string> calls = host_.script.calls();
    std::erase_if(calls, [](const std::string& call) { return !call.ends_with(".attach"); });
    // The whole copy attaches its writer; the splice attaches its two readers.
    EXPECT_EQ(calls, (Sent{"writer.attach", "reader.attach", "reader.attach"}));
}

TEST_F(EditSessionTest, ASpliceGoesOnWhenASourceGivesOut) {
    session_.beginEdit();
    const Bytes edited = bytesOf(3000, 2);
    edit(exchange(u"take.wav"), edited);
    host_.store.find(exchange(u"take.wav"))->readable = 500;
    EXPECT_EQ(session_.finishEdit(""), kResultOk);
    EXPECT_EQ(playedBytes(),
              joined({slice(original(), 0, 2000), slice(edited, 0, 500), slice(original(), 5000, 5000)}));
}

TEST_F(EditSessionTest, FinishWithoutAWatchedEventIsRefused) {
    EXPECT_EQ(session_.finishEdit(""), kResultFalse);
    session_.beginEdit();
    session_.abandonEdit();
    EXPECT_EQ(session_.finishEdit(""), kResultFalse);
    EXPECT_TRUE(host_.undo->blocks.empty());
}

TEST_F(EditSessionTest, ASecondFinishStartsFromTheNewEvent) {
    session_.beginEdit();
    edit(exchange(u"take.wav"), bytesOf(3000, 2));
    EXPECT_EQ(session_.finishEdit(""), kResultOk);
    edit(exchange(u"take.wav"), bytesOf(3000, 4));
    EXPECT_EQ(session_.finishEdit(""), kResultOk);
    EXPECT_EQ(host_.undo->blocks.size(), 2u);
    ASSERT_EQ(host_.track->events.size(), 1u);
    EXPECT_EQ(host_.track->events[0]->original()->original(), event_.get());
    EXPECT_EQ(playedBytes(), joined({slice(original(), 0, 2000), bytesOf(3000, 4), slice(original(), 5000, 5000)}));
}

TEST_F(EditSessionTest, UndoAndRedoMoveTheSessionBetweenTheEvents) {
    session_.beginEdit();
    session_.finishEdit("");
    const FRefPtr<FakeEvent> replaced = host_.track->events.at(0);
    host_.undo->undo();
    ASSERT_EQ(host_.track->events.at(0).get(), event_.get());
    session_.finishEdit("");
    EXPECT_EQ(host_.track->events.at(0)->original(), event_.get());
    host_.undo->undo();
    host_.undo->redo();
    session_.finishEdit("");
    EXPECT_EQ(host_.track->events.at(0)->original()->original(), event_.get());
    EXPECT_NE(host_.track->events.at(0)->original(), replaced.get());
}

TEST_F(EditSessionTest, ARefusedRemovalCommitsAndSucceeds) {
    session_.beginEdit();
    host_.script.failAlways("undo.removeEvent");
    EXPECT_EQ(session_.finishEdit(""), kResultOk);
    EXPECT_EQ(host_.track->events.at(0).get(), event_.get());
    EXPECT_EQ(host_.undo->blocks.size(), 1u);
    EXPECT_EQ(host_.script.count("undo.addEvent"), 0);
}

TEST_F(EditSessionTest, ARefusedAdditionCommitsAndSucceeds) {
    session_.beginEdit();
    host_.script.failAlways("undo.addEvent");
    EXPECT_EQ(session_.finishEdit(""), kResultOk);
    EXPECT_TRUE(host_.track->events.empty());
    EXPECT_EQ(host_.undo->blocks.size(), 1u);
    host_.undo->undo();
    EXPECT_EQ(host_.track->events.at(0).get(), event_.get());
}

TEST_F(EditSessionTest, ARefusedPlaceRevokesTheCommit) {
    session_.beginEdit();
    host_.script.failAlways("event.place");
    EXPECT_EQ(session_.finishEdit(""), kResultFailure);
    EXPECT_TRUE(host_.undo->blocks.empty());
}

TEST_F(EditSessionTest, WithoutAnUndoStackNothingIsSwapped) {
    session_.beginEdit();
    host_.services->remove<IUndoStack>();
    EXPECT_EQ(session_.finishEdit(""), kResultOk);
    EXPECT_EQ(host_.track->events.at(0).get(), event_.get());
}

TEST_F(EditSessionTest, AnEventOnNoTrackIsNotSwapped) {
    session_.beginEdit();
    host_.track->setParent(nullptr);
    EXPECT_EQ(session_.finishEdit(""), kResultOk);
    EXPECT_EQ(host_.track->events.at(0).get(), event_.get());
}

TEST_F(EditSessionTest, AbandonSendsNothingAndWithoutASessionDoesNothing) {
    session_.abandonEdit();
    session_.beginEdit();
    session_.abandonEdit();
    EXPECT_EQ(peer_.sent.size(), 1u);
    session_.beginEdit();
    // Nothing was open, so nothing is cancelled.
    EXPECT_EQ(peer_.sent.size(), 2u);
}

TEST_F(EditSessionTest, ClosingTheProjectCancelsTheEdit) {
    session_.beginEdit();
    host_.projects->deactivate();
    ASSERT_EQ(peer_.sent.size(), 2u);
    EXPECT_TRUE(peer_.sent[1].starts_with("cancel ") && peer_.sent[1].ends_with("take.wav"));
    EXPECT_EQ(session_.finishEdit(""), kResultFalse);
}

TEST_F(EditSessionTest, ARemovedEventCancelsTheEditOnce) {
    session_.beginEdit();
    event_->setState(2);
    event_->setParent(nullptr);
    host_.registry->tell(1);
    host_.registry->tell(1);
    EXPECT_EQ(peer_.sent.size(), 2u);
}

TEST_F(EditSessionTest, StopGivesTheEditUpSilentlyAndLeavesTheHost) {
    session_.beginEdit();
    session_.stop();
    EXPECT_EQ(peer_.sent.size(), 1u);
    EXPECT_TRUE(host_.projects->listeners.empty());
    EXPECT_EQ(session_.finishEdit(""), kResultFalse);
    host_.projects->deactivate();
    EXPECT_EQ(peer_.sent.size(), 1u);
}

TEST_F(EditSessionTest, AStoppedSessionStartsAgain) {
    session_.beginEdit();
    session_.stop();
    session_.start(&peer_);
    EXPECT_NE(session_.beginEdit(), nullptr);
    EXPECT_EQ(session_.finishEdit(""), kResultOk);
}

TEST_F(EditSessionTest, AStepThatTheHostUndoesAfterStopHarmsNobody) {
    session_.beginEdit();
    session_.finishEdit("");
    session_.stop();
    host_.undo->undo();
    host_.undo->redo();
    EXPECT_EQ(host_.track->events.at(0)->original(), event_.get());
}

TEST_F(EditSessionTest, WithoutAPeerLinkTheFileIsMadeAllTheSame) {
    session_.start(nullptr);
    EXPECT_NE(session_.beginEdit(), nullptr);
    EXPECT_NE(session_.beginEdit(), nullptr);
    EXPECT_TRUE(peer_.sent.empty());
    host_.projects->deactivate();
    EXPECT_EQ(session_.finishEdit(""), kResultFalse);
}

class FakeEditTarget final : public FakeObject<UnusedSlots<IStreamEditTarget>> {
public:
    FResult replaceFrames(std::int64_t start, std::int64_t count, IAudioStream* stream, IAudioClip* clip,
                          IUndoStack* undo) override {
        startFrame = start;
        frameCount = count;
        frames = stream->frames();
        hasAll = clip != nullptr && undo != nullptr;
        return result;
    }
    std::int64_t startFrame = -1;
    std::int64_t frameCount = -1;
    std::int64_t frames = -1;
    bool hasAll = false;
    FResult result = kResultOk;
};

TEST_F(EditSessionTest, ReplaceStreamHandsTheEditedFramesOver) {
    const auto target = makeFake<FakeEditTarget>();
    EXPECT_EQ(session_.replaceStream(*target), kResultFalse);
    session_.beginEdit();
    EXPECT_EQ(session_.replaceStream(*target), kResultOk);
    EXPECT_EQ(target->startFrame, 2000);
    EXPECT_EQ(target->frameCount, 3000);
    EXPECT_EQ(target->frames, 3000);
    EXPECT_TRUE(target->hasAll);
    ASSERT_EQ(host_.undo->blocks.size(), 1u);
    EXPECT_EQ(host_.undo->blocks[0].name, "Mit editAudioStream modifiziert!");
    target->result = kResultFailure;
    EXPECT_EQ(session_.replaceStream(*target), kResultFailure);
    EXPECT_EQ(host_.undo->blocks.size(), 1u);
}

} // namespace
} // namespace tessera
