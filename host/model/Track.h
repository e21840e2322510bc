// Track: events in the order of their start. Main thread.
#pragma once

#include "host/model/Event.h"
#include "host/objects/HostCore.h"
#include "host/objects/HostObject.h"
#include "shell/hostapi/IEventTrack.h"
#include "shell/hostapi/IProjectObject.h"

#include <memory>
#include <string>
#include <vector>

namespace tessera::host {

class Project;

class Track final : public HostObject<Track, UnusedSlots<IProjectObject>, IEventTrack> {
public:
    Track(std::shared_ptr<HostCore> core, std::string name, std::weak_ptr<Project> project);

    const std::string& name() const { return name_; }
    std::shared_ptr<Project> project() const { return project_.lock(); }
    std::vector<std::shared_ptr<Event>> eventsByStart() const;
    bool holds(const Event& event) const;
    double end() const;

    void add(const std::shared_ptr<Event>& event);
    void remove(Event& event);

    std::uint32_t state() override { return 0; }
    IProjectObject* duplicate(std::int64_t unused) override;
    double timelineStart(std::uint64_t scope) override;
    FResult place(double position, double seconds, IUndoStack* undo) override;
    double timelineEnd(std::uint64_t scope) override;
    double clipOffset(std::uint64_t scope) override;
    IProjectObject* parent() override;

private:
    void unusedSlotCalled(const char* interfaceName, int slot) override { reportReserved(interfaceName, slot); }

    const std::string name_;
    const std::weak_ptr<Project> project_;
    std::vector<std::shared_ptr<Event>> events_;
};

} // namespace tessera::host
