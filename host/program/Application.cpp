#include "host/program/Application.h"

#include "appservices/defaults/FGlobalDefaultPool.h"
#include "common/Utf8Path.h"
#include "host/model/AudioClipAccess.h"
#include "host/model/AudioMix.h"
#include "host/model/AudioWriterFactory.h"
#include "host/model/ProjectFile.h"
#include "host/program/ComplaintOf.h"
#include "host/services/ObjectTest.h"
#include "host/text/HostTexts.h"
#include "host/text/Message.h"
#include "host/undo/PlaceChange.h"
#include "platform/TemporaryFolder.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <ostream>
#include <system_error>
#include <thread>
#include <utility>

namespace tessera::host {
namespace {

namespace fs = std::filesystem;
using programs::nativePath;
using programs::utf8Text;

constexpr char kEditCategory[] = "Tessera Exchange";
constexpr char kEditName[] = "Edit in Tessera";
constexpr std::chrono::milliseconds kTurnPause{5};

std::string noSuchEvent(int number, const Project& project) {
    return message(hostTexts.noSuchEvent, number, project.events().size());
}

std::string counted(std::size_t count, const std::string& thing) {
    return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
}

// The project file in a folder, or empty.
std::string projectIn(const std::string& folder) {
    const fs::path::string_type extension = fs::path(kProjectExtension).native();
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(nativePath(folder), error)) {
        if (entry.path().native().ends_with(extension)) {
            return utf8Text(entry.path());
        }
    }
    return {};
}

// Empty with a complaint where the path is empty, or told from a folder that isn't there any more.
std::string fullPath(const std::string& path, Complaint& complaint) {
    std::error_code error;
    const fs::path full = fs::absolute(nativePath(path), error);
    if (error) {
        complaint = message(hostTexts.pathUnusable, path, error.message());
        return {};
    }
    return utf8Text(full.lexically_normal());
}

// A closing slash would leave the folder without a name, and its project file, too.
std::string fullFolderPath(const std::string& path, Complaint& complaint) {
    const fs::path full = nativePath(fullPath(path, complaint));
    return utf8Text(full.has_filename() || !full.has_relative_path() ? full : full.parent_path());
}

// What a save would take from the user: a file that is no project, by its name. A folder is never replaced.
bool isOtherFile(const std::string& path) {
    std::error_code ignored;
    const fs::file_status status = fs::status(nativePath(path), ignored);
    return !path.ends_with(kProjectExtension) && fs::exists(status) && !fs::is_directory(status);
}

// Edits come back into it.
std::error_code makeAudioFolder(const std::string& projectFolder) {
    std::error_code error;
    fs::create_directories(nativePath(projectFolder) / "Audio", error);
    return error;
}

std::shared_ptr<AudioClip> openClip(const std::shared_ptr<HostCore>& core, const std::string& path,
                                    Complaint& complaint) {
    const std::string file = fullPath(path, complaint);
    return file.empty() ? nullptr : AudioClip::open(core, file, &complaint);
}

} // namespace

Application::Application(const ApplicationSettings& settings)
    : core_(std::make_shared<HostCore>()), out_(*settings.out), settings_(*FGlobalDefaultPool::getInstance()) {
    core_->note = [this](const std::string& line) { say(line); };
    // In English: it is for the makers of modules, and may come from any thread, while another language is chosen.
    core_->watch->setListener([this](const std::string& text) { say("misuse by the module: " + text); });
    projects_ = std::make_shared<ProjectList>(core_);
    selection_ = std::make_shared<Selection>(core_);
    undo_ = std::make_shared<UndoStack>(core_);
    transport_ = std::make_shared<Transport>(core_);
    commands_ = std::make_shared<CommandTable>(core_);
    commandTarget_ = std::make_shared<CommandTarget>(core_, commands_);
    driver_ = std::make_shared<DriverArbiter>(core_);
    idle_ = std::make_shared<IdleHost>(core_);
    alerts_ = std::make_shared<AlertHost>(core_);
    exports_ = std::make_shared<ExportHost>(core_);
    registry_ = std::make_shared<ObjectRegistry>(core_);
    context_ = std::make_shared<HostContext>(core_, settings.name, settings.version, [this](const std::string& path) {
        const Complaint complaint = complaintOf([&] { return openProject(path); });
        if (!complaint.empty()) {
            say(message(hostTexts.projectNotOpened, complaint));
        }
        return complaint.empty();
    });
    enterServices();
}

// The guest's singletons may outlive this object and still hold the watch: nothing of ours is reached through it then.
Application::~Application() {
    setProject(nullptr);
    stopModule();
    module_.reset();
    core_->watch->stopRetiring();
    core_->watch->setListener(nullptr);
    core_->note = [](const std::string&) {};
}

void Application::enterServices() {
    context_->addService<ISelection>(selection_);
    context_->addService<IUndoStack>(undo_);
    context_->addService<ITransport>(transport_);
    context_->addService<ICommandTable>(commands_);
    context_->addService<ICommandTarget>(commandTarget_);
    context_->addService<IDriverArbiter>(driver_);
    context_->addService<IIdleHost>(idle_);
    context_->addService<IAlertHost>(alerts_);
    context_->addService<IExportHost>(exports_);
    context_->addService<IProjectList>(projects_);
    context_->addService<IObjectRegistry>(registry_);
    context_->addService<IObjectTest>(std::make_shared<ObjectTest>(core_));
    const std::shared_ptr<HostCore> core = core_;
    context_->addMaker<IUrlFactory>([core] { return std::make_shared<HostFile>(core); });
    context_->addMaker<IAudioClipAccess>([core] { return std::make_shared<AudioClipAccess>(core); });
    context_->addMaker<IAudioClipFactory>([core] { return std::make_shared<AudioPart>(core); });
    context_->addMaker<IAudioWriterFactory>([core] { return std::make_shared<AudioWriterFactory>(core); });
}

void Application::say(const std::string& line) {
    out_ << line << std::endl;
}

Complaint Application::loadModule(const std::string& path) {
    if (module_ != nullptr) {
        return message(hostTexts.moduleLoaded);
    }
    Complaint complaint;
    module_ = GuestModule::load(core_->watch, context_->unknown(), path, &complaint);
    return module_ == nullptr ? complaint : startModule();
}

Complaint Application::startModule() {
    if (module_ == nullptr) {
        return message(hostTexts.noModuleLoaded);
    }
    const Complaint complaint = module_->start();
    settle();
    if (complaint.empty()) {
        say(message(hostTexts.moduleStarted, module_->title()));
    }
    return complaint;
}

Complaint Application::stopModule() {
    if (module_ == nullptr || !module_->isRunning()) {
        return message(hostTexts.noModuleRuns);
    }
    module_->stop();
    undo_->forgetGuest();
    core_->watch->bury();
    for (const GuestWatch::Held& held : core_->watch->held()) {
        core_->watch->misuse(held.className + " is still held after terminate, " +
                             counted(static_cast<std::size_t>(held.references), "reference"));
    }
    return {};
}

void Application::setProject(std::shared_ptr<Project> project) {
    selection_->clear();
    projects_->setActive(std::move(project));
    undo_->setProject(projects_->active());
    hasUnsavedChanges_ = false;
    settle();
}

std::shared_ptr<AudioPart> Application::partOf(AudioPool& pool, const std::shared_ptr<AudioClip>& clip) {
    std::shared_ptr<AudioPart> part = pool.find(*clip);
    if (part == nullptr) {
        part = std::make_shared<AudioPart>(core_, clip);
        pool.addPart(part);
    }
    return part;
}

Complaint Application::newProject(const std::string& folder, const std::vector<std::string>& soundFiles) {
    if (hasUnsavedChanges_) {
        return message(hostTexts.unsavedChanges);
    }
    Complaint complaint;
    const std::string path = fullFolderPath(folder, complaint);
    if (path.empty()) {
        return complaint;
    }
    if (const std::string there = projectIn(path); !there.empty()) {
        return message(hostTexts.folderHoldsProject, path, there);
    }
    if (const std::error_code error = makeAudioFolder(path)) {
        return message(hostTexts.folderNotMade, path, error.message());
    }
    const auto project = Project::create(core_, path);
    const std::shared_ptr<Track> track = project->addTrack(message(hostTexts.trackName, 1));
    for (const std::string& file : soundFiles) {
        const std::shared_ptr<AudioClip> clip = openClip(core_, file, complaint);
        if (clip == nullptr) {
            return complaint;
        }
        const std::shared_ptr<AudioPart> part = partOf(project->ownPool(), clip);
        const EventPlace place{track->end(), clip->seconds(), 0};
        track->add(std::make_shared<Event>(core_, utf8Text(nativePath(file).filename()), place, part));
    }
    setProject(project);
    hasUnsavedChanges_ = true;
    return {};
}

Complaint Application::openProject(const std::string& path) {
    Complaint complaint;
    const std::string file = fullPath(path, complaint);
    if (file.empty()) {
        return complaint;
    }
    if (project() != nullptr && project()->filePath() == file) {
        return {};
    }
    if (hasUnsavedChanges_) {
        return message(hostTexts.unsavedChanges);
    }
    const std::shared_ptr<Project> project = readProject(core_, file, *transport_, &complaint);
    if (project != nullptr) {
        // A copy of a project may come without it, as it was empty; one that can't be written to opens all the same.
        if (const std::error_code error = makeAudioFolder(project->folderPath())) {
            say(message(hostTexts.noAudioFolder, project->folderPath(), error.message()));
        }
        setProject(project);
        settings_.noteProject(file);
    }
    return complaint;
}

Complaint Application::saveProject(const std::string& path) {
    if (project() == nullptr) {
        return message(hostTexts.noProject);
    }
    Complaint complaint;
    std::string file = path.empty() ? project()->filePath() : fullPath(path, complaint);
    if (!complaint.empty()) {
        return complaint;
    }
    if (file.empty()) {
        const fs::path folder = nativePath(project()->folderPath());
        file = utf8Text(folder / folder.filename()) + kProjectExtension;
    }
    if (file != project()->filePath() && isOtherFile(file)) {
        return message(hostTexts.savedOverOther, file, kProjectExtension);
    }
    complaint = host::saveProject(*project(), *transport_, file);
    if (complaint.empty()) {
        hasUnsavedChanges_ = false;
        settings_.noteProject(file);
        say(message(hostTexts.saved, file));
    }
    return complaint;
}

Complaint Application::closeProject() {
    if (project() == nullptr) {
        return message(hostTexts.noProject);
    }
    setProject(nullptr);
    return {};
}

std::shared_ptr<Track> Application::trackByNumber(int number) {
    const auto count = static_cast<int>(project()->tracks().size());
    if (number >= 1 && number <= count) {
        return project()->tracks()[static_cast<std::size_t>(number - 1)];
    }
    return number == count + 1 ? project()->addTrack(message(hostTexts.trackName, number)) : nullptr;
}

Complaint Application::addSound(const std::string& path, const NewEventPlace& wanted) {
    if (project() == nullptr) {
        return message(hostTexts.noProject);
    }
    Complaint complaint;
    const std::shared_ptr<AudioClip> clip = openClip(core_, path, complaint);
    if (clip == nullptr) {
        return complaint;
    }
    const double offset = wanted.offset.value_or(0);
    const double length = wanted.length.value_or(clip->seconds() - offset);
    if (!(offset >= 0) || !(length > 0) || offset + length > clip->seconds() + 1e-9) {
        return message(hostTexts.stretchNotInFile, offset, length, path, clip->seconds());
    }
    const std::shared_ptr<Track> track = trackByNumber(wanted.track);
    if (track == nullptr) {
        return message(hostTexts.noSuchTrack, wanted.track, project()->tracks().size() + 1);
    }
    const std::shared_ptr<AudioPart> part = partOf(project()->ownPool(), clip);
    const EventPlace place{wanted.start.value_or(track->end()), length, offset};
    undo_->addEventTo(track, std::make_shared<Event>(core_, utf8Text(nativePath(path).filename()), place, part));
    undo_->commitBlock(message(hostTexts.addEvent));
    settle();
    return {};
}

Complaint Application::addNotes(const NewEventPlace& wanted) {
    if (project() == nullptr) {
        return message(hostTexts.noProject);
    }
    const double length = wanted.length.value_or(1);
    if (!(length >= 0) || !std::isfinite(length)) {
        return message(hostTexts.noLength, length);
    }
    const std::shared_ptr<Track> track = trackByNumber(wanted.track);
    if (track == nullptr) {
        return message(hostTexts.noSuchTrack, wanted.track, project()->tracks().size() + 1);
    }
    const EventPlace place{wanted.start.value_or(track->end()), length, 0};
    undo_->addEventTo(track, std::make_shared<Event>(core_, message(hostTexts.notesName), place));
    undo_->commitBlock(message(hostTexts.addPart));
    settle();
    return {};
}

Complaint Application::withEvent(int number, const std::function<void(const std::shared_ptr<Event>&)>& change) {
    if (project() == nullptr) {
        return message(hostTexts.noProject);
    }
    const std::shared_ptr<Event> event = project()->eventByNumber(number);
    if (event == nullptr) {
        return noSuchEvent(number, *project());
    }
    change(event);
    settle();
    return {};
}

Complaint Application::removeEvent(int number) {
    return withEvent(number, [&](const std::shared_ptr<Event>& event) {
        undo_->removeEventFrom(event->track(), event);
        undo_->commitBlock(message(hostTexts.removeEvent));
    });
}

Complaint Application::moveEvent(int number, double start) {
    return withEvent(number, [&](const std::shared_ptr<Event>& event) {
        EventPlace place = event->place();
        place.start = start;
        auto change = std::make_unique<PlaceChange>(event, event->place(), place);
        change->redo();
        undo_->record(std::move(change));
        undo_->commitBlock(message(hostTexts.moveEvent));
    });
}

Complaint Application::trimEvent(int number, double offset, double length) {
    Complaint complaint;
    const Complaint missing = withEvent(number, [&](const std::shared_ptr<Event>& event) {
        const double clipSeconds = event->isAudio() ? event->ownClip()->seconds() : offset + length;
        if (!(offset >= 0) || !(length > 0) || offset + length > clipSeconds + 1e-9) {
            complaint = message(hostTexts.stretchNotInClip, offset, length, clipSeconds);
            return;
        }
        auto change =
            std::make_unique<PlaceChange>(event, event->place(), EventPlace{event->place().start, length, offset});
        change->redo();
        undo_->record(std::move(change));
        undo_->commitBlock(message(hostTexts.trimEvent));
    });
    return missing.empty() ? complaint : missing;
}

Complaint Application::restrictEvent(int number, std::uint32_t restrictions) {
    return withEvent(number, [&](const std::shared_ptr<Event>& event) {
        event->setRestrictions(restrictions);
        hasUnsavedChanges_ = true;
    });
}

Complaint Application::select(const std::vector<int>& numbers) {
    if (project() == nullptr) {
        return message(hostTexts.noProject);
    }
    std::vector<std::shared_ptr<Event>> events;
    for (const int number : numbers) {
        events.push_back(project()->eventByNumber(number));
        if (events.back() == nullptr) {
            return noSuchEvent(number, *project());
        }
    }
    selection_->selectEvents(std::move(events));
    return {};
}

Complaint Application::selectAll() {
    if (project() == nullptr) {
        return message(hostTexts.noProject);
    }
    selection_->selectEvents(project()->events());
    return {};
}

Complaint Application::selectRange(TimeRange range) {
    if (project() == nullptr) {
        return message(hostTexts.noProject);
    }
    if (!(range.end > range.start)) {
        return message(hostTexts.rangeEmpty, range.start, range.end);
    }
    std::vector<std::shared_ptr<Event>> events = selection_->selectedEvents();
    if (events.empty()) {
        events = project()->events();
    }
    std::erase_if(events, [&](const auto& event) {
        return !event->isAudio() || event->place().end() <= range.start || event->place().start >= range.end;
    });
    if (events.empty()) {
        return message(hostTexts.noEventBetween, range.start, range.end);
    }
    selection_->selectRange(std::move(events), range);
    return {};
}

// On the way to the other program a ";" ends a field, and there is no way to write it otherwise.
void Application::warnOfSeparators() {
    const auto selected = selection_->selectedEvents();
    if (selected.empty() || !selected.front()->isAudio()) {
        return;
    }
    const std::string name = utf8Text(nativePath(selected.front()->ownClip()->path()).filename());
    const std::string folder = platform::temporaryFolder();
    for (const std::string& text : {name, folder}) {
        if (text.find(';') != std::string::npos) {
            say(message(hostTexts.separatorInName, text));
        }
    }
}

Complaint Application::edit() {
    if (project() == nullptr) {
        return message(hostTexts.noProject);
    }
    warnOfSeparators();
    guestCommitsSeen_ = undo_->guestCommits();
    const CommandTarget::Outcome outcome = commandTarget_->run(kEditCategory, kEditName);
    settle();
    switch (outcome) {
    case CommandTarget::Outcome::noSuchCommand:
        return message(hostTexts.editMissing);
    case CommandTarget::Outcome::disabled:
        return message(hostTexts.editDisabled);
    case CommandTarget::Outcome::refused:
        return message(hostTexts.editRefused, platform::temporaryFolder());
    case CommandTarget::Outcome::done:
        break;
    }
    return {};
}

Complaint Application::waitForEdit(double limit) {
    const bool came = run(limit, [this] { return undo_->guestCommits() != guestCommitsSeen_; });
    if (!came) {
        return message(hostTexts.editNotBack, limit);
    }
    guestCommitsSeen_ = undo_->guestCommits();
    return {};
}

Complaint Application::undo() {
    const std::string name = undo_->nameToUndo();
    if (!undo_->undo()) {
        return message(hostTexts.nothingToUndo);
    }
    settle();
    say(message(hostTexts.undone, name));
    return {};
}

Complaint Application::redo() {
    const std::string name = undo_->nameToRedo();
    if (!undo_->redo()) {
        return message(hostTexts.nothingToRedo);
    }
    settle();
    say(message(hostTexts.redone, name));
    return {};
}

Complaint Application::exportMix(const std::string& path) {
    if (project() == nullptr) {
        return message(hostTexts.noProject);
    }
    Complaint complaint;
    const std::string file = fullPath(path, complaint);
    if (file.empty()) {
        return complaint;
    }
    const std::shared_ptr<AttributeList> attributes = exports_->prepare(file, {0, project()->end()}, *project());
    complaint = mixProject(*project(), file, attributes->asText());
    exports_->finish(complaint.empty() ? ExportHost::kWritten : ExportHost::kFailed);
    settle();
    if (complaint.empty()) {
        say(message(hostTexts.exported, file));
    }
    return complaint;
}

Complaint Application::suspendDriver(const std::string& text) {
    driver_->suspendClients(text);
    settle();
    return {};
}

void Application::showEvent(const Event& event) {
    const auto selected = selection_->selectedEvents();
    const bool isSelected =
        std::any_of(selected.begin(), selected.end(), [&](const auto& other) { return other.get() == &event; });
    std::string line = isSelected ? "  * " : "    ";
    line += message(hostTexts.eventLine, project()->numberOf(event), event.place().start, event.place().end(),
                    event.name());
    if (const AudioClip* clip = event.ownClip()) {
        line += message(hostTexts.eventClip, clip->path(), event.place().offset, describe(clip->format()),
                        clip->frameCount());
    }
    for (const Restrictions::Row& row : Restrictions::kRows) {
        line += (event.restrictions() & row.bit) != 0 ? std::string(", ") + row.name : std::string();
    }
    say(line);
}

void Application::show() {
    if (project() == nullptr) {
        say(message(hostTexts.noProject));
        return;
    }
    const std::size_t clips = project()->ownPool().parts().size();
    say(message(clips == 1 ? hostTexts.projectWithClip : hostTexts.projectWithClips, project()->folderPath(),
                project()->end(), clips));
    for (const auto& track : project()->tracks()) {
        say("  " + track->name());
        for (const auto& event : track->eventsByStart()) {
            showEvent(*event);
        }
    }
    if (transport_->cycleRight().seconds() > 0) {
        say("  " + message(hostTexts.cycle, transport_->cycleLeft().seconds(), transport_->cycleRight().seconds(),
                           transport_->position()));
    }
    const auto nameOr = [](const std::string& name) { return name.empty() ? std::string("-") : "\"" + name + "\""; };
    say("  " + message(hostTexts.undoNames, nameOr(undo_->nameToUndo()), nameOr(undo_->nameToRedo())));
}

void Application::showCommands() {
    for (const HostCommand& command : commands_->commands()) {
        const bool mayRun = commandTarget_->mayRun(command.category, command.name);
        const std::string line = command.group + " > " + command.title;
        say(mayRun ? line : message(hostTexts.cantRunNow, line));
    }
}

void Application::settle() {
    if (undo_->rollBack()) {
        say(message(hostTexts.takenBack));
    }
    const std::shared_ptr<Project> changed = project();
    if (changed != nullptr && changed->takeChange()) {
        hasUnsavedChanges_ = true;
        changed->tellListeners();
        registry_->tell(static_cast<IProject*>(changed.get()), ObjectRegistry::kChanged);
    }
    core_->watch->bury();
}

void Application::turn() {
    idle_->callClients();
    settle();
}

bool Application::run(double limit, const std::function<bool()>& done) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::duration<double>(limit);
    while (true) {
        turn();
        if (done && done()) {
            return true;
        }
        if (std::chrono::steady_clock::now() >= deadline) {
            return false;
        }
        std::this_thread::sleep_for(kTurnPause);
    }
}

} // namespace tessera::host
