#include "peer/PeerExchange.h"

#include "link/WireMessage.h"

#include <algorithm>

namespace tessera::peer {
namespace {

// What it says isn't looked at, but a message without bytes would count as none.
constexpr std::string_view kAnswer = "ok";

std::string joinedPath(const FieldList& fields) {
    std::string path = fields[2];
    for (std::size_t i = 3; i < fields.size(); ++i) {
        path += ';';
        path += fields[i];
    }
    return path;
}

} // namespace

void PeerExchange::received(std::string_view message) {
    const FieldList fields = readMessage(message);
    if (fields.size() < 2 || !hasCurrentVersion(fields)) {
        return;
    }
    const std::string& verb = fields[1];
    if (verb == WireVerb::sendConnectionInfo) {
        connectionInfo(fields);
    } else if (verb == WireVerb::suspendKiteDriver) {
        // This program never holds the driver, so the host may have it at once.
        actions_.send(kAnswer);
    } else if (fields.size() > 2 && verb == WireVerb::openFile) {
        ended_.erase(joinedPath(fields));
        enqueue(joinedPath(fields));
    } else if (fields.size() > 2 && verb == WireVerb::cancelFileEdit) {
        cancelFile(joinedPath(fields));
    } else if (fields.size() > 2 && verb == WireVerb::renderedFile) {
        actions_.say("the host has rendered " + joinedPath(fields));
    }
}

void PeerExchange::connectionInfo(const FieldList& fields) {
    actions_.send(kAnswer);
    const bool leaving = fields.size() > 4 && fields[4] == "false";
    const std::string name = fields.size() > 3 ? fields[2] + " " + fields[3] : "the host";
    if (leaving) {
        actions_.say(name + " is leaving");
        hostLost();
        return;
    }
    greeted_ = true;
    actions_.say("linked with " + name);
}

void PeerExchange::openFile(const std::string& path) {
    if (ended_.contains(path)) {
        actions_.say("the edit of " + path + " has ended, as it changed the length; start it in the host once more");
        return;
    }
    enqueue(path);
}

void PeerExchange::enqueue(const std::string& path) {
    if (path.empty() || editing_ == path || std::find(waiting_.begin(), waiting_.end(), path) != waiting_.end()) {
        return;
    }
    waiting_.push_back(path);
    startNext();
}

void PeerExchange::cancelFile(const std::string& path) {
    std::erase(waiting_, path);
    std::erase_if(reports_, [&](const Report& report) { return report.path == path; });
    if (editing_ == path) {
        actions_.stopEdit();
        actions_.say("the host has given up " + path);
        editing_.reset();
        ++editsEnded_;
        startNext();
    }
}

void PeerExchange::startNext() {
    if (editing_ || waiting_.empty()) {
        return;
    }
    editing_ = std::move(waiting_.front());
    waiting_.pop_front();
    actions_.say("editing " + *editing_);
    actions_.startEdit(*editing_);
}

void PeerExchange::editEnded(EditOutcome outcome, std::int64_t now) {
    if (!editing_) {
        return;
    }
    const std::string path = std::move(*editing_);
    editing_.reset();
    ++editsEnded_;
    if (outcome == EditOutcome::FinishedAtOtherLength) {
        ended_.insert(path);
    }
    report(outcome == EditOutcome::Failed ? WireVerb::cancelFileEdit : WireVerb::finishedFileEdit, path, now);
    startNext();
}

void PeerExchange::report(std::string_view verb, const std::string& path, std::int64_t now) {
    reports_.push_back({verb, path});
    if (!greeted_) {
        actions_.say("waiting for the host to tell it of " + path);
    }
    sendReports(now);
}

void PeerExchange::sendReports(std::int64_t now) {
    while (greeted_ && !reports_.empty()) {
        const Report report = std::move(reports_.front());
        reports_.pop_front();
        takeUp_ = TakeUp{report.path, actions_.countFilesBeside(report.path), now + takeUpLimitMs};
        actions_.send(writeMessage({report.verb, report.path}));
        actions_.say((report.verb == WireVerb::finishedFileEdit ? "reported as finished: " : "reported as given up: ") +
                     report.path);
    }
}

void PeerExchange::hostLost() {
    greeted_ = false;
    takeUp_.reset();
    if (editing_) {
        actions_.stopEdit();
        editing_.reset();
        ++editsEnded_;
    }
    waiting_.clear();
    reports_.clear();
    ended_.clear();
}

void PeerExchange::giveUp(std::int64_t now) {
    waiting_.clear();
    if (!editing_) {
        return;
    }
    actions_.stopEdit();
    editEnded(EditOutcome::Failed, now);
}

void PeerExchange::tick(std::int64_t now) {
    sendReports(now);
    if (takeUp_ && (now >= takeUp_->deadline || actions_.countFilesBeside(takeUp_->path) > takeUp_->filesBeside)) {
        takeUp_.reset();
    }
}

} // namespace tessera::peer
