// tesx-peer: the stand-in peer.
#include "common/Utf8Path.h"
#include "peer/EditorCommand.h"
#include "peer/ExportScriptText.h"
#include "peer/PeerProgram.h"
#include "platform/ConsoleText.h"
#include "platform/Identity.h"
#include "platform/NativePath.h"
#include "platform/ProgramArguments.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <filesystem>

namespace {

using namespace tessera::peer;
using tessera::programs::nativePath;
using tessera::programs::utf8Text;

constexpr const char* kDescription =
    "tesx-peer: lets an editor of your choice do the editing behind \"Edit in Tessera\".\n"
    "It registers as the peer, takes the files that the host gives out, runs the editor on a copy of each, and hands "
    "the result back.";
constexpr const char* kFooter =
    "Examples:\n"
    "  tesx-peer --editor \"sox -R {in} {out} reverse\"       wait for a host, and reverse what it sends\n"
    "  tesx-peer --editor \"audacity {file}\"                 let the user edit in a window; saved when it is closed\n"
    "  tesx-peer --print-script --editor \"...\" >my.aepp     the export script that lets the module start this "
    "program\n"
    "\n"
    "The editor must keep sample rate and channels. Ctrl-C leaves; the host is told first.";

struct Options {
    std::string editor;
    std::vector<std::string> files;
    bool startedByModule = false;
    bool once = false;
    bool printScript = false;
};

int printScript(const EditorCommand& command) {
    const auto self = tessera::platform::toNativePath(tessera::platform::modulePath());
    if (!self) {
        std::fputs("tesx-peer: the system does not tell where this program lies; write the script by hand\n", stderr);
        return 1;
    }
    std::fputs(exportScriptText(*self, command.text()).c_str(), stdout);
    return 0;
}

int runPeer(const Options& options) {
    std::string problem;
    const auto command = EditorCommand::parse(options.editor, &problem);
    if (!command) {
        std::fprintf(stderr, "tesx-peer: %s; for example --editor \"sox -R {in} {out} reverse\"\n", problem.c_str());
        return 2;
    }
    if (options.printScript) {
        return printScript(*command);
    }
    const StayMode stay = options.once              ? StayMode::ForOneEdit
                          : options.startedByModule ? StayMode::WhileHostLives
                                                    : StayMode::UntilInterrupted;
    return PeerProgram(*command, stay).run(options.files);
}

} // namespace

int main(int argc, char** argv) {
    tessera::platform::showUtf8InConsole();
    tessera::platform::ProgramArguments arguments(argc, argv);
    Options options;
    CLI::App app(kDescription, "tesx-peer");
    app.footer(kFooter);
    app.add_option("-e,--editor", options.editor,
                   "the editor's command line, with {in} and {out}, or {file} for an editor that works in place")
        ->required();
    app.add_flag("--tesx", options.startedByModule,
                 "set by the module when it starts this program: leave when the host has gone");
    app.add_flag("--once", options.once, "leave after one edit");
    app.add_flag("--print-script", options.printScript,
                 "print an export script for this program and editor, and leave");
    app.add_option("file", options.files, "files of the exchange folder to edit at once");
    CLI11_PARSE(app, arguments.count(), arguments.values());
    // An empty path is how the module says that there is nothing to open.
    std::erase(options.files, std::string());
    // A file may be handed to a program that runs in another folder.
    for (std::string& file : options.files) {
        file = utf8Text(std::filesystem::absolute(nativePath(file)));
    }
    return runPeer(options);
}
