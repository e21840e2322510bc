// tesx-host: a host for the module "Tessera Exchange", driven by commands from its arguments or from standard input.
#include "host/program/Application.h"
#include "host/program/LineReader.h"
#include "host/program/ScriptCommands.h"

#include <CLI/CLI.hpp>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

namespace {

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
    const std::filesystem::path folder = std::filesystem::path(program).parent_path();
    for (const char* file : kModuleFiles) {
        std::error_code ignored;
        if (std::filesystem::exists(folder / file, ignored)) {
            return (folder / file).lexically_normal().string();
        }
    }
    return (folder / kModuleFiles[0]).string();
}

bool fail(const std::string& where, const Complaint& complaint) {
    std::cerr << "tesx-host: " << where << complaint << std::endl;
    return false;
}

// True unless a command failed that must not.
bool runCommands(Application& application, const Options& options) {
    ScriptCommands script(application);
    bool allWell = true;
    for (const std::string& command : options.commands) {
        const Complaint complaint = script.run(command);
        if (!complaint.empty()) {
            allWell = fail("\"" + command + "\": ", complaint);
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
            allWell = fail("line " + std::to_string(number) + ": ", complaint);
        }
    }
    return allWell;
}

int runHost(const Options& options) {
    Application application(options.settings);
    if (!options.noModule) {
        const Complaint complaint = application.loadModule(options.module);
        if (!complaint.empty()) {
            fail("", complaint + ", or work without one: --no-module");
            return EXIT_FAILURE;
        }
    }
    const bool allWell =
        options.commands.empty() ? runStandardInput(application, options) : runCommands(application, options);
    return allWell ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app(
        "Reference host for the module \"Tessera Exchange\": opens a project of tracks and audio events on real "
        "sound files and drives the module on it.");
    Options options;
    options.settings.out = &std::cout;
    options.module = findModule(argv[0]);
    app.add_option("-m,--module", options.module, "the module's file")->capture_default_str();
    app.add_flag("--no-module", options.noModule, "load no module");
    app.add_option("--name", options.settings.name, "what this host calls itself")->capture_default_str();
    app.add_option("--host-version", options.settings.version, "which version it says it is")->capture_default_str();
    app.add_flag("-k,--keep-going", options.keepGoing, "go on after a command that failed");
    app.add_option("-c,--command", options.commands, "a command, in quotes; may be given again")
        ->allow_extra_args(false);
    app.footer(ScriptCommands::help() + "Without --command they are read from standard input.");
    CLI11_PARSE(app, argc, argv);
    return runHost(options);
}
