// safeSave: puts new content in the place of a file so that a crash at any moment loses neither the old nor the new.
//
// The content goes to a file beside the old one, under a name that nothing had ("<name>.part"), is handed to the
// storage, and takes the old one's name in a single step. A failure before that leaves the old file as it was, and
// takes the new one away where it can. The steps are an interface so that tests can let each of them fail.
#pragma once

#include <string>
#include <string_view>

namespace tessera::host {

class SaveSteps {
public:
    virtual ~SaveSteps() = default;
    // Each gives the reason of its failure, empty for success.
    virtual std::string writeAndFlush(const std::string& path, std::string_view content) = 0;
    virtual std::string rename(const std::string& from, const std::string& to) = 0;
    virtual void remove(const std::string& path) = 0;
};

// The steps on the real file system.
SaveSteps& platformSaveSteps();

// Empty, or why the file is still the old one.
std::string safeSave(const std::string& path, std::string_view content, SaveSteps& steps = platformSaveSteps());

} // namespace tessera::host
