#include "host/model/ProjectFile.h"

#include "common/Utf8Path.h"
#include "host/stored/StoredProject.h"
#include "host/stored/StoredText.h"
#include "host/text/HostTexts.h"
#include "host/text/Message.h"
#include "persistence/objects/FObjectDocument.h"
#include "persistence/streams/FMemoryStream.h"

#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <limits>
#include <map>
#include <system_error>
#include <utility>

namespace tessera::host {
namespace {

namespace fs = std::filesystem;
using programs::nativePath;
using programs::utf8Text;

constexpr char kRootTag[] = "TesxProject";
constexpr char kRootName[] = "project";
// What a stream in memory holds.
constexpr std::uintmax_t kMostBytes = std::numeric_limits<std::int32_t>::max();

std::string genericText(const fs::path& path) {
    const std::u8string text = path.generic_u8string();
    return std::string(text.begin(), text.end());
}

// Relative to the project's folder if the file lies inside it.
std::string storedPath(const std::string& path, const fs::path& folder) {
    const fs::path relative = nativePath(path).lexically_relative(folder);
    const bool isInside = !relative.empty() && *relative.begin() != "..";
    return isInside ? genericText(relative) : path;
}

bool isInPool(const AudioPool& pool, const AudioClip& clip) {
    for (const std::shared_ptr<AudioPart>& part : pool.parts()) {
        if (part->ownClip()->path() == clip.path()) {
            return true;
        }
    }
    return false;
}

// Makes the stored form of one project; a text that no document can hold becomes the complaint.
class ProjectSnapshot {
public:
    explicit ProjectSnapshot(const fs::path& folder) : folder_(folder) {}

    FRefPtr<StoredProject> take(Project& project, Transport& transport) {
        auto stored = FRefPtr<StoredProject>::adopt(new StoredProject);
        stored->version = StoredProject::kVersion;
        stored->cycleLeft = transport.cycleLeft().seconds();
        stored->cycleRight = transport.cycleRight().seconds();
        for (const auto& part : project.ownPool().parts()) {
            stored->pool.push_back(takeClip(part->ownClip()->path()));
        }
        for (const auto& track : project.tracks()) {
            stored->tracks.push_back(takeTrack(*track));
        }
        return stored;
    }

    const Complaint& complaint() const { return complaint_; }

private:
    FRefPtr<StoredClip> takeClip(const std::string& path) {
        auto clip = FRefPtr<StoredClip>::adopt(new StoredClip);
        clip->path = checked(storedPath(path, folder_));
        clips_[path] = clip;
        return clip;
    }

    FRefPtr<StoredTrack> takeTrack(const Track& track) {
        auto stored = FRefPtr<StoredTrack>::adopt(new StoredTrack);
        stored->name = checked(track.name());
        for (const auto& event : track.eventsByStart()) {
            stored->events.push_back(takeEvent(*event));
        }
        return stored;
    }

    FRefPtr<StoredEvent> takeEvent(const Event& event) {
        auto stored = FRefPtr<StoredEvent>::adopt(new StoredEvent);
        stored->name = checked(event.name());
        stored->start = event.place().start;
        stored->length = event.place().length;
        if (event.isAudio()) {
            stored->offset = event.place().offset;
            stored->restrictions = event.restrictions();
            stored->clip = clips_[event.ownClip()->path()];
        }
        return stored;
    }

    const std::string& checked(const std::string& text) {
        if (complaint_.empty() && !canBeStored(text)) {
            complaint_ = message(hostTexts.tooLong, text.substr(0, 60));
        }
        return text;
    }

    const fs::path folder_;
    std::map<std::string, FRefPtr<StoredClip>> clips_; // by full path
    Complaint complaint_;
};

// Reads one project; the first thing that is wrong becomes the complaint and ends it.
class ProjectReader {
public:
    ProjectReader(std::shared_ptr<HostCore> core, std::string path, Complaint& complaint)
        : core_(std::move(core)),
          path_(std::move(path)),
          complaint_(complaint),
          folder_(nativePath(path_).parent_path()) {}

    std::shared_ptr<Project> read(Transport& transport) {
        FObjectDocument document;
        StoredProject* const stored = load(document);
        auto project = stored == nullptr ? nullptr : Project::create(core_, utf8Text(folder_));
        if (project == nullptr || !readPool(*stored, *project) || !readTracks(*stored, *project)) {
            return nullptr;
        }
        if (std::isfinite(stored->cycleLeft) && std::isfinite(stored->cycleRight)) {
            transport.cycleLeft().set(stored->cycleLeft);
            transport.cycleRight().set(stored->cycleRight);
        }
        project->setFilePath(path_);
        return project;
    }

private:
    // The path is the first value of all these texts.
    template <class... Values>
    bool complain(TranslatedText& text, const Values&... values) {
        complaint_ = message(text, path_, values...);
        return false;
    }

    bool readBytes(std::string& bytes) {
        const fs::path native = nativePath(path_);
        std::error_code error;
        if (!fs::is_regular_file(native, error)) {
            return complain(hostTexts.projectUnreadable, kProjectExtension);
        }
        const std::uintmax_t size = fs::file_size(native, error);
        if (!error && size > kMostBytes) {
            return complain(hostTexts.projectTooLarge, kProjectExtension);
        }
        std::ifstream file(native, std::ios::binary);
        bytes.resize(error ? 0 : static_cast<std::size_t>(size));
        if (error || !file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()))) {
            return complain(hostTexts.projectUnreadable, kProjectExtension);
        }
        return true;
    }

    // Borrowed from the document.
    StoredProject* load(FObjectDocument& document) {
        std::string bytes;
        if (!readBytes(bytes)) {
            return nullptr;
        }
        const void* const data = bytes.data();
        FMemoryStream stream(data, static_cast<std::int32_t>(bytes.size()));
        auto* const stored =
            document.loadDocument(stream, kRootTag) ? cmCast<StoredProject>(document.getObject(kRootName)) : nullptr;
        if (stored == nullptr) {
            complain(hostTexts.noProjectFile);
            return nullptr;
        }
        if (stored->version != StoredProject::kVersion) {
            complain(hostTexts.otherVersion, StoredProject::kVersion);
            return nullptr;
        }
        return stored;
    }

    bool readPool(const StoredProject& stored, Project& project) {
        for (const FRefPtr<StoredClip>& clip : stored.pool) {
            if (!clip || clip->path.empty()) {
                return complain(hostTexts.poolNeedsPath);
            }
            const std::string file = utf8Text((folder_ / nativePath(clip->path)).lexically_normal());
            std::string error;
            const std::shared_ptr<AudioClip> opened = AudioClip::open(core_, file, &error);
            if (opened == nullptr) {
                return complain(hostTexts.soundUnusable, error);
            }
            parts_[clip.get()] = std::make_shared<AudioPart>(core_, opened);
            project.ownPool().addPart(parts_[clip.get()]);
        }
        return true;
    }

    bool readTracks(const StoredProject& stored, Project& project) {
        for (const FRefPtr<StoredTrack>& track : stored.tracks) {
            if (!track) {
                return complain(hostTexts.noTrack);
            }
            const std::shared_ptr<Track> added = project.addTrack(track->name);
            for (const FRefPtr<StoredEvent>& event : track->events) {
                if (!event || !readEvent(*event, *added)) {
                    return complain(hostTexts.badEvent, added->name());
                }
            }
        }
        return true;
    }

    bool readEvent(const StoredEvent& stored, Track& track) {
        const EventPlace place{stored.start, stored.length, stored.offset};
        const bool hasPlace = std::isfinite(place.start) && std::isfinite(place.length) && std::isfinite(place.offset);
        const auto part = parts_.find(stored.clip.get());
        if (!hasPlace || place.length < 0 || place.offset < 0 || (stored.hasClip && part == parts_.end())) {
            return false;
        }
        const auto event = std::make_shared<Event>(core_, stored.name, place, stored.hasClip ? part->second : nullptr);
        event->setRestrictions(static_cast<std::uint32_t>(stored.restrictions));
        track.add(event);
        return true;
    }

    const std::shared_ptr<HostCore> core_;
    const std::string path_;
    Complaint& complaint_;
    const fs::path folder_;
    std::map<const StoredClip*, std::shared_ptr<AudioPart>> parts_;
};

} // namespace

Complaint saveProject(Project& project, Transport& transport, const std::string& path, SaveSteps& steps) {
    for (const auto& event : project.events()) {
        if (event->isAudio() && !isInPool(project.ownPool(), *event->ownClip())) {
            project.ownPool().addPart(event->part());
        }
    }
    ProjectSnapshot snapshot(nativePath(path).parent_path());
    const FRefPtr<StoredProject> stored = snapshot.take(project, transport);
    if (!snapshot.complaint().empty()) {
        return snapshot.complaint();
    }
    FObjectDocument document;
    FMemoryStream stream;
    std::string reason = message(hostTexts.noMemory);
    if (document.addObject(kRootName, *stored) && document.saveDocument(stream, kRootTag)) {
        reason = safeSave(
            path, {reinterpret_cast<const char*>(stream.getData()), static_cast<std::size_t>(stream.getSize())}, steps);
    }
    if (!reason.empty()) {
        return message(hostTexts.projectNotSaved, path, reason);
    }
    project.setFilePath(path);
    return {};
}

std::shared_ptr<Project> readProject(const std::shared_ptr<HostCore>& core, const std::string& path,
                                     Transport& transport, Complaint* complaint) {
    return ProjectReader(core, path, *complaint).read(transport);
}

} // namespace tessera::host
