// LineReader: the lines of a stream, read by a thread of its own, so that the main loop goes on while a user thinks.
//
// The stream outlives the process's end, as standard input does: the thread is left behind in its read when nobody
// wants more lines.
#pragma once

#include <deque>
#include <istream>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace tessera::host {

class LineReader {
public:
    explicit LineReader(std::istream& stream);

    // The next line if one has come.
    std::optional<std::string> take();
    // No line will come any more.
    bool isAtEnd() const;

private:
    struct Shared {
        std::mutex lock; // guards both
        std::deque<std::string> lines;
        bool ended = false;
    };

    const std::shared_ptr<Shared> shared_ = std::make_shared<Shared>();
};

} // namespace tessera::host
