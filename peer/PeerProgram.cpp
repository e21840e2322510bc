#include "peer/PeerProgram.h"

#include "common/Utf8Path.h"
#include "discovery/identity/SystemInfo.h"
#include "discovery/registry/ServiceDiscovery.h"
#include "foundation/threads/FThread.h"
#include "platform/InterruptRequest.h"
#include "platform/Processes.h"
#include "platform/ProgramRun.h"
#include "platform/TemporaryFolder.h"
#include "platform/ThreadTimer.h"

#include <chrono>
#include <cstdio>
#include <exception>
#include <filesystem>

namespace tessera::peer {
namespace {

using programs::nativePath;

constexpr int kTurnMs = 5;
constexpr int kHandOverMs = 5'000;
// How long a result waits for a host that doesn't come.
constexpr std::int64_t kHostlessMs = 30'000;

std::int64_t steadyMs() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
}

std::string ownFolder() {
    return platform::temporaryFolder() + "/Marlgrove/TesxPeer";
}

} // namespace

PeerProgram::PeerProgram(EditorCommand command, StayMode stay)
    : command_(std::move(command)),
      stay_(stay),
      workFolder_(ownFolder() + "/work-" + std::to_string(platform::ownProcessId())),
      handOver_(ownFolder()),
      link_(LinkSocket::userAddress(systemInfo().userName)) {}

PeerProgram::~PeerProgram() {
    close();
}

int PeerProgram::run(const std::vector<std::string>& files) {
    platform::noteInterrupts();
    if (!handOver_.tryBecomeLive()) {
        if (handOver_.folderProblem()) {
            say("cannot use the folder " + ownFolder() + ": " +
                platform::systemErrorText(handOver_.folderProblem().value()) +
                "; it lies in the folder for temporary files, which has to be writable");
            return 1;
        }
        return handOver(files);
    }
    if (!open(files)) {
        return 1;
    }
    const int result = loop();
    close();
    return result;
}

// A second start: the live peer does the work.
int PeerProgram::handOver(const std::vector<std::string>& files) {
    if (files.empty()) {
        say("another tesx-peer of this user runs already; this one has nothing to do");
        return 0;
    }
    for (auto file = files.begin(); file != files.end(); ++file) {
        switch (handOver_.handOver(*file, kHandOverMs)) {
        case HandOver::Outcome::Taken:
            say("handed to the tesx-peer that runs already: " + *file);
            break;
        case HandOver::Outcome::NobodyTookIt:
            say("cannot hand over " + *file + ": another tesx-peer holds " + ownFolder() +
                "/live and doesn't answer; end it and try again");
            return 1;
        case HandOver::Outcome::BecameLive:
            return run(std::vector<std::string>(file, files.end()));
        }
    }
    return 0;
}

// The order matters: a host that finds the record binds and greets at once, and its main thread waits for the answer.
// So the socket is there first, then the record, and then, by registering, the signal.
bool PeerProgram::open(const std::vector<std::string>& files) {
    if (!link_.open(LinkSide::Connect)) {
        say("cannot connect to " + link_.address() + "; the number above is the system's");
        return false;
    }
    for (const std::string& file : files) {
        exchange_.openFile(file);
    }
    ServiceDiscovery& discovery = ServiceDiscovery::getInstance();
    discovery.start(kPeerServiceName);
    discovery.observe(
        ownServiceId(), [this](const ServiceRecord& host) { hostListed(host); },
        [this](const ServiceRecord& host) { hostUnlisted(host); });
    discovery.registerService(peerServiceId());
    registered_ = true;
    discovery.scan();
    if (files.empty()) {
        say("ready; waiting for the host's files");
    }
    return true;
}

void PeerProgram::close() {
    if (!registered_) {
        return;
    }
    registered_ = false;
    ServiceDiscovery& discovery = ServiceDiscovery::getInstance();
    discovery.unregisterService(peerServiceId());
    discovery.stopObserving(ownServiceId());
    job_.reset();
    stoppedJobs_.clear();
    link_.close();
    std::error_code ignored;
    std::filesystem::remove(nativePath(workFolder_), ignored);
}

void PeerProgram::hostListed(const ServiceRecord& host) {
    hostSeen_ = true;
    hostGone_ = false;
    if (unlistedHost_ && unlistedHost_->processId == host.processId) {
        unlistedHost_.reset();
    }
}

// A second host of the user signals like one that goes, and so does a host that leaves and comes again at once. A host
// that leaves in good order says so on the link; so what takes a linked one away here is the end of its process alone.
void PeerProgram::hostUnlisted(const ServiceRecord& host) {
    hostGone_ = true;
    if (!unlistedHost_) {
        unlistedHost_ = host;
        checkUnlistedHost();
        if (unlistedHost_) {
            say("the registry lists the host no more, but it runs; its link stays");
        }
    }
}

void PeerProgram::checkUnlistedHost() {
    if (!unlistedHost_) {
        return;
    }
    if (!unlistedHost_->isAlive()) {
        unlistedHost_.reset();
        say("the host is gone");
        exchange_.hostLost();
    } else if (!exchange_.isGreeted()) {
        unlistedHost_.reset();
    }
}

int PeerProgram::loop() {
    bool leaving = false;
    // An editor that fails at once may be done before the first turn sees it at work.
    idleSince_ = steadyMs();
    for (;;) {
        const std::int64_t now = steadyMs();
        turn(now);
        if (!leaving && platform::interruptRequested()) {
            say("leaving as soon as the host knows; interrupt again to leave at once");
            exchange_.giveUp(now);
            leaving = true;
        }
        if (leaving ? exchange_.mayLeave() || !exchange_.isGreeted() : wantsToLeave()) {
            return 0;
        }
        if (stay_ != StayMode::UntilInterrupted && !exchange_.isGreeted() && exchange_.editsEnded() > 0 &&
            !exchange_.isIdle() && now - idleSince_ > kHostlessMs) {
            say("no host has come; what was edited stays in its file");
            return 1;
        }
        FThread::sleep(kTurnMs);
    }
}

void PeerProgram::turn(std::int64_t now) {
    // A record in the registry that no reader can make sense of is somebody else's fault, and no reason to end.
    try {
        platform::runDueTimers();
    } catch (const std::exception& problem) {
        say(std::string("a record in the registry cannot be read: ") + problem.what());
    }
    for (std::string message = link_.receive(); !message.empty(); message = link_.receive()) {
        exchange_.received(message);
    }
    checkUnlistedHost();
    for (const std::string& file : handOver_.takeFiles()) {
        exchange_.openFile(file);
    }
    pollEdit(now);
    exchange_.tick(now);
    if (job_ || exchange_.isGreeted()) {
        idleSince_ = now;
    }
}

void PeerProgram::pollEdit(std::int64_t now) {
    std::erase_if(stoppedJobs_, [](const auto& job) { return job->hasEnded(); });
    if (!job_ || !job_->hasEnded()) {
        return;
    }
    const std::unique_ptr<EditJob> job = std::move(job_);
    if (!job->succeeded()) {
        say(job->problem());
    }
    const EditOutcome finished = job->keptLength() ? EditOutcome::Finished : EditOutcome::FinishedAtOtherLength;
    exchange_.editEnded(job->succeeded() ? finished : EditOutcome::Failed, now);
}

bool PeerProgram::wantsToLeave() const {
    switch (stay_) {
    case StayMode::UntilInterrupted:
        return false;
    case StayMode::WhileHostLives:
        return hostSeen_ && hostGone_ && !exchange_.isGreeted() && exchange_.mayLeave();
    case StayMode::ForOneEdit:
        return exchange_.editsEnded() > 0 && exchange_.mayLeave();
    }
    return false;
}

// A report may come right behind an answer that is still being written; without waiting it would be lost.
void PeerProgram::send(std::string_view message) {
    link_.send(message, SendMode::Blocking);
}

void PeerProgram::startEdit(const std::string& path) {
    job_ = std::make_unique<EditJob>(command_, path, workFolder_ + "/" + std::to_string(++jobs_));
    job_->start();
}

// Copying a file of hours takes longer than the host's patience, so nobody waits for it here.
void PeerProgram::stopEdit() {
    if (job_) {
        job_->stop();
        stoppedJobs_.push_back(std::move(job_));
    }
}

int PeerProgram::countFilesBeside(const std::string& path) {
    std::error_code error;
    int count = 0;
    for (std::filesystem::directory_iterator entry(nativePath(path).parent_path(), error), end; !error && entry != end;
         entry.increment(error)) {
        ++count;
    }
    return count;
}

void PeerProgram::say(const std::string& line) {
    std::printf("tesx-peer: %s\n", line.c_str());
    std::fflush(stdout);
}

} // namespace tessera::peer
