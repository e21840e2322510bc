#include "host/program/ScriptCommands.h"

#include "host/model/Restrictions.h"
#include "host/program/ComplaintOf.h"
#include "host/program/ScriptLine.h"
#include "host/program/SettingCommands.h"
#include "host/text/HostTexts.h"
#include "host/text/Message.h"

#include <charconv>
#include <cstddef>
#include <optional>
#include <vector>

namespace tessera::host {
namespace {

constexpr std::size_t kMany = 1000;

struct CommandRow {
    const char* name;
    std::size_t leastWords; // behind the name
    std::size_t mostWords;
    Complaint (*run)(Application&, const Words&);
    TranslatedText* use; // null where the name says it all
    TranslatedText* what;
};

std::optional<int> integerOf(const std::string& word) {
    int value = 0;
    const char* const end = word.data() + word.size();
    const std::from_chars_result result = std::from_chars(word.data(), end, value);
    return result.ec == std::errc() && result.ptr == end ? std::optional<int>(value) : std::nullopt;
}

Complaint noNumber(const std::string& word) {
    return message(hostTexts.noNumber, word);
}

// "at 2 offset 1.5 length 3 track 2", in any order.
Complaint readPlace(const Words& words, std::size_t first, NewEventPlace& place) {
    for (std::size_t i = first; i < words.size(); i += 2) {
        const std::string& key = words[i];
        if (i + 1 == words.size()) {
            return message(hostTexts.needsNumber, key);
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
            return message(hostTexts.noSuchPlace, key);
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
            return message(hostTexts.noProcessing, words[i]);
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
            return complaint.empty() ? message(hostTexts.rangeNeedsEnds) : complaint;
        }
        return application.selectRange({ends[0], ends[1]});
    }
    std::vector<int> numbers;
    for (const std::string& word : words) {
        const std::optional<int> number = integerOf(word);
        if (!number) {
            return message(hostTexts.noEventNumber, word);
        }
        numbers.push_back(*number);
    }
    return application.select(numbers);
}

Complaint edit(Application& application, const Words&) {
    return application.edit();
}

Complaint waitForEdit(Application& application, const Words& words) {
    const std::optional<double> limit = words.empty() ? application.settings().waitSeconds() : numberOf(words[0]);
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
    {"new", 1, kMany, newProject, &hostTexts.newUse, &hostTexts.newHelp},
    {"open", 0, 1, openProject, &hostTexts.openUse, &hostTexts.openHelp},
    {"recent", 0, 0, showRecent, nullptr, &hostTexts.recentHelp},
    {"save", 0, 1, saveProject, &hostTexts.saveUse, &hostTexts.saveHelp},
    {"close", 0, 0, closeProject, nullptr, &hostTexts.closeHelp},
    {"show", 0, 0, show, nullptr, &hostTexts.showHelp},
    {"add", 1, 9, addSound, &hostTexts.addUse, &hostTexts.addHelp},
    {"notes", 0, 6, addNotes, &hostTexts.notesUse, &hostTexts.notesHelp},
    {"remove", 1, 1, removeEvent, &hostTexts.removeUse, &hostTexts.removeHelp},
    {"move", 2, 2, moveEvent, &hostTexts.moveUse, &hostTexts.moveHelp},
    {"trim", 3, 3, trimEvent, &hostTexts.trimUse, &hostTexts.trimHelp},
    {"restrict", 1, 5, restrictEvent, &hostTexts.restrictUse, &hostTexts.restrictHelp},
    {"select", 1, kMany, select, &hostTexts.selectUse, &hostTexts.selectHelp},
    {"edit", 0, 0, edit, nullptr, &hostTexts.editHelp},
    {"wait", 0, 1, waitForEdit, &hostTexts.waitUse, &hostTexts.waitHelp},
    {"idle", 0, 1, idle, &hostTexts.idleUse, &hostTexts.idleHelp},
    {"undo", 0, 0, undo, nullptr, &hostTexts.undoHelp},
    {"redo", 0, 0, redo, nullptr, &hostTexts.redoHelp},
    {"export", 1, 1, exportMix, &hostTexts.exportUse, &hostTexts.exportHelp},
    {"suspend", 0, 1, suspendDriver, &hostTexts.suspendUse, &hostTexts.suspendHelp},
    {"commands", 0, 0, showCommands, nullptr, &hostTexts.commandsHelp},
    {"start", 0, 0, startModule, nullptr, &hostTexts.startHelp},
    {"stop", 0, 0, stopModule, nullptr, &hostTexts.stopHelp},
    {"settings", 0, 0, showSettings, nullptr, &hostTexts.settingsHelp},
    {"set", 2, 2, changeSetting, &hostTexts.setUse, &hostTexts.setHelp},
    {"language", 0, 1, language, &hostTexts.languageUse, &hostTexts.languageHelp},
};

std::string usageOf(const CommandRow& row) {
    return row.use == nullptr ? std::string(row.name) : message(*row.use);
}

std::string helpLines(const std::string& usage, TranslatedText& what) {
    return "  " + usage + "\n      " + message(what) + "\n";
}

} // namespace

std::string ScriptCommands::help() {
    std::string text = message(hostTexts.commandsHead) + "\n";
    for (const CommandRow& row : kCommands) {
        text += helpLines(usageOf(row), *row.what);
    }
    return text + helpLines("quit", hostTexts.quitHelp);
}

Complaint ScriptCommands::run(std::string_view line) {
    const std::optional<Words> words = splitScriptLine(line);
    if (!words) {
        return message(hostTexts.quoteNotClosed);
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
            return message(hostTexts.wrongWordCount, name, usageOf(row));
        }
        return complaintOf([&] { return row.run(application_, arguments); });
    }
    return message(hostTexts.noSuchCommand, name);
}

} // namespace tessera::host
