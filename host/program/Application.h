// Application: the reference host itself: one project at most, one module at most, and the loop that gives the module
// its idle calls.
//
// Its operations are what a user can do; each gives a complaint or the empty text, and ends in a moment of quiet in
// which listeners learn of changes. Output goes to the stream of the settings. Everything happens on the thread that
// made it.
#pragma once

#include "host/model/Event.h"
#include "host/model/Project.h"
#include "host/objects/HostCore.h"
#include "host/program/Complaint.h"
#include "host/program/GuestModule.h"
#include "host/program/HostSettings.h"
#include "host/services/AlertHost.h"
#include "host/services/CommandTable.h"
#include "host/services/CommandTarget.h"
#include "host/services/DriverArbiter.h"
#include "host/services/ExportHost.h"
#include "host/services/HostContext.h"
#include "host/services/IdleHost.h"
#include "host/services/ObjectRegistry.h"
#include "host/services/ProjectList.h"
#include "host/services/Selection.h"
#include "host/services/Transport.h"
#include "host/undo/UndoStack.h"

#include <functional>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tessera::host {

struct ApplicationSettings {
    std::string name = "Harrow Max";
    std::string version = "9.0.20";
    std::ostream* out = nullptr; // never null when used; outlives the application
};

// Where a new event goes; what is missing takes its natural value.
struct NewEventPlace {
    std::optional<double> start;
    std::optional<double> offset;
    std::optional<double> length;
    int track = 1;
};

class Application {
public:
    explicit Application(const ApplicationSettings& settings);
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;
    // Closes the project and stops the module.
    ~Application();

    Complaint loadModule(const std::string& path);
    Complaint startModule();
    Complaint stopModule();

    Complaint newProject(const std::string& folder, const std::vector<std::string>& soundFiles);
    Complaint openProject(const std::string& path);
    // An empty path: where it was saved last.
    Complaint saveProject(const std::string& path);
    Complaint closeProject();

    Complaint addSound(const std::string& path, const NewEventPlace& place);
    Complaint addNotes(const NewEventPlace& place);
    Complaint removeEvent(int number);
    Complaint moveEvent(int number, double start);
    Complaint trimEvent(int number, double offset, double length);
    Complaint restrictEvent(int number, std::uint32_t restrictions);

    Complaint select(const std::vector<int>& numbers);
    Complaint selectAll();
    // Among the selected events, or all of them when none is selected.
    Complaint selectRange(TimeRange range);

    Complaint edit();
    // Runs the loop until the guest has changed the project since the last edit() or wait().
    Complaint waitForEdit(double seconds);
    Complaint undo();
    Complaint redo();
    Complaint exportMix(const std::string& path);
    Complaint suspendDriver(const std::string& text);

    void show();
    void showCommands();

    // The main loop: idle calls at the host's pace until the time is over or the condition holds, which is the result.
    bool run(double seconds, const std::function<bool()>& done = nullptr);
    // One turn of it.
    void turn();

    const std::shared_ptr<HostCore>& core() const { return core_; }
    HostContext& context() { return *context_; }
    const std::shared_ptr<Project>& project() const { return projects_->active(); }
    Selection& selection() { return *selection_; }
    UndoStack& undoStack() { return *undo_; }
    Transport& transport() { return *transport_; }
    CommandTable& commands() { return *commands_; }
    CommandTarget& commandTarget() { return *commandTarget_; }
    DriverArbiter& driver() { return *driver_; }
    IdleHost& idle() { return *idle_; }
    AlertHost& alerts() { return *alerts_; }
    ExportHost& exports() { return *exports_; }
    ObjectRegistry& registry() { return *registry_; }
    HostSettings& settings() { return settings_; }

private:
    void enterServices();
    void setProject(std::shared_ptr<Project> project);
    // The pool's entry for the clip, a new one where there is none.
    std::shared_ptr<AudioPart> partOf(AudioPool& pool, const std::shared_ptr<AudioClip>& clip);
    Complaint withEvent(int number, const std::function<void(const std::shared_ptr<Event>&)>& change);
    std::shared_ptr<Track> trackByNumber(int number);
    // What others must learn and clean up after a change, or after the guest has had its turn.
    void settle();
    void warnOfSeparators();
    void showEvent(const Event& event);
    void say(const std::string& line);

    const std::shared_ptr<HostCore> core_;
    std::ostream& out_;
    HostSettings settings_;
    std::shared_ptr<HostContext> context_;
    std::shared_ptr<ProjectList> projects_;
    std::shared_ptr<Selection> selection_;
    std::shared_ptr<UndoStack> undo_;
    std::shared_ptr<Transport> transport_;
    std::shared_ptr<CommandTable> commands_;
    std::shared_ptr<CommandTarget> commandTarget_;
    std::shared_ptr<DriverArbiter> driver_;
    std::shared_ptr<IdleHost> idle_;
    std::shared_ptr<AlertHost> alerts_;
    std::shared_ptr<ExportHost> exports_;
    std::shared_ptr<ObjectRegistry> registry_;
    std::unique_ptr<GuestModule> module_;
    int guestCommitsSeen_ = 0;
    bool hasUnsavedChanges_ = false;
};

} // namespace tessera::host
