#include "persistence/streams/FHostStreamView.h"

#include "foundation/object/FRefPtr.h"
#include "persistence/streams/FIBStream.h"
#include "persistence/streams/FPluginStreamProxy.h"
#include "tests/persistence/streams/StreamBytes.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

class FHostStreamViewTest : public testing::Test {
protected:
    FHostStreamViewTest() { fill(*stream, "abcde"); }

    FRefPtr<FMemoryStream> stream = FRefPtr<FMemoryStream>::adopt(new FMemoryStream);
    IHostStream& host = stream->hostView();
    char buffer[16] = {};
    std::int32_t count = -7;
    std::int64_t position = -7;
};

TEST_F(FHostStreamViewTest, SharesIdentityAndCountWithItsStream) {
    const FRefPtr<IHostStream> view = queryFor<IHostStream>(stream.get());
    EXPECT_EQ(view.get(), &host);
    EXPECT_EQ(stream->getReferenceCount(), 2u);
    const FRefPtr<IBaseUnknown> back = queryFor<IBaseUnknown>(view.get());
    EXPECT_EQ(back.get(), queryFor<IBaseUnknown>(stream.get()).get());
}

TEST_F(FHostStreamViewTest, ReadGivesTheCount) {
    EXPECT_EQ(host.read(buffer, 3, &count), kResultOk);
    EXPECT_EQ(count, 3);
    EXPECT_EQ(host.read(buffer, 16, &count), kResultOk);
    EXPECT_EQ(count, 2);
    EXPECT_EQ(host.read(buffer, 16, &count), kResultOk);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(host.read(buffer, 1, nullptr), kResultOk);
}

TEST_F(FHostStreamViewTest, ReadOfNothingFails) {
    EXPECT_EQ(host.read(buffer, 0, &count), kResultFalse);
    EXPECT_EQ(host.read(buffer, -1, &count), kResultFalse);
    EXPECT_EQ(count, -7);
}

TEST_F(FHostStreamViewTest, WriteSucceedsWithTheWholeBlockAlone) {
    EXPECT_EQ(host.write("xy", 2, &count), kResultOk);
    EXPECT_EQ(count, 2);
    EXPECT_EQ(host.write("xy", 0, &count), kResultOk);
    EXPECT_EQ(host.write("xy", -1, &count), kResultFalse);
    stream->setReadOnly(true);
    EXPECT_EQ(host.write("xy", 2, &count), kResultFalse);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(bytesOf(*stream), "xycde");
}

TEST_F(FHostStreamViewTest, SeekKnowsThreeModes) {
    EXPECT_EQ(host.seek(2, 0, &position), kResultOk);
    EXPECT_EQ(position, 2);
    EXPECT_EQ(host.seek(2, 1, &position), kResultOk);
    EXPECT_EQ(position, 4);
    EXPECT_EQ(host.seek(-2, 2, &position), kResultOk);
    EXPECT_EQ(position, 3);
    EXPECT_EQ(host.seek(0, 3, &position), kResultFalse);
    EXPECT_EQ(host.seek(0, -1, &position), kResultFalse);
    EXPECT_EQ(position, 3);
    EXPECT_EQ(host.seek(0, 0, nullptr), kResultOk);
}

TEST_F(FHostStreamViewTest, SeekToANegativePositionFails) {
    EXPECT_EQ(host.seek(-1, 0, &position), kResultFalse);
}

TEST_F(FHostStreamViewTest, TellNeedsAPlaceForTheAnswer) {
    stream->seek(4, SeekMode::fromStart);
    EXPECT_EQ(host.tell(nullptr), kInvalidArgument);
    EXPECT_EQ(host.tell(&position), kResultOk);
    EXPECT_EQ(position, 4);
}

TEST_F(FHostStreamViewTest, FIBStreamForwardsAndHoldsOneReference) {
    {
        FIBStream wrapper(&host);
        EXPECT_EQ(stream->getReferenceCount(), 2u);
        EXPECT_EQ(wrapper.read(buffer, 3), 3);
        EXPECT_EQ(std::string(buffer), "abc");
        EXPECT_EQ(wrapper.tell(), 3);
        EXPECT_EQ(wrapper.write("XYZ", 3), 3);
        EXPECT_EQ(wrapper.seek(1, SeekMode::fromStart), 1);
        EXPECT_EQ(wrapper.seek(-100, SeekMode::fromHere), -1);
        EXPECT_EQ(wrapper.read(buffer, 0), 0);
    }
    EXPECT_EQ(stream->getReferenceCount(), 1u);
    EXPECT_EQ(bytesOf(*stream), "abcXYZ");
}

TEST_F(FHostStreamViewTest, FIBStreamWithoutAStreamDoesNothing) {
    FIBStream wrapper(nullptr);
    EXPECT_EQ(wrapper.read(buffer, 3), 0);
    EXPECT_EQ(wrapper.write("x", 1), 0);
    EXPECT_EQ(wrapper.seek(0, SeekMode::fromStart), -1);
    EXPECT_EQ(wrapper.tell(), -1);
}

TEST_F(FHostStreamViewTest, ProxyDoesWhatItWasGivenFor) {
    const auto proxy = FRefPtr<FPluginStreamProxy>::adopt(new FPluginStreamProxy(host, FPluginStreamProxy::canRead));
    const FRefPtr<IHostStream> plugin = queryFor<IHostStream>(proxy.get());
    const FRefPtr<IStreamProxy> face = queryFor<IStreamProxy>(plugin.get());
    ASSERT_TRUE(plugin && face);
    EXPECT_EQ(face->isSupported("CanRead"), kResultOk);
    EXPECT_EQ(face->isSupported("CanWrite"), kResultFalse);
    EXPECT_EQ(face->isSupported("CanIterate"), kResultFalse);
    EXPECT_EQ(face->isSupported("CanFly"), kResultFalse);
    EXPECT_EQ(face->isSupported(nullptr), kResultFalse);
    EXPECT_EQ(plugin->read(buffer, 2, &count), kResultOk);
    EXPECT_EQ(plugin->write("x", 1, &count), kResultFailure);
    EXPECT_EQ(plugin->seek(1, 0, &position), kResultOk);
    EXPECT_EQ(plugin->tell(&position), kResultOk);
    EXPECT_EQ(position, 1);
    EXPECT_EQ(bytesOf(*stream), "abcde");
}

TEST_F(FHostStreamViewTest, ProxyForWritingAloneRefusesToRead) {
    const auto proxy = FRefPtr<FPluginStreamProxy>::adopt(new FPluginStreamProxy(host, FPluginStreamProxy::canWrite));
    EXPECT_EQ(proxy->read(buffer, 1, &count), kResultFailure);
    EXPECT_EQ(proxy->write("x", 1, &count), kResultOk);
    EXPECT_EQ(stream->getReferenceCount(), 2u);
}

} // namespace
} // namespace tessera
