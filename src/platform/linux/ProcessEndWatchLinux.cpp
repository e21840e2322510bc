#include "platform/ProcessEndWatch.h"

#include "platform/linux/ProcessFile.h"
#include "platform/linux/ProcessWatcher.h"

#include <utility>

namespace tessera::platform {

ProcessEndWatch::~ProcessEndWatch() {
    stop();
}

bool ProcessEndWatch::start(int processId, std::function<void()> ended) {
    stop();
    const int file = openProcessFile(processId);
    if (file == -1) {
        return false;
    }
    watch_ = ProcessWatcher::instance().add(file, std::move(ended));
    return watch_ != ProcessWatcher::kNoKey;
}

void ProcessEndWatch::stop() {
    if (watch_ != 0) {
        ProcessWatcher::instance().remove(std::exchange(watch_, 0));
    }
}

} // namespace tessera::platform
