// tesx-host: a host for the module "Tessera Exchange", driven by commands from its arguments or from standard input.
//
// What it remembers lies in the user's folder for "tesx-host"; its texts come from "translation.xml" beside the
// program.
#include "appservices/defaults/FGlobalDefaultPool.h"
#include "appservices/translation/TranslationHook.h"
#include "appservices/translation/TranslationTable.h"
#include "common/Utf8Path.h"
#include "discovery/identity/ApplicationInfo.h"
#include "host/program/Application.h"
#include "host/program/LineReader.h"
#include "host/program/ScriptCommands.h"
#include "host/program/SettingsFile.h"
#include "host/text/HostTexts.h"
#include "host/text/Message.h"
#include "host/text/Text16.h"
#include "persistence/objects/PersistenceHooks.h"
#include "platform/ConsoleText.h"
#include "platform/ProgramArguments.h"

#include <CLI/CLI.hpp>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

namespace {

using namespace tessera;
using namespace tessera::host;

struct Options {
    ApplicationSettings settings;
    std::string module;
    bool noModule = false;
    bool keepGoing = false;
    std::vector<std::string> commands;
};

// Where the module is, as seen from this program's folder: beside it, in the build tree, installed.
constexpr const char* kModuleFiles[] = {
    "TesseraExchange.shlb",
    "../src/shell/TesseraExchange.shlb",
    "../lib/TesseraExchange/TesseraExchange.shlb",
};

std::string findModule(const char* program) {
    const std::filesystem::path folder = programs::nativePath(program).parent_path();
    for (const char* file : kModuleFiles) {
        std::error_code ignored;
        if (std::filesystem::exists(folder / file, ignored)) {
            return programs::utf8Text((folder / file).lexically_normal());
        }
    }
    return programs::utf8Text(folder / kModuleFiles[0]);
}

void tell(const std::string& line) {
    std::cerr << "tesx-host: " << line << std::endl;
}

// True unless a command failed that must not.
bool runCommands(Application& application, const Options& options) {
    ScriptCommands script(application);
    bool allWell = true;
    for (const std::string& command : options.commands) {
        const Complaint complaint = script.run(command);
        if (!complaint.empty()) {
            allWell = false;
            tell("\"" + command + "\": " + complaint);
        }
        if (script.hasQuit() || (!allWell && !options.keepGoing)) {
            break;
        }
    }
    return allWell;
}

// The main loop runs on between the lines.
bool runStandardInput(Application& application, const Options& options) {
    ScriptCommands script(application);
    LineReader reader(std::cin);
    bool allWell = true;
    for (int number = 0; !script.hasQuit() && (allWell || options.keepGoing);) {
        const std::optional<std::string> line = reader.take();
        if (!line) {
            if (reader.isAtEnd()) {
                break;
            }
            application.run(0.005);
            continue;
        }
        ++number;
        const Complaint complaint = script.run(*line);
        if (!complaint.empty()) {
            allWell = false;
            tell(message(hostTexts.inLine, number, complaint));
        }
    }
    return allWell;
}

int runHost(const Options& options) {
    Application application(options.settings);
    if (!options.noModule) {
        const Complaint complaint = application.loadModule(options.module);
        if (!complaint.empty()) {
            tell(message(hostTexts.withoutModule, complaint));
            return EXIT_FAILURE;
        }
    }
    const bool allWell =
        options.commands.empty() ? runStandardInput(application, options) : runCommands(application, options);
    return allWell ? EXIT_SUCCESS : EXIT_FAILURE;
}

// Who this program is: its folders and its settings have its name.
void takeName() {
    applicationInfo().setProductName(kHostFolderName);
    applicationInfo().setApplicationName(kHostFolderName);
    applicationFoldersSource = []() -> IApplicationFolders* { return &applicationInfo(); };
    FGlobalDefaultPool::setBaseName(kHostFolderName);
}

// Nobody is asked anything: a question is told, and answered with no.
bool tellQuestion(const FStringRef& question, const FStringRef&, const FStringRef&) {
    FString text(question);
    text.toWide();
    tell(toUtf8(text.view16()).value_or(""));
    return false;
}

void loadLanguage() {
    persistenceHooks.ask = tellQuestion;
    installTranslation();
    TranslationTable::getInstance()->load(false);
}

void addOptions(CLI::App& app, Options& options) {
    app.add_option("-m,--module", options.module, message(hostTexts.moduleOption))->capture_default_str();
    app.add_flag("--no-module", options.noModule, message(hostTexts.noModuleOption));
    app.add_option("--name", options.settings.name, message(hostTexts.nameOption))->capture_default_str();
    app.add_option("--host-version", options.settings.version, message(hostTexts.versionOption))->capture_default_str();
    app.add_flag("-k,--keep-going", options.keepGoing, message(hostTexts.keepGoingOption));
    app.add_option("-c,--command", options.commands, message(hostTexts.commandOption))->allow_extra_args(false);
    app.footer(ScriptCommands::help() + message(hostTexts.inputFooter));
}

} // namespace

int main(int argc, char** argv) {
    platform::showUtf8InConsole();
    platform::readUtf8FromConsole();
    platform::ProgramArguments arguments(argc, argv);
    takeName();
    loadLanguage();
    CLI::App app(message(hostTexts.programHelp));
    Options options;
    options.settings.out = &std::cout;
    options.module = findModule(arguments.values()[0]);
    addOptions(app, options);
    CLI11_PARSE(app, arguments.count(), arguments.values());
    loadSettings(tell);
    const int result = runHost(options);
    saveSettings(tell);
    return result;
}
