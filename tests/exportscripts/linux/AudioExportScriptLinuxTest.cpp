#include "exportscripts/AudioExportScript.h"

#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace tessera {
namespace {

TEST(AudioExportScriptLinux, APipeDoesNotHoldTheReaderUp) {
    const testing_support::ScratchFolder folder;
    ASSERT_EQ(mkfifo((folder / "pipe.aepp").c_str(), 0600), 0);
    FString text;
    text.assignUtf8((folder / "pipe.aepp").c_str());
    EXPECT_EQ(parseScript(FNPath(text, PathKind::file)).name, "");
}

} // namespace
} // namespace tessera
