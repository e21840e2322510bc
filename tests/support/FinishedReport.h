// finishedReport(folder, name): what a program of the tests has written under a name that comes up whole, by a
// renaming. Waits until it can be read: in the moment of its renaming a file may be there and closed to others.
#pragma once

#include "support/Eventually.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <string>

namespace tessera::testing_support {

inline std::string finishedReport(const ScratchFolder& folder, const std::string& name) {
    std::string report;
    EXPECT_TRUE(eventually([&] {
        report = folder.read(name);
        return !report.empty();
    })) << name
        << " hasn't come up";
    return report;
}

} // namespace tessera::testing_support
