#include "host/program/LineReader.h"

#include <thread>
#include <utility>

namespace tessera::host {

LineReader::LineReader(std::istream& stream) {
    std::thread([shared = shared_, &stream] {
        for (std::string line; std::getline(stream, line);) {
            const std::lock_guard guard(shared->lock);
            shared->lines.push_back(std::move(line));
            line = {};
        }
        const std::lock_guard guard(shared->lock);
        shared->ended = true;
    }).detach();
}

std::optional<std::string> LineReader::take() {
    const std::lock_guard guard(shared_->lock);
    if (shared_->lines.empty()) {
        return std::nullopt;
    }
    std::string line = std::move(shared_->lines.front());
    shared_->lines.pop_front();
    return line;
}

bool LineReader::isAtEnd() const {
    const std::lock_guard guard(shared_->lock);
    return shared_->ended && shared_->lines.empty();
}

} // namespace tessera::host
