#include "workflow/MediaItem.h"

#include "foundation/messages/UpdateHandler.h"
#include "shell/hostapi/AttributeValue.h"
#include "shell/hostapi/IMediaAttributes.h"
#include "support/host/FakeHost.h"
#include "workflow/ProjectTracker.h"

#include <gtest/gtest.h>

#include <limits>

namespace tessera {
namespace {

using test::FakeHost;
using test::FakeObject;
using test::makeFake;

class FakeMedia final : public FakeObject<UnusedSlots<IMediaObject>, IMediaAttributes> {
public:
    explicit FakeMedia(std::uint32_t id, bool range = false) : id_(id), range_(range) {}

    std::uint32_t itemId() override { return id_; }
    bool hasProperty(const char* name) override { return range_ && std::string(name) == "range"; }
    FResult attribute(const char* key, AttributeValue* value) override {
        const auto found = texts.find(key);
        if (found == texts.end()) {
            return kResultFailure;
        }
        value->flags = flags;
        value->text16 = found->second.c_str();
        return kResultOk;
    }
    FResult queryInterface(const FUIDBytes& uid, void** out) override {
        if (foreign && uid == IMediaAttributes::iid) {
            *out = nullptr;
            return kNoInterface;
        }
        return FakeObject::queryInterface(uid, out);
    }

    std::map<std::string, std::u16string> texts;
    std::uint32_t flags = AttributeValue::kText16;
    bool foreign = false;

private:
    std::uint32_t id_;
    bool range_;
};

class FakeMediaList final : public FakeObject<UnusedSlots<IMediaItemList>> {
public:
    std::int32_t count() override { return static_cast<std::int32_t>(items.size()); }
    IMediaObject* item(std::int32_t index) override { return items.at(static_cast<std::size_t>(index)).first.get(); }
    bool isSelected(std::int32_t index) override { return items.at(static_cast<std::size_t>(index)).second; }
    std::vector<std::pair<FRefPtr<FakeMedia>, bool>> items;
};

TEST(MediaItem, ReadsItsFourAttributes) {
    const auto media = makeFake<FakeMedia>(1u);
    media->texts = {{"User:STR_MATragetTrack", u"12"},
                    {"User:STR_MATakeNo", u"3b"},
                    {"User:STR_MACharacter", u"J\u00FCrgen"},
                    {"User:STR_MADialog", u"Hello"}};
    const MediaItem item(*media);
    EXPECT_EQ(item.targetTrack(), 12);
    EXPECT_EQ(item.takeNumber(), u"3b");
    EXPECT_EQ(item.character(), u"J\u00FCrgen");
    EXPECT_EQ(item.dialog(), u"Hello");
}

TEST(MediaItem, ATrackThatIsNoNumberIsMinusOne) {
    const auto media = makeFake<FakeMedia>(1u);
    const MediaItem item(*media);
    EXPECT_EQ(item.targetTrack(), -1);
    for (const char16_t* text : {u"abc", u"", u" ", u"99999999999"}) {
        media->texts["User:STR_MATragetTrack"] = text;
        EXPECT_EQ(item.targetTrack(), -1);
    }
    media->texts["User:STR_MATragetTrack"] = u" 7 of 9";
    EXPECT_EQ(item.targetTrack(), 7);
    for (const char16_t* text : {u"+5", u"\n\t 5", u"05"}) {
        media->texts["User:STR_MATragetTrack"] = text;
        EXPECT_EQ(item.targetTrack(), 5);
    }
    media->texts["User:STR_MATragetTrack"] = u"-3";
    EXPECT_EQ(item.targetTrack(), -3);
}

TEST(MediaItem, AValueThatIsNo16BitTextIsEmpty) {
    const auto media = makeFake<FakeMedia>(1u);
    media->texts["User:STR_MADialog"] = u"Hello";
    media->flags = AttributeValue::kText8;
    EXPECT_EQ(MediaItem(*media).dialog(), u"");
    media->flags = AttributeValue::kText16 | AttributeValue::kOwned;
    EXPECT_EQ(MediaItem(*media).dialog(), u"Hello");
}

class MediaRange : public testing::Test {
protected:
    MediaRange() {
        UpdateHandler::getInstance(true);
        tracker_ = FRefPtr<ProjectTracker>::adopt(new ProjectTracker(host_.services.get(), host_.projects.get()));
        host_.project->timeline()->ranges = {{1, {2, 5}}, {2, {1, 9}}, {3, {4, 6}}};
    }

    FakeHost host_;
    FRefPtr<ProjectTracker> tracker_;
    FRefPtr<FakeMediaList> list_ = makeFake<FakeMediaList>();
    double start_ = 0;
    double end_ = 0;
};

TEST_F(MediaRange, AnItemWithTheRangePropertyHasTwoEnds) {
    EXPECT_TRUE(MediaItem(*makeFake<FakeMedia>(1u, true)).itemRange(*host_.project->timeline(), start_, end_));
    EXPECT_EQ(start_, 2);
    EXPECT_EQ(end_, 5);
}

TEST_F(MediaRange, AnItemWithoutItIsAPoint) {
    EXPECT_TRUE(MediaItem(*makeFake<FakeMedia>(1u)).itemRange(*host_.project->timeline(), start_, end_));
    EXPECT_EQ(start_, 2);
    EXPECT_EQ(end_, 2);
}

TEST_F(MediaRange, AnObjectThatIsNoMediaItemHasNone) {
    const auto media = makeFake<FakeMedia>(1u, true);
    media->foreign = true;
    end_ = 3;
    EXPECT_FALSE(MediaItem(*media).itemRange(*host_.project->timeline(), start_, end_));
    EXPECT_EQ(end_, 3);
}

TEST_F(MediaRange, TheSelectionSpansItsItems) {
    list_->items = {{makeFake<FakeMedia>(1u, true), true},
                    {makeFake<FakeMedia>(2u, true), false},
                    {makeFake<FakeMedia>(3u, true), true}};
    EXPECT_TRUE(MediaItem::selectionRange(*tracker_, *list_, start_, end_));
    EXPECT_EQ(start_, 2);
    EXPECT_EQ(end_, 6);
}

TEST_F(MediaRange, NothingSelectedLeavesTheExtremes) {
    list_->items = {{makeFake<FakeMedia>(1u, true), false}};
    EXPECT_FALSE(MediaItem::selectionRange(*tracker_, *list_, start_, end_));
    EXPECT_EQ(start_, 1.7976931348623157e308);
    EXPECT_EQ(end_, -1.7976931348623157e308);
}

TEST_F(MediaRange, WithoutAnActiveProjectOrRootThereIsNone) {
    list_->items = {{makeFake<FakeMedia>(1u, true), true}};
    host_.project->removeRoot();
    EXPECT_FALSE(MediaItem::selectionRange(*tracker_, *list_, start_, end_));
    host_.projects->deactivate();
    EXPECT_FALSE(MediaItem::selectionRange(*tracker_, *list_, start_, end_));
}

} // namespace
} // namespace tessera
