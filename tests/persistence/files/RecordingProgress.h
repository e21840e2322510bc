// A progress display that notes what it is told, and cancels at a given call of advance.
#pragma once

#include "persistence/files/IFileProgress.h"
#include "persistence/files/PathSupport.h"

#include <string>
#include <vector>

namespace tessera {

class RecordingProgress final : public IFileProgress {
public:
    // Counted from 1 over all files; 0 for never.
    int cancelAt = 0;
    std::vector<std::string> events;

    void begin(const FStringRef& text, std::int32_t total) override {
        events.push_back("begin " + utf8Of(text) + " " + std::to_string(total));
    }
    bool advance(std::int32_t done) override {
        events.push_back(std::to_string(done));
        return ++advances_ != cancelAt;
    }
    void end() override { events.push_back("end"); }

private:
    int advances_ = 0;
};

} // namespace tessera
