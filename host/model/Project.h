// Project: tracks, a pool and a folder with the folder "Audio" in it. Made by create(), owned by the project list.
//
// Events are numbered from 1, track by track and in the order of their start. A change is noted, and told to those who
// listen when the host has a quiet moment: in the middle of an undo block an event may stand nowhere for a moment.
// Main thread.
#pragma once

#include "host/model/AudioPool.h"
#include "host/model/HostFile.h"
#include "host/model/ProjectTimeline.h"
#include "host/model/Track.h"
#include "host/objects/HostCore.h"
#include "host/objects/HostObject.h"
#include "shell/hostapi/IEventOwner.h"
#include "shell/hostapi/IProject.h"
#include "shell/hostapi/IProjectListener.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tessera::host {

class Project final
    : public HostObject<Project, UnusedSlots<IProject>, UnusedSlots<IProjectObject>, UnusedSlots<IEventOwner>> {
public:
    static std::shared_ptr<Project> create(const std::shared_ptr<HostCore>& core, const std::string& folder);
    // For create() alone.
    Project(std::shared_ptr<HostCore> core, const std::string& folder);

    const std::string& folderPath() const { return folder_->pathText(); }
    // The file that it was saved in last; empty before.
    std::string filePath() const { return file_ == nullptr ? std::string() : file_->pathText(); }
    void setFilePath(const std::string& path);

    const std::vector<std::shared_ptr<Track>>& tracks() const { return tracks_; }
    std::shared_ptr<Track> addTrack(const std::string& name);
    AudioPool& ownPool() { return *pool_; }
    std::vector<std::shared_ptr<Event>> events() const;
    // Null for a number that no event has.
    std::shared_ptr<Event> eventByNumber(int number) const;
    int numberOf(const Event& event) const;
    double end() const;

    void noteChange() { changed_ = true; }
    bool takeChange() { return std::exchange(changed_, false); }
    void tellListeners();

    IHostFile* folder() override { return guestMay("folder") ? folder_.get() : nullptr; }
    IHostFile* file() override { return guestMay("file") ? file_.get() : nullptr; }
    IPool* pool() override { return guestMay("pool") ? pool_.get() : nullptr; }
    IProjectTimeline* root() override { return guestMay("root") ? root_.get() : nullptr; }
    double positionOf(IProjectObject* event) override;
    FResult addProjectListener(IProjectListener* listener) override;
    FResult removeProjectListener(IProjectListener* listener) override;

    std::uint32_t state() override { return 0; }
    IProjectObject* duplicate(std::int64_t unused) override;
    double timelineStart(std::uint64_t scope) override;
    FResult place(double position, double seconds, IUndoStack* undo) override;
    double timelineEnd(std::uint64_t scope) override;
    double clipOffset(std::uint64_t scope) override;
    IProjectObject* parent() override;

    IEventTrack* trackOf(IEventTrack* eventTrack) override;

private:
    void unusedSlotCalled(const char* interfaceName, int slot) override { reportReserved(interfaceName, slot); }

    const std::shared_ptr<HostCore> core_;
    const std::shared_ptr<HostFile> folder_;
    const std::shared_ptr<AudioPool> pool_;
    std::shared_ptr<HostFile> file_;
    std::shared_ptr<ProjectTimeline> root_;
    std::vector<std::shared_ptr<Track>> tracks_;
    std::vector<IProjectListener*> listeners_;
    bool changed_ = false;
};

} // namespace tessera::host
