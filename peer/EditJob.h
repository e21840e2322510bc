// EditJob: one run of the editor on one file of the exchange folder, on a thread of its own, so that the link is
// answered however long the editor takes.
//
// The editor never sees the exchange file: it works on copies in a folder of this job. What it gives back is checked
// (it opens, at the same rate and with the same channels), converted back if only the container or sample format
// differs, and then replaces the exchange file by a rename. So the module reads the old sound or the new one, and never
// half of either. When the result is refused, it stays where it is, and the message says where.
#pragma once

#include "foundation/threads/FThread.h"
#include "peer/EditorCommand.h"
#include "peer/SoundFacts.h"

#include <atomic>
#include <string>

namespace tessera::peer {

class EditJob final : public FThread {
public:
    // The work folder needn't exist; it belongs to this job. All paths are UTF-8.
    EditJob(EditorCommand command, std::string exchangeFile, std::string workFolder);
    // Ends the editor if it runs, and waits for the thread.
    ~EditJob() override;

    // Ends the editor if it runs, and waits for nothing: the thread ends when it is done with the file that it copies
    // or converts, and the exchange file stays as it is.
    void stop() { stop_ = true; }
    // True once the thread has done all it does; the three below may be asked then.
    bool hasEnded() const { return ended_.load(std::memory_order_acquire); }
    bool succeeded() const { return problem_.empty(); }
    // Whether the result has as many frames as the file that the editor was given.
    bool keptLength() const { return keptLength_; }
    // One line for the user: what was wrong, where, and what to do.
    const std::string& problem() const { return problem_; }

    std::uint32_t run() override;

private:
    bool edit();
    bool prepareCopies();
    bool runEditor();
    bool checkResult();
    bool publish();
    bool fail(std::string problem);

    const EditorCommand command_;
    const std::string exchangeFile_;
    const std::string workFolder_;
    std::string original_;
    SoundFacts wanted_; // of the original, as the editor is to keep them
    std::string edited_;
    std::string problem_;
    bool keptLength_ = true;
    bool keepWork_ = false;
    std::atomic<bool> stop_{false};
    std::atomic<bool> ended_{false};
};

} // namespace tessera::peer
