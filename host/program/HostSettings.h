// HostSettings: what the host remembers from one run to the next, among the settings of the process: the projects used
// last, and how long the command "wait" waits when it isn't told.
//
//   group "Projects"   "1" to "10"   full paths of project files, the newest first
//   group "Wait"       "Seconds"     a float, see kLongestWait
//
// What a file brings that makes no sense counts as missing. Main thread.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace tessera {
struct IDefaultPool;
}

namespace tessera::host {

class HostSettings {
public:
    static constexpr std::size_t kMostProjects = 10;
    static constexpr double kDefaultWait = 60;
    // A day. The shortest is 0.
    static constexpr int kLongestWait = 86'400;

    // The pool outlives this object.
    explicit HostSettings(IDefaultPool& pool) : pool_(pool) {}

    // The newest first; whether they are still there nobody has looked.
    std::vector<std::string> recentProjects() const;
    // From now on the newest. A path that can't be stored (see IDefaultPool), or is no valid UTF-8, is passed over.
    void noteProject(const std::string& path);

    double waitSeconds() const;
    // False, and nothing changed, when nobody can wait so long.
    bool setWaitSeconds(double seconds);

private:
    IDefaultPool& pool_;
};

} // namespace tessera::host
