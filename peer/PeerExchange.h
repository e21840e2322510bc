// PeerExchange: the peer's half of the conversation with the module, apart from sockets, files and clocks.
//
// It answers what has to be answered, hands one file after the other to the editor, and reports each result once. Three
// rules come from the module's side of the link:
// - The first message that arrives there while it waits counts as the answer to its greeting, so nothing of ours goes
//   out before the first "sendConnectionInfo" is answered. Reports wait until then.
// - A message is lost if its sender leaves before the host has polled it. mayLeave() holds the program back until the
//   host has visibly taken the last report up (the splice begins with a further file in the exchange folder), or 10
//   seconds have gone by.
// - A path in a message ends at no ";" but the last: the format splits there, and the verbs with one path are put
//   together again.
// - The module keeps the range that it first gave out. After an edit that kept the length the file may be edited and
//   reported once more; one that changed the length ends the exchange of its file.
//
// Paths are UTF-8 native texts. Times are milliseconds of any steady clock. Main thread only.
#pragma once

#include "peer/IPeerActions.h"

#include <cstdint>
#include <deque>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace tessera::peer {

enum class EditOutcome { Finished, FinishedAtOtherLength, Failed };

class PeerExchange {
public:
    static constexpr std::int64_t takeUpLimitMs = 10'000;

    explicit PeerExchange(IPeerActions& actions) : actions_(actions) {}

    // A message from the link. Another format, an unknown verb and a verb without its field are passed over.
    void received(std::string_view message);
    // A file that came by the command line or from a second start. A file that waits or is being edited already stays
    // where it is, and one whose exchange has ended is refused.
    void openFile(const std::string& path);
    // The editor has ended, and on success the exchange file holds its result.
    void editEnded(EditOutcome outcome, std::int64_t now);
    // The host's process is gone. What it would have been told is of no use to anybody any more.
    void hostLost();
    // Gives up what is being edited and what waits, and tells the host.
    void giveUp(std::int64_t now);
    // To be called at every turn of the main loop.
    void tick(std::int64_t now);

    bool isGreeted() const { return greeted_; }
    bool isIdle() const { return !editing_ && waiting_.empty() && reports_.empty(); }
    // True when nothing of ours is still on its way to the host.
    bool mayLeave() const { return isIdle() && !takeUp_; }
    int editsEnded() const { return editsEnded_; }

private:
    struct TakeUp {
        std::string path;
        int filesBeside;
        std::int64_t deadline;
    };
    struct Report {
        std::string_view verb;
        std::string path;
    };

    void connectionInfo(const std::vector<std::string>& fields);
    void enqueue(const std::string& path);
    void cancelFile(const std::string& path);
    void startNext();
    void report(std::string_view verb, const std::string& path, std::int64_t now);
    void sendReports(std::int64_t now);

    IPeerActions& actions_;
    bool greeted_ = false;
    std::optional<std::string> editing_;
    std::deque<std::string> waiting_;
    std::deque<Report> reports_;
    std::optional<TakeUp> takeUp_;
    // Files that came back at another length. The host opens a new exchange under such a name only when the user has
    // cleared the folder.
    std::set<std::string> ended_;
    int editsEnded_ = 0;
};

} // namespace tessera::peer
