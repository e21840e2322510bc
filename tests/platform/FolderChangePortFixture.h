// A port that has a scratch folder open.
#pragma once

#include "platform/FolderChangePort.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace tessera::test {

class FolderChangePortFixture : public testing::Test {
protected:
    using FolderChangePort = platform::FolderChangePort;
    using Changes = std::vector<platform::FolderChange>;

    static constexpr FolderChangePort::Key kKey = 7;

    void SetUp() override {
        ASSERT_NE(port_, nullptr);
        ASSERT_TRUE(port_->open(kKey, testing_support::utf8OfPath(scratch_.path())));
    }
    // One wait that is about the folder, and what it has to tell.
    FolderChangePort::Read take() {
        FolderChangePort::Key key = 0;
        EXPECT_EQ(port_->wait(key), FolderChangePort::Event::folder);
        EXPECT_EQ(key, kKey);
        return port_->take(key, changes_);
    }

    testing_support::ScratchFolder scratch_;
    std::unique_ptr<FolderChangePort> port_ = FolderChangePort::create();
    Changes changes_;
};

} // namespace tessera::test
