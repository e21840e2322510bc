#include "host/program/ScriptCommands.h"

#include "host/model/Restrictions.h"
#include "host/program/ScriptLine.h"

#include <charconv>
#include <cmath>
#include <cstddef>
#include <optional>
#include <vector>

namespace tessera::host {
namespace {

using Words = std::vector<std::string>;

constexpr double kDefaultWaitSeconds = 60;
constexpr std::size_t kMany = 1000;

struct CommandRow {
    const char* name;
    std::size_t leastWords; // behind the name
    std::size_t mostWords;
    Complaint (*run)(Application&, const Words&);
    const char* usage;
    const char* what;
};

// Both read the point as the decimal sign, whatever the locale.
std::optional<double> numberOf(const std::string& word) {
    double value = 0;
    const char* const end = word.data() + word.size();
    const std::from_chars_result result = std::from_chars(word.data(), end, value);
    const bool isWhole = result.ec == std::errc() && result.ptr == end && std::isfinite(value);
    return isWhole ? std::optional<double>(value) : std::nullopt;
}

std::optional<int> integerOf(const std::string& word) {
    int value = 0;
    const char* const end = word.data() + word.size();
    const std::from_chars_result result = std::from_chars(word.data(), end, value);
    return result.ec == std::errc() && result.ptr == end ? std::optional<int>(value) : std::nullopt;
}

Complaint noNumber(const std::string& word) {
    return "\"" + word + "\" is no number; expected something like 3 or 2.5";
}

// "at 2 offset 1.5 length 3 track 2", in any order.
Complaint readPlace(const Words& words, std::size_t first, NewEventPlace& place) {
    for (std::size_t i = first; i < words.size(); i += 2) {
        const std::string& key = words[i];
        if (i + 1 == words.size()) {
            return "\"" + key + "\" needs a number behind it";
        }
        const std::optional<double> value = numberOf(words[i + 1]);
        if (!value) {
            return noNumber(words[i + 1]);
        }
        if (key == "at") {
            place.start = value;
        } else if (key == "offset") {
            place.offset = value;
        } else if (key == "length") {
            place.length = value;
        } else if (key == "track") {
            place.track = static_cast<int>(*value);
        } else {
            return "\"" + key + "\" isn't known here; expected at, offset, length or track";
        }
    }
    return {};
}

Complaint readNumbers(const Words& words, std::size_t first, std::vector<double>& numbers) {
    for (std::size_t i = first; i < words.size(); ++i) {
        const std::optional<double> value = numberOf(words[i]);
        if (!value) {
            return noNumber(words[i]);
        }
        numbers.push_back(*value);
    }
    return {};
}

Complaint newProject(Application& application, const Words& words) {
    return application.newProject(words[0], Words(words.begin() + 1, words.end()));
}

Complaint openProject(Application& application, const Words& words) {
    return application.openProject(words[0]);
}

Complaint saveProject(Application& application, const Words& words) {
    return application.saveProject(words.empty() ? std::string() : words[0]);
}

Complaint closeProject(Application& application, const Words&) {
    return application.closeProject();
}

Complaint addSound(Application& application, const Words& words) {
    NewEventPlace place;
    const Complaint complaint = readPlace(words, 1, place);
    return complaint.empty() ? application.addSound(words[0], place) : complaint;
}

Complaint addNotes(Application& application, const Words& words) {
    NewEventPlace place;
    const Complaint complaint = readPlace(words, 0, place);
    return complaint.empty() ? application.addNotes(place) : complaint;
}

Complaint removeEvent(Application& application, const Words& words) {
    const std::optional<int> number = integerOf(words[0]);
    return number ? application.removeEvent(*number) : noNumber(words[0]);
}

Complaint moveEvent(Application& application, const Words& words) {
    std::vector<double> numbers;
    const Complaint complaint = readNumbers(words, 0, numbers);
    return complaint.empty() ? application.moveEvent(static_cast<int>(numbers[0]), numbers[1]) : complaint;
}

Complaint trimEvent(Application& application, const Words& words) {
    std::vector<double> numbers;
    const Complaint complaint = readNumbers(words, 0, numbers);
    return complaint.empty() ? application.trimEvent(static_cast<int>(numbers[0]), numbers[1], numbers[2]) : complaint;
}

Complaint restrictEvent(Application& application, const Words& words) {
    const std::optional<int> number = integerOf(words[0]);
    if (!number) {
        return noNumber(words[0]);
    }
    std::uint32_t bits = 0;
    for (std::size_t i = 1; i < words.size(); ++i) {
        const std::uint32_t before = bits;
        for (const Restrictions::Row& row : Restrictions::kRows) {
            bits |= words[i] == row.name ? row.bit : 0;
        }
        if (bits == before) {
            return "\"" + words[i] +
                   "\" is no kind of processing; expected effects, envelopes, stretched or transposed";
        }
    }
    return application.restrictEvent(*number, bits);
}

Complaint select(Application& application, const Words& words) {
    if (words[0] == "all" && words.size() == 1) {
        return application.selectAll();
    }
    if (words[0] == "none" && words.size() == 1) {
        return application.select({});
    }
    if (words[0] == "range") {
        std::vector<double> ends;
        const Complaint complaint = readNumbers(words, 1, ends);
        if (!complaint.empty() || ends.size() != 2) {
            return complaint.empty() ? "a range has two ends; use: select range START END" : complaint;
        }
        return application.selectRange({ends[0], ends[1]});
    }
    std::vector<int> numbers;
    for (const std::string& word : words) {
        const std::optional<int> number = integerOf(word);
        if (!number) {
            return "\"" + word + "\" is no event; expected numbers as shown by: show, or all, none, range";
        }
        numbers.push_back(*number);
    }
    return application.select(numbers);
}

Complaint edit(Application& application, const Words&) {
    return application.edit();
}

Complaint waitForEdit(Application& application, const Words& words) {
    const std::optional<double> limit = words.empty() ? kDefaultWaitSeconds : numberOf(words[0]);
    return limit ? application.waitForEdit(*limit) : noNumber(words[0]);
}

Complaint idle(Application& application, const Words& words) {
    const std::optional<double> limit = words.empty() ? 1.0 : numberOf(words[0]);
    if (!limit) {
        return noNumber(words[0]);
    }
    application.run(*limit);
    return {};
}

Complaint undo(Application& application, const Words&) {
    return application.undo();
}

Complaint redo(Application& application, const Words&) {
    return application.redo();
}

Complaint exportMix(Application& application, const Words& words) {
    return application.exportMix(words[0]);
}

Complaint suspendDriver(Application& application, const Words& words) {
    return application.suspendDriver(words.empty() ? std::string() : words[0]);
}

Complaint show(Application& application, const Words&) {
    application.show();
    return {};
}

Complaint showCommands(Application& application, const Words&) {
    application.showCommands();
    return {};
}

Complaint startModule(Application& application, const Words&) {
    return application.startModule();
}

Complaint stopModule(Application& application, const Words&) {
    return application.stopModule();
}

constexpr CommandRow kCommands[] = {
    {"new", 1, kMany, newProject, "new FOLDER [SOUNDFILE...]",
     "make a project in that folder, the files one after another"},
    {"open", 1, 1, openProject, "open FILE", "open a project"},
    {"save", 0, 1, saveProject, "save [FILE]", "save it, in its folder if no file is named"},
    {"close", 0, 0, closeProject, "close", "close it without saving"},
    {"show", 0, 0, show, "show", "list tracks and events with their numbers"},
    {"add", 1, 9, addSound, "add SOUNDFILE [at S] [offset S] [length S] [track N]", "add an audio event"},
    {"notes", 0, 6, addNotes, "notes [at S] [length S] [track N]", "add a part with notes, which isn't audio"},
    {"remove", 1, 1, removeEvent, "remove EVENT", "take an event off its track"},
    {"move", 2, 2, moveEvent, "move EVENT S", "let an event start there"},
    {"trim", 3, 3, trimEvent, "trim EVENT OFFSET LENGTH", "let an event play that stretch of its clip"},
    {"restrict", 1, 5, restrictEvent, "restrict EVENT [effects] [envelopes] [stretched] [transposed]",
     "say what processing an event holds"},
    {"select", 1, kMany, select, "select EVENT... | all | none | range START END", "select events, or a range on them"},
    {"edit", 0, 0, edit, "edit", "Edit in Tessera"},
    {"wait", 0, 1, waitForEdit, "wait [S]", "until the edit is back, 60 s at most if nothing is said"},
    {"idle", 0, 1, idle, "idle [S]", "run the main loop for that long"},
    {"undo", 0, 0, undo, "undo", "take the last change back"},
    {"redo", 0, 0, redo, "redo", "make it again"},
    {"export", 1, 1, exportMix, "export SOUNDFILE", "write a mix of the project"},
    {"suspend", 0, 1, suspendDriver, "suspend [TEXT]", "ask for the audio driver back"},
    {"commands", 0, 0, showCommands, "commands", "list what the module has put into the menus"},
    {"start", 0, 0, startModule, "start", "start the module again"},
    {"stop", 0, 0, stopModule, "stop", "stop the module"},
};

} // namespace

std::string ScriptCommands::help() {
    std::string text = "Commands, one to a line or to each --command; times are seconds:\n";
    for (const CommandRow& row : kCommands) {
        text += std::string("  ") + row.usage + "\n      " + row.what + "\n";
    }
    return text + "  quit\n      close the project and end\n";
}

Complaint ScriptCommands::run(std::string_view line) {
    const std::optional<Words> words = splitScriptLine(line);
    if (!words) {
        return "a quote isn't closed; put \" at both ends";
    }
    if (words->empty()) {
        return {};
    }
    const std::string& name = words->front();
    const Words arguments(words->begin() + 1, words->end());
    if (name == "quit" || name == "help") {
        hasQuit_ = name == "quit";
        if (!hasQuit_) {
            application_.core()->note(help());
        }
        return {};
    }
    for (const CommandRow& row : kCommands) {
        if (name != row.name) {
            continue;
        }
        if (arguments.size() < row.leastWords || arguments.size() > row.mostWords) {
            return std::string("\"") + name + "\" was given too few or too many words; use: " + row.usage;
        }
        return row.run(application_, arguments);
    }
    return "there is no command \"" + name + "\"; the commands are listed by: help";
}

} // namespace tessera::host
