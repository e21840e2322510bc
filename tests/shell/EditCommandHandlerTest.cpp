#include "shell/EditCommandHandler.h"

#include "support/host/FakeHost.h"
#include "workflow/IPeerLink.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

using test::FakeEvent;
using test::FakeFile;
using test::FakeHost;
using test::FakePart;
using test::makeFake;

class CountingPeerLink final : public IPeerLink {
public:
    bool isPeerAvailable() override { return available; }
    void openAudioFile(IHostFile*) override {}
    IHostFile* editSelection() override {
        ++edits;
        return edited;
    }
    void cancelAudioFile(IHostFile*) override {}
    std::int32_t suspendDriver(const char16_t*) override { return 0; }

    bool available = true;
    int edits = 0;
    IHostFile* edited = nullptr;
};

class EditCommandHandlerTest : public testing::Test {
protected:
    EditCommandHandlerTest() { handler_->setPeerLink(&peer_); }

    FRefPtr<FakeEvent> event() { return makeFake<FakeEvent>(host_.script, FRefPtr<FakePart>(), FakeEvent::Stretch()); }
    void select(int events, int ranges) {
        for (int i = 0; i < events; ++i) {
            host_.selection->select(1, event().get());
        }
        for (int i = 0; i < ranges; ++i) {
            host_.selection->select(9, event().get());
        }
    }
    FResult check() { return handler_->checkOrExecute("Tessera Exchange", "Edit in Tessera", true); }
    FResult run() { return handler_->checkOrExecute("Tessera Exchange", "Edit in Tessera", false); }

    FakeHost host_;
    CountingPeerLink peer_;
    FRefPtr<EditCommandHandler> handler_ = FRefPtr<EditCommandHandler>::adopt(new EditCommandHandler);
};

TEST_F(EditCommandHandlerTest, AnswersItsIdentifierAndTheBase) {
    const FUIDBytes id = "{9FC17BEB-3A51-4077-A25A-7726D3D3D711}"_uid;
    for (const FUIDBytes& uid : {id, IBaseUnknown::iid}) {
        void* out = nullptr;
        EXPECT_EQ(handler_->queryInterface(uid, &out), kResultOk);
        EXPECT_EQ(out, static_cast<ICommandHandler*>(handler_.get()));
        handler_->release();
    }
    void* out = this;
    EXPECT_EQ(handler_->queryInterface(IAlertHost::iid, &out), kNoInterface);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(handler_->queryInterface(id, nullptr), kInvalidArgument);
    EXPECT_EQ(handler_->addRef(), 2u);
    EXPECT_EQ(handler_->release(), 1u);
}

TEST_F(EditCommandHandlerTest, AForeignCategoryIsDeclinedWhateverTheName) {
    for (const char* category : {"Other", "tessera exchange", "Tessera Exchange ", ""}) {
        for (const bool checkOnly : {true, false}) {
            EXPECT_EQ(handler_->checkOrExecute(category, "Edit in Tessera", checkOnly), kResultFalse) << category;
            EXPECT_EQ(handler_->checkOrExecute(category, "Other", checkOnly), kResultFalse) << category;
        }
    }
    EXPECT_EQ(handler_->checkOrExecute(nullptr, "Edit in Tessera", false), kResultFalse);
    EXPECT_EQ(peer_.edits, 0);
}

TEST_F(EditCommandHandlerTest, AForeignNameIsAcceptedWithoutAction) {
    select(1, 0);
    for (const char* name : {"Other", "edit in tessera", "Edit in Tesser", ""}) {
        EXPECT_EQ(handler_->checkOrExecute("Tessera Exchange", name, false), kResultOk) << name;
        EXPECT_EQ(handler_->checkOrExecute("Tessera Exchange", name, true), kResultOk) << name;
    }
    EXPECT_EQ(handler_->checkOrExecute("Tessera Exchange", nullptr, false), kResultOk);
    EXPECT_EQ(peer_.edits, 0);
    EXPECT_TRUE(host_.script.calls().empty());
}

struct CheckRow {
    const char* name;
    int events;
    int ranges;
    FResult result;
};

class EditCommandCheck : public EditCommandHandlerTest, public testing::WithParamInterface<CheckRow> {};

TEST_P(EditCommandCheck, GoesByTheSelection) {
    select(GetParam().events, GetParam().ranges);
    EXPECT_EQ(check(), GetParam().result);
    EXPECT_EQ(peer_.edits, 0);
}

INSTANTIATE_TEST_SUITE_P(Rows, EditCommandCheck,
                         testing::Values(CheckRow{"Nothing", 0, 0, 1}, CheckRow{"OneEvent", 1, 0, 0},
                                         CheckRow{"TwoEvents", 2, 0, 1}, CheckRow{"TwoEventsAndARange", 2, 1, 0},
                                         CheckRow{"ARangeAlone", 0, 1, 0}, CheckRow{"OneEventAndARange", 1, 1, 0},
                                         CheckRow{"TwoRanges", 0, 2, 0}),
                         [](const auto& row) { return row.param.name; });

TEST_F(EditCommandHandlerTest, WithoutAPeerTheCommandIsGreyedOut) {
    select(1, 1);
    peer_.available = false;
    EXPECT_EQ(check(), kResultFalse);
}

TEST_F(EditCommandHandlerTest, WithoutALinkNeitherCheckNorRunIsAffirmative) {
    select(1, 0);
    handler_->setPeerLink(nullptr);
    EXPECT_EQ(check(), kResultFalse);
    EXPECT_EQ(run(), kResultFalse);
}

TEST_F(EditCommandHandlerTest, TheCheckDoesNotLookAtRestrictions) {
    select(1, 0);
    host_.selection->restrict(8);
    EXPECT_EQ(check(), kResultOk);
    EXPECT_TRUE(host_.alerts->shown.empty());
}

TEST_F(EditCommandHandlerTest, ARestrictedEventShowsTheMessageOnceAndStartsNothing) {
    select(1, 0);
    host_.selection->restrict(4);
    EXPECT_EQ(run(), kResultOk);
    EXPECT_EQ(peer_.edits, 0);
    ASSERT_EQ(host_.alerts->shown.size(), 1u);
    EXPECT_EQ(host_.alerts->shown[0].first,
              u"The selected audio event contains processing information that cannot be edited in Tessera. To be able "
              u"to use \"Edit in Tessera\", you must render or bounce the audio event first.");
    EXPECT_EQ(host_.alerts->shown[0].second, u"OK");
}

TEST_F(EditCommandHandlerTest, WithoutAlertsARestrictedEventIsHandledSilently) {
    select(1, 0);
    host_.selection->restrict(3);
    host_.services->remove<IAlertHost>();
    EXPECT_EQ(run(), kResultOk);
    EXPECT_EQ(peer_.edits, 0);
}

TEST_F(EditCommandHandlerTest, RunGoesByWhetherTheSessionStarted) {
    select(1, 0);
    EXPECT_EQ(run(), kResultFalse);
    const auto file = makeFake<FakeFile>(host_.store, host_.script, u"/a");
    peer_.edited = file.get();
    EXPECT_EQ(run(), kResultOk);
    EXPECT_EQ(peer_.edits, 2);
}

} // namespace
} // namespace tessera
