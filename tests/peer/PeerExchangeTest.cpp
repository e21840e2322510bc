#include "peer/PeerExchange.h"

#include <gtest/gtest.h>

namespace tessera::peer {
namespace {

using Texts = std::vector<std::string>;

// Records what the exchange asks for, and plays the exchange folder.
class RecordedActions final : public IPeerActions {
public:
    void send(std::string_view message) override { sent.emplace_back(message); }
    void startEdit(const std::string& path) override { started.push_back(path); }
    void stopEdit() override { ++stops; }
    int countFilesBeside(const std::string&) override { return files; }
    void say(const std::string& line) override { lines.push_back(line); }

    Texts sent;
    Texts started;
    Texts lines;
    int stops = 0;
    int files = 1;
};

class PeerExchangeTest : public testing::Test {
protected:
    void greet() {
        exchange_.received("2;sendConnectionInfo;Harrow Max;9.0.20;true;");
        actions_.sent.clear();
    }

    RecordedActions actions_;
    PeerExchange exchange_{actions_};
};

TEST_F(PeerExchangeTest, TheWaitingMessagesAreAnsweredAtOnce) {
    exchange_.received("2;sendConnectionInfo;Harrow Max;9.0.20;true;");
    EXPECT_EQ((Texts{"ok"}), actions_.sent);
    exchange_.received("2;suspendKiteDriver;text;");
    EXPECT_EQ((Texts{"ok", "ok"}), actions_.sent);
}

TEST_F(PeerExchangeTest, NothingIsSentBeforeTheGreetingIsAnswered) {
    exchange_.openFile("/tmp/a.wav");
    exchange_.editEnded(EditOutcome::Finished, 0);
    exchange_.tick(1);
    EXPECT_TRUE(actions_.sent.empty());
    EXPECT_FALSE(exchange_.mayLeave());
    exchange_.received("2;sendConnectionInfo;Harrow Max;9.0.20;true;");
    EXPECT_EQ((Texts{"ok"}), actions_.sent);
    exchange_.tick(2);
    EXPECT_EQ((Texts{"ok", "2;finishedFileEdit;/tmp/a.wav;"}), actions_.sent);
}

TEST_F(PeerExchangeTest, AnEditIsReportedByItsOutcome) {
    greet();
    exchange_.received("2;openFile;/tmp/a.wav;");
    EXPECT_EQ((Texts{"/tmp/a.wav"}), actions_.started);
    exchange_.editEnded(EditOutcome::Finished, 0);
    exchange_.received("2;openFile;/tmp/b.wav;");
    exchange_.editEnded(EditOutcome::Failed, 0);
    EXPECT_EQ((Texts{"2;finishedFileEdit;/tmp/a.wav;", "2;cancelFileEdit;/tmp/b.wav;"}), actions_.sent);
    EXPECT_EQ(2, exchange_.editsEnded());
}

TEST_F(PeerExchangeTest, APathWithSemicolonsIsPutTogetherAgain) {
    greet();
    exchange_.received("2;openFile;/tmp/a;b;;c.wav;");
    EXPECT_EQ((Texts{"/tmp/a;b;;c.wav"}), actions_.started);
    exchange_.received("2;cancelFileEdit;/tmp/a;b;;c.wav;");
    EXPECT_EQ(1, actions_.stops);
}

TEST_F(PeerExchangeTest, FilesAreEditedOneAfterTheOther) {
    exchange_.openFile("/tmp/a.wav");
    exchange_.openFile("/tmp/b.wav");
    exchange_.openFile("/tmp/b.wav");
    exchange_.openFile("/tmp/a.wav");
    EXPECT_EQ((Texts{"/tmp/a.wav"}), actions_.started);
    exchange_.editEnded(EditOutcome::Finished, 0);
    EXPECT_EQ((Texts{"/tmp/a.wav", "/tmp/b.wav"}), actions_.started);
    exchange_.editEnded(EditOutcome::Finished, 0);
    EXPECT_EQ(2u, actions_.started.size());
}

TEST_F(PeerExchangeTest, ACancelledEditIsStoppedAndNotReported) {
    greet();
    exchange_.received("2;openFile;/tmp/a.wav;");
    exchange_.received("2;openFile;/tmp/b.wav;");
    exchange_.received("2;cancelFileEdit;/tmp/other.wav;");
    EXPECT_EQ(0, actions_.stops);
    exchange_.received("2;cancelFileEdit;/tmp/a.wav;");
    EXPECT_EQ(1, actions_.stops);
    EXPECT_EQ((Texts{"/tmp/a.wav", "/tmp/b.wav"}), actions_.started);
    EXPECT_TRUE(actions_.sent.empty());
}

TEST_F(PeerExchangeTest, ACancelledFileThatWaitsIsNeverOpened) {
    greet();
    exchange_.received("2;openFile;/tmp/a.wav;");
    exchange_.received("2;openFile;/tmp/b.wav;");
    exchange_.received("2;cancelFileEdit;/tmp/b.wav;");
    exchange_.editEnded(EditOutcome::Finished, 0);
    EXPECT_EQ((Texts{"/tmp/a.wav"}), actions_.started);
}

TEST_F(PeerExchangeTest, TheProgramStaysUntilTheHostHasTakenTheFileUp) {
    greet();
    exchange_.received("2;openFile;/tmp/a.wav;");
    exchange_.editEnded(EditOutcome::Finished, 100);
    EXPECT_TRUE(exchange_.isIdle());
    exchange_.tick(5000);
    EXPECT_FALSE(exchange_.mayLeave());
    actions_.files = 2;
    exchange_.tick(5001);
    EXPECT_TRUE(exchange_.mayLeave());
}

TEST_F(PeerExchangeTest, TheProgramStaysTenSecondsAtMost) {
    greet();
    exchange_.received("2;openFile;/tmp/a.wav;");
    exchange_.editEnded(EditOutcome::Failed, 100);
    exchange_.tick(10'099);
    EXPECT_FALSE(exchange_.mayLeave());
    exchange_.tick(10'100);
    EXPECT_TRUE(exchange_.mayLeave());
}

TEST_F(PeerExchangeTest, AHostThatLeavesIsAnsweredAndItsEditGivenUp) {
    greet();
    exchange_.received("2;openFile;/tmp/a.wav;");
    exchange_.received("2;sendConnectionInfo;Harrow Max;9.0.20;false;");
    EXPECT_EQ((Texts{"ok"}), actions_.sent);
    EXPECT_EQ(1, actions_.stops);
    EXPECT_FALSE(exchange_.isGreeted());
    EXPECT_TRUE(exchange_.mayLeave());
}

TEST_F(PeerExchangeTest, GivingUpTellsTheHostOfTheRunningEdit) {
    greet();
    exchange_.received("2;openFile;/tmp/a.wav;");
    exchange_.received("2;openFile;/tmp/b.wav;");
    exchange_.giveUp(0);
    EXPECT_EQ(1, actions_.stops);
    EXPECT_EQ((Texts{"2;cancelFileEdit;/tmp/a.wav;"}), actions_.sent);
    EXPECT_EQ((Texts{"/tmp/a.wav"}), actions_.started);
}

// The module splices each result into the range that it first gave out.
TEST_F(PeerExchangeTest, AnEditThatKeptTheLengthMayBeReportedOnceMore) {
    greet();
    exchange_.received("2;openFile;/tmp/a.wav;");
    exchange_.editEnded(EditOutcome::Finished, 0);
    exchange_.openFile("/tmp/a.wav");
    EXPECT_EQ((Texts{"/tmp/a.wav", "/tmp/a.wav"}), actions_.started);
    exchange_.editEnded(EditOutcome::Finished, 0);
    EXPECT_EQ((Texts{"2;finishedFileEdit;/tmp/a.wav;", "2;finishedFileEdit;/tmp/a.wav;"}), actions_.sent);
}

TEST_F(PeerExchangeTest, AnEditThatChangedTheLengthEndsTheExchange) {
    greet();
    exchange_.received("2;openFile;/tmp/a.wav;");
    exchange_.editEnded(EditOutcome::FinishedAtOtherLength, 0);
    actions_.lines.clear();
    exchange_.openFile("/tmp/a.wav");
    EXPECT_EQ((Texts{"the edit of /tmp/a.wav has ended, as it changed the length; start it in the host once more"}),
              actions_.lines);
    EXPECT_EQ((Texts{"/tmp/a.wav"}), actions_.started);
    EXPECT_EQ((Texts{"2;finishedFileEdit;/tmp/a.wav;"}), actions_.sent);
    EXPECT_TRUE(exchange_.isIdle());
    // What the host itself opens is a new exchange, and so is everything of the next host.
    exchange_.received("2;openFile;/tmp/a.wav;");
    EXPECT_EQ(2u, actions_.started.size());
    exchange_.editEnded(EditOutcome::FinishedAtOtherLength, 0);
    exchange_.hostLost();
    exchange_.openFile("/tmp/a.wav");
    EXPECT_EQ(3u, actions_.started.size());
}

TEST_F(PeerExchangeTest, ForeignMessagesArePassedOver) {
    greet();
    for (const char* message : {"", ";", "2;", "2;;", "1;openFile;/a;", "02;openFile;/a;", "2;openFile;",
                                "2;cancelFileEdit;", "2;unknown;x;", "ok"}) {
        exchange_.received(message);
    }
    EXPECT_TRUE(actions_.sent.empty());
    EXPECT_TRUE(actions_.started.empty());
}

} // namespace
} // namespace tessera::peer
