// Doubles of a host's project: the tree with owner, track and events, the pool, the project object.
#pragma once

#include "shell/hostapi/IAudioEvent.h"
#include "shell/hostapi/IEventTrack.h"
#include "shell/hostapi/IProjectListener.h"
#include "support/host/FakeAudio.h"

#include <map>
#include <tuple>
#include <vector>

namespace tessera::test {

// Any object in the tree, with nothing to it but its place.
template <class... Interfaces>
class FakeTreeObject : public FakeObject<UnusedSlots<IProjectObject>, Interfaces...> {
public:
    explicit FakeTreeObject(IProjectObject* parent = nullptr) : parent_(parent) {}

    std::uint32_t state() override { return state_; }
    IProjectObject* duplicate(std::int64_t) override { return nullptr; }
    double timelineStart(std::uint64_t) override { return 0; }
    FResult place(double, double, IUndoStack*) override { return kResultFailure; }
    double timelineEnd(std::uint64_t) override { return 0; }
    double clipOffset(std::uint64_t) override { return 0; }
    IProjectObject* parent() override { return parent_; }

    void setParent(IProjectObject* parent) { parent_ = parent; }
    void setState(std::uint32_t state) { state_ = state; }

private:
    IProjectObject* parent_;
    std::uint32_t state_ = 0;
};

using FakeMidiPart = FakeTreeObject<>;

class FakeEvent final : public FakeTreeObject<IAudioEvent> {
public:
    // Where it stands and what it plays, in seconds; a stretch of its own for each scope of a range selection.
    struct Stretch {
        double start = 0;
        double end = 0;
        double offset = 0;
    };

    FakeEvent(HostScript& script, FRefPtr<FakePart> part, Stretch stretch)
        : script_(script), part_(part.get()), stretch_(stretch) {}

    void setScope(std::uint64_t scope, Stretch stretch) { scopes_[scope] = stretch; }
    void setPart(IAudioPart* part) { part_ = part; }
    const Stretch& stretch() const { return stretch_; }
    // What it was created as a copy of; null for an original. For identity alone.
    const FakeEvent* original() const { return original_; }

    IAudioPart* audioPart() override { return part_.get(); }
    FResult setAudioPart(std::int64_t, IAudioPart* part, std::int64_t) override {
        if (script_.fails("event.setAudioPart")) {
            return kResultFailure;
        }
        part_ = part;
        return kResultOk;
    }
    IProjectObject* duplicate(std::int64_t) override {
        if (script_.fails("event.duplicate")) {
            return nullptr;
        }
        auto copy = makeFake<FakeEvent>(script_, FRefPtr<FakePart>(), stretch_);
        copy->part_ = part_;
        copy->original_ = this;
        return copy.detach();
    }
    double timelineStart(std::uint64_t scope) override { return at(scope).start; }
    double timelineEnd(std::uint64_t scope) override { return at(scope).end; }
    double clipOffset(std::uint64_t scope) override { return at(scope).offset; }
    FResult place(double position, double seconds, IUndoStack*) override {
        script_.note("event.place(" + std::to_string(position) + ", " + std::to_string(seconds) + ")");
        if (script_.fails("event.place")) {
            return kResultFailure;
        }
        stretch_ = {position, position + seconds, 0};
        return kResultOk;
    }

private:
    const Stretch& at(std::uint64_t scope) const {
        const auto found = scopes_.find(scope);
        return found == scopes_.end() ? stretch_ : found->second;
    }

    HostScript& script_;
    FRefPtr<IAudioPart> part_;
    Stretch stretch_;
    std::map<std::uint64_t, Stretch> scopes_;
    const FakeEvent* original_ = nullptr;
};

class FakeTrack final : public FakeTreeObject<IEventTrack> {
public:
    using FakeTreeObject::FakeTreeObject;

    void add(FakeEvent* event) {
        events.emplace_back(event);
        event->setParent(this);
    }
    bool remove(IProjectObject* event) {
        const auto place = std::ranges::find_if(
            events, [&](const auto& held) { return static_cast<IProjectObject*>(held.get()) == event; });
        if (place == events.end()) {
            return false;
        }
        events.erase(place);
        return true;
    }

    std::vector<FRefPtr<FakeEvent>> events;
};

class FakeEventOwner final : public FakeTreeObject<UnusedSlots<IEventOwner>> {
public:
    IEventTrack* trackOf(IEventTrack* track) override { return track; }
};

class FakePool final : public FakeObject<UnusedSlots<IPool>> {
public:
    explicit FakePool(HostScript& script) : script_(script) {}
    FResult add(IFolderNode* node, std::int64_t) override {
        if (script_.fails("pool.add")) {
            return kResultFailure;
        }
        nodes.emplace_back(node);
        return kResultOk;
    }
    std::vector<FRefPtr<IFolderNode>> nodes;

private:
    HostScript& script_;
};

class FakeTimeline final : public FakeObject<UnusedSlots<IProjectTimeline>> {
public:
    void itemStart(std::uint32_t itemId, double* start) override {
        if (ranges.contains(itemId)) {
            *start = ranges[itemId].first;
        }
    }
    void itemRange(std::uint32_t itemId, double* start, double* end) override {
        if (ranges.contains(itemId)) {
            std::tie(*start, *end) = ranges[itemId];
        }
    }
    std::map<std::uint32_t, std::pair<double, double>> ranges;
};

class FakeProject final : public FakeObject<UnusedSlots<IProject>> {
public:
    FakeProject(AudioStore& store, HostScript& script, std::u16string projectFolder)
        : script_(script),
          pool_(makeFake<FakePool>(script)),
          root_(makeFake<FakeTimeline>()),
          folder_(makeFake<FakeFile>(store, script, projectFolder)),
          file_(makeFake<FakeFile>(store, script, projectFolder + u"/song.project")) {}

    FResult queryInterface(const FUIDBytes& uid, void** out) override {
        return uid == IProjectObject::iid ? object_->queryInterface(uid, out) : FakeObject::queryInterface(uid, out);
    }
    IHostFile* folder() override { return script_.fails("project.folder") ? nullptr : folder_.get(); }
    IHostFile* file() override { return saved ? file_.get() : nullptr; }
    IPool* pool() override { return script_.fails("project.pool") ? nullptr : pool_.get(); }
    IProjectTimeline* root() override { return root_.get(); }
    double positionOf(IProjectObject* event) override { return event->timelineStart(0); }
    FResult addProjectListener(IProjectListener* listener) override {
        listeners.push_back(listener);
        return kResultOk;
    }
    FResult removeProjectListener(IProjectListener* listener) override {
        return std::erase(listeners, listener) != 0 ? kResultOk : kResultFalse;
    }

    // The project as an object of its own tree; what observers are added for.
    IProjectObject* object() { return object_.get(); }
    FakePool& fakePool() { return *pool_; }
    FakeTimeline* timeline() { return root_.get(); }
    void replaceRoot() { root_ = makeFake<FakeTimeline>(); }
    void removeRoot() { root_.reset(); }

    bool saved = true;
    std::vector<IProjectListener*> listeners;

private:
    HostScript& script_;
    FRefPtr<FakeMidiPart> object_ = makeFake<FakeMidiPart>();
    FRefPtr<FakePool> pool_;
    FRefPtr<FakeTimeline> root_;
    FRefPtr<FakeFile> folder_;
    FRefPtr<FakeFile> file_;
};

} // namespace tessera::test
