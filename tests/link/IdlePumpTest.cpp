#include "link/IdlePump.h"

#include "support/host/FakeHost.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

using test::FakeHost;

TEST(IdlePump, AnswersItsIdentifier) {
    FakeHost host;
    const auto pump = FRefPtr<IdlePump>::adopt(new IdlePump([] {}));
    void* out = nullptr;
    EXPECT_EQ(pump->queryInterface("{D70BBB58-C805-45B8-AB82-64180B673A84}"_uid, &out), kResultOk);
    EXPECT_EQ(out, static_cast<IIdleClient*>(pump.get()));
    pump->release();
    pump->stop();
}

TEST(IdlePump, RunsAtEachIdleCallUntilItIsStopped) {
    FakeHost host;
    int runs = 0;
    const auto pump = FRefPtr<IdlePump>::adopt(new IdlePump([&] { ++runs; }));
    ASSERT_EQ(host.idleHost->clients.size(), 1u);
    host.idleHost->idle();
    host.idleHost->idle();
    EXPECT_EQ(runs, 2);
    pump->stop();
    EXPECT_TRUE(host.idleHost->clients.empty());
    // A host that calls all the same reaches nothing.
    pump->onIdle();
    EXPECT_EQ(runs, 2);
}

TEST(IdlePump, WhatIsThrownEndsThere) {
    FakeHost host;
    const auto pump = FRefPtr<IdlePump>::adopt(new IdlePump([] { throw 1; }));
    host.idleHost->idle();
    pump->stop();
}

TEST(IdlePump, MayBeEndedFromInsideItsFunction) {
    FakeHost host;
    FRefPtr<IdlePump> pump;
    int runs = 0;
    pump = FRefPtr<IdlePump>::adopt(new IdlePump([&] {
        ++runs;
        pump->stop();
        pump.reset();
        ++runs;
    }));
    host.idleHost->idle();
    EXPECT_EQ(runs, 2);
    EXPECT_TRUE(host.idleHost->clients.empty());
}

TEST(IdlePump, WithoutIdleCallsItIsNeverRun) {
    FakeHost host;
    host.services->remove<IIdleHost>();
    int runs = 0;
    const auto pump = FRefPtr<IdlePump>::adopt(new IdlePump([&] { ++runs; }));
    host.idleHost->idle();
    pump->stop();
    EXPECT_EQ(runs, 0);
}

} // namespace
} // namespace tessera
