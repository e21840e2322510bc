// The end of a process as a library sees it.
#include "platform/Processes.h"
#include "support/Eventually.h"
#include "support/FinishedReport.h"
#include "support/HelperProcess.h"

#include <gtest/gtest.h>

namespace tessera::platform {
namespace {

TEST(ProcessEndWindows, ALibraryAtWorkHoldsUpNobodysEnd) {
    const testing_support::ScratchFolder scratch;
    testing_support::HelperProcess helper(
        ENDING_HELPER, {ENDING_LIBRARY, testing_support::utf8OfPath(scratch / "report"), PROCESS_HELPER});
    const Process process = Process::open(helper.id());
    ASSERT_TRUE(testing_support::eventually([&] { return !process.isRunning(); }));
    EXPECT_EQ(helper.finish(), 0);
    EXPECT_EQ(testing_support::finishedReport(scratch, "report"), "others gone, joined, stopped");
}

} // namespace
} // namespace tessera::platform
