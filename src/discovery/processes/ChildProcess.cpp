#include "discovery/processes/ChildProcess.h"

#include "discovery/processes/ChildProcessListener.h"
#include "discovery/processes/WatchedChildren.h"
#include "foundation/threads/FLockGuard.h"
#include "platform/NativePath.h"

#include <optional>
#include <string_view>

namespace tessera {

namespace {

std::u16string_view viewOf(const FString& text) {
    return {text.text16(), static_cast<std::size_t>(text.length())};
}

} // namespace

ChildProcess::ChildProcess(const FNPath& executable, ChildProcessListener* listener, std::uint32_t flags)
    : flags_(flags), executable_(executable), listener_(listener) {}

ChildProcess::~ChildProcess() {
    terminate();
    WatchedChildren::instance().waitIfEmpty();
}

bool ChildProcess::start(const Arguments& arguments, std::int32_t) {
    if (hasProcess() || !launch(arguments)) {
        return false;
    }
    if (listener_ != nullptr) {
        WatchedChildren::instance().add(this);
    }
    return true;
}

bool ChildProcess::startOrShow(const Arguments& arguments) {
    {
        const FLockGuard guard(lock_);
        if (process_ != nullptr) {
            return process_->showWindow();
        }
    }
    return start(arguments, 0);
}

bool ChildProcess::attach() {
    if (hasProcess()) {
        return true;
    }
    const int id = platform::findProcess([this](int, std::string_view baseName) {
        FString name;
        name.assignUtf8(baseName.data(), static_cast<std::int32_t>(baseName.size()));
        return name == executable_.getName();
    });
    platform::Process process = platform::Process::open(id);
    if (!process) {
        return false;
    }
    const FLockGuard guard(lock_);
    process_ = std::make_unique<ProcessHandle>(std::move(process));
    return true;
}

bool ChildProcess::isRunning() const {
    const FLockGuard guard(lock_);
    return process_ != nullptr && process_->isRunning();
}

void ChildProcess::terminate() {
    // Off the list first: a child that is ended here isn't one that has ended by itself.
    if (listener_ != nullptr) {
        WatchedChildren::instance().remove(this);
    }
    const FLockGuard guard(lock_);
    if (process_ != nullptr && process_->isRunning() && (flags_ & kKeepRunning) == 0) {
        process_->kill();
    }
    process_.reset();
}

int ChildProcess::processId() const {
    const FLockGuard guard(lock_);
    return process_ != nullptr ? process_->processId() : -1;
}

bool ChildProcess::hasProcess() const {
    const FLockGuard guard(lock_);
    return process_ != nullptr;
}

bool ChildProcess::launch(const Arguments& arguments) {
    const std::optional<std::string> path = platform::toNativePath(viewOf(executable_.getFullPath()));
    platform::Process process = path ? platform::Process::start(*path, arguments) : platform::Process();
    if (!process) {
        return false;
    }
    const FLockGuard guard(lock_);
    process_ = std::make_unique<ProcessHandle>(std::move(process));
    return true;
}

bool ChildProcess::dropIfEnded() {
    const FLockGuard guard(lock_);
    if (process_ == nullptr || process_->isRunning()) {
        return false;
    }
    process_.reset();
    return true;
}

void ChildProcess::tellEnd() {
    listener_->onChildEnded(*this);
}

} // namespace tessera
