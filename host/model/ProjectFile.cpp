#include "host/model/ProjectFile.h"

#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <optional>
#include <utility>

namespace tessera::host {
namespace {

using Json = nlohmann::ordered_json;
namespace fs = std::filesystem;

constexpr char kFormat[] = "tesx-host project";
constexpr int kVersion = 1;

// Relative to the project's folder if the file lies inside it.
std::string storedPath(const std::string& path, const fs::path& folder) {
    const fs::path relative = fs::path(path).lexically_relative(folder);
    const bool isInside = !relative.empty() && *relative.begin() != "..";
    return isInside ? relative.generic_string() : path;
}

int placeInPool(const std::vector<std::shared_ptr<AudioPart>>& parts, const AudioClip* clip) {
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (parts[i]->ownClip()->path() == clip->path()) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

Json eventJson(const Event& event, const std::vector<std::shared_ptr<AudioPart>>& parts) {
    Json json = {{"name", event.name()}};
    if (event.isAudio()) {
        json["clip"] = placeInPool(parts, event.ownClip());
    }
    json["start"] = event.place().start;
    json["length"] = event.place().length;
    if (event.isAudio()) {
        json["offset"] = event.place().offset;
        json["restrictions"] = event.restrictions();
    }
    return json;
}

// Reads one project; the first thing that is wrong becomes the complaint and ends it.
class ProjectReader {
public:
    ProjectReader(std::shared_ptr<HostCore> core, std::string path, Complaint& complaint)
        : core_(std::move(core)),
          path_(std::move(path)),
          complaint_(complaint),
          folder_(fs::absolute(path_).parent_path()) {}

    std::shared_ptr<Project> read(Transport& transport) {
        const std::optional<Json> json = parse();
        if (!json) {
            return nullptr;
        }
        auto project = Project::create(core_, folder_.string());
        if (!readPool(*json, *project) || !readTracks(*json, *project)) {
            return nullptr;
        }
        readCycle(*json, transport);
        project->setFilePath(fs::absolute(path_).string());
        return project;
    }

private:
    bool complain(const std::string& text) {
        complaint_ = "\"" + path_ + "\" " + text;
        return false;
    }

    std::optional<Json> parse() {
        std::ifstream file(path_, std::ios::binary);
        const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
        if (!file) {
            complain("can't be read; give the path of a project file (" + std::string(kProjectExtension) + ")");
            return std::nullopt;
        }
        Json json = Json::parse(text, nullptr, false);
        if (!json.is_object() || json.value("format", Json()) != kFormat) {
            complain("is no project of tesx-host; make one with: new FOLDER SOUNDFILE...");
            return std::nullopt;
        }
        if (json.value("version", Json()) != kVersion) {
            complain("was written by another version of tesx-host; expected version 1");
            return std::nullopt;
        }
        return json;
    }

    bool readPool(const Json& json, Project& project) {
        const Json pool = json.value("pool", Json::array());
        for (const Json& entry : pool) {
            if (!entry.is_string()) {
                return complain("names something in its pool that is no path; mend the file by hand");
            }
            const std::string file = (folder_ / entry.get<std::string>()).lexically_normal().string();
            std::string error;
            const std::shared_ptr<AudioClip> clip = AudioClip::open(core_, file, &error);
            if (clip == nullptr) {
                return complain("needs a sound file that can't be used: " + error);
            }
            project.ownPool().addPart(std::make_shared<AudioPart>(core_, clip));
        }
        return true;
    }

    bool readTracks(const Json& json, Project& project) {
        for (const Json& track : json.value("tracks", Json::array())) {
            if (!track.is_object()) {
                return complain("holds a track that is no object; mend the file by hand");
            }
            const std::shared_ptr<Track> added = project.addTrack(text(track, "name"));
            for (const Json& event : track.value("events", Json::array())) {
                if (!event.is_object() || !readEvent(event, project, *added)) {
                    return complain(
                        "holds an event on track \"" + added->name() +
                        "\" without a clip of the pool or with times that are no numbers; mend the file by hand");
                }
            }
        }
        return true;
    }

    bool readEvent(const Json& json, Project& project, Track& track) {
        const std::optional<double> start = number(json, "start");
        const std::optional<double> length = number(json, "length");
        const std::optional<double> offset = json.contains("offset") ? number(json, "offset") : 0.0;
        if (!start || !length || !offset || *length < 0 || *offset < 0) {
            return false;
        }
        std::shared_ptr<AudioPart> part;
        if (json.contains("clip")) {
            const auto& parts = project.ownPool().parts();
            const Json clip = json["clip"];
            if (!clip.is_number_unsigned() || clip.get<std::size_t>() >= parts.size()) {
                return false;
            }
            part = parts[clip.get<std::size_t>()];
        }
        const auto event =
            std::make_shared<Event>(core_, text(json, "name"), EventPlace{*start, *length, *offset}, part);
        event->setRestrictions(static_cast<std::uint32_t>(number(json, "restrictions").value_or(0)));
        track.add(event);
        return true;
    }

    void readCycle(const Json& json, Transport& transport) {
        const Json cycle = json.value("cycle", Json());
        if (cycle.is_array() && cycle.size() == 2 && cycle[0].is_number() && cycle[1].is_number()) {
            transport.cycleLeft().set(cycle[0].get<double>());
            transport.cycleRight().set(cycle[1].get<double>());
        }
    }

    static std::string text(const Json& json, const char* key) {
        const Json value = json.value(key, Json());
        return value.is_string() ? value.get<std::string>() : std::string();
    }
    static std::optional<double> number(const Json& json, const char* key) {
        const Json value = json.value(key, Json());
        const double result = value.is_number() ? value.get<double>() : NAN;
        return std::isfinite(result) ? std::optional<double>(result) : std::nullopt;
    }

    const std::shared_ptr<HostCore> core_;
    const std::string path_;
    Complaint& complaint_;
    const fs::path folder_;
};

} // namespace

Complaint saveProject(Project& project, Transport& transport, const std::string& path, SaveSteps& steps) {
    const fs::path folder = fs::absolute(path).parent_path();
    // Every clip that an event plays has its place in the pool.
    for (const auto& event : project.events()) {
        if (event->isAudio() && placeInPool(project.ownPool().parts(), event->ownClip()) < 0) {
            project.ownPool().addPart(event->part());
        }
    }
    const auto& parts = project.ownPool().parts();
    Json json = {{"format", kFormat}, {"version", kVersion}};
    json["pool"] = Json::array();
    for (const auto& part : parts) {
        json["pool"].push_back(storedPath(part->ownClip()->path(), folder));
    }
    json["cycle"] = {transport.cycleLeft().seconds(), transport.cycleRight().seconds()};
    json["tracks"] = Json::array();
    for (const auto& track : project.tracks()) {
        Json events = Json::array();
        for (const auto& event : track->eventsByStart()) {
            events.push_back(eventJson(*event, parts));
        }
        json["tracks"].push_back({{"name", track->name()}, {"events", std::move(events)}});
    }
    const std::string content = json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
    const std::string reason = safeSave(path, content, steps);
    if (!reason.empty()) {
        return "\"" + path + "\" can't be saved (" + reason + "); what was there is unchanged, save to another place";
    }
    project.setFilePath(fs::absolute(path).string());
    return {};
}

std::shared_ptr<Project> readProject(const std::shared_ptr<HostCore>& core, const std::string& path,
                                     Transport& transport, Complaint* complaint) {
    return ProjectReader(core, path, *complaint).read(transport);
}

} // namespace tessera::host
