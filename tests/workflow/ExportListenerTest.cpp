#include "workflow/ExportListener.h"

#include "shell/hostapi/AttributeValue.h"
#include "support/host/FakeHost.h"

#include <gtest/gtest.h>

#include <optional>

namespace tessera {
namespace {

using test::FakeFile;
using test::FakeHost;
using test::FakeObject;
using test::makeFake;

class FakeAttributes final : public FakeObject<UnusedSlots<IAttributeList>> {
public:
    FResult set(const char* key, const AttributeValue* value, std::int64_t unused) override {
        std::string text = value->flags == 4   ? std::string(value->text8)
                           : value->flags == 2 ? std::to_string(value->number)
                                               : "?";
        attributes.push_back(std::string(key) + "=" + text + "/" + std::to_string(value->flags) + "/" +
                             std::to_string(unused));
        return kResultOk;
    }
    std::vector<std::string> attributes;
};

class ExportListenerTest : public testing::Test {
protected:
    FRefPtr<FakeFile> file(std::u16string path) { return makeFake<FakeFile>(host_.store, host_.script, path); }

    FakeHost host_;
    FRefPtr<ExportListener> listener_ = FRefPtr<ExportListener>::adopt(new ExportListener);
    FRefPtr<FakeAttributes> attributes_ = makeFake<FakeAttributes>();
    std::vector<std::u16string> exported_;
    ExportListener::Exported callback_ = [this](const char16_t* path) { exported_.emplace_back(path); };
};

TEST_F(ExportListenerTest, JoinsTheHostBetweenStartAndStop) {
    listener_->start(callback_);
    ASSERT_EQ(host_.exports->listeners.size(), 1u);
    EXPECT_EQ(host_.exports->listeners[0].get(), listener_.get());
    listener_->stop();
    EXPECT_TRUE(host_.exports->listeners.empty());
}

TEST_F(ExportListenerTest, SetsThreeAttributesInOrder) {
    EXPECT_EQ(listener_->prepareExport(file(u"/mix.wav").get(), 1.5, 20, host_.project.get(), attributes_.get()),
              kResultOk);
    EXPECT_EQ(attributes_->attributes,
              (std::vector<std::string>{"GACProjectPath=/projects/song/song.project/4/0",
                                        "GACAssetStartTime=1.500000/2/0", "GACAssetLength=20.000000/2/0"}));
}

TEST_F(ExportListenerTest, WithoutProjectOrAttributesTheArgumentIsInvalid) {
    EXPECT_EQ(listener_->prepareExport(file(u"/a").get(), 0, 0, nullptr, attributes_.get()), kInvalidArgument);
    EXPECT_EQ(listener_->prepareExport(file(u"/a").get(), 0, 0, host_.project.get(), nullptr), kInvalidArgument);
}

TEST_F(ExportListenerTest, AProjectThatWasNeverSavedSetsNoAttribute) {
    host_.project->saved = false;
    listener_->start(callback_);
    EXPECT_EQ(listener_->prepareExport(file(u"/mix.wav").get(), 0, 1, host_.project.get(), attributes_.get()),
              kResultFalse);
    EXPECT_TRUE(attributes_->attributes.empty());
    // The name was taken all the same.
    listener_->exportFinished(1);
    EXPECT_EQ(exported_, std::vector<std::u16string>{u"/mix.wav"});
    listener_->stop();
}

TEST_F(ExportListenerTest, OnlyAFinishedExportIsPassedOn) {
    listener_->start(callback_);
    listener_->prepareExport(file(u"/mix.wav").get(), 0, 1, host_.project.get(), attributes_.get());
    for (const std::int32_t state : {0, 2, -1}) {
        EXPECT_EQ(listener_->exportFinished(state), kResultOk);
    }
    EXPECT_TRUE(exported_.empty());
    listener_->stop();
}

TEST_F(ExportListenerTest, TwoExportsAfterOnePreparationSendTheSameName) {
    listener_->start(callback_);
    listener_->prepareExport(file(u"/mix.wav").get(), 0, 1, host_.project.get(), attributes_.get());
    listener_->exportFinished(1);
    listener_->exportFinished(1);
    EXPECT_EQ(exported_, (std::vector<std::u16string>{u"/mix.wav", u"/mix.wav"}));
    listener_->stop();
}

TEST_F(ExportListenerTest, ANullFileLeavesTheOldName) {
    listener_->start(callback_);
    listener_->prepareExport(file(u"/mix.wav").get(), 0, 1, host_.project.get(), attributes_.get());
    EXPECT_EQ(listener_->prepareExport(nullptr, 0, 1, host_.project.get(), attributes_.get()), kResultOk);
    listener_->exportFinished(1);
    EXPECT_EQ(exported_, std::vector<std::u16string>{u"/mix.wav"});
    listener_->stop();
}

TEST_F(ExportListenerTest, WithoutACallbackNothingHappens) {
    EXPECT_EQ(listener_->exportFinished(1), kResultOk);
}

TEST_F(ExportListenerTest, AThrowingCallbackStopsAtTheBorder) {
    listener_->start([](const char16_t*) { throw 1; });
    EXPECT_EQ(listener_->exportFinished(1), kResultOk);
    listener_->stop();
}

TEST_F(ExportListenerTest, WithoutAnExportHostStartAndStopDoNothing) {
    host_.services->remove<IExportHost>();
    listener_->start(callback_);
    listener_->stop();
    EXPECT_TRUE(host_.exports->listeners.empty());
}

} // namespace
} // namespace tessera
