// ScriptCommands: the words that a user drives the host with, one command to a line. help() lists them.
#pragma once

#include "host/program/Application.h"
#include "host/program/Complaint.h"

#include <string>
#include <string_view>

namespace tessera::host {

class ScriptCommands {
public:
    explicit ScriptCommands(Application& application) : application_(application) {}

    // An empty line does nothing. After "quit" hasQuit() is true.
    Complaint run(std::string_view line);
    bool hasQuit() const { return hasQuit_; }

    static std::string help();

private:
    Application& application_;
    bool hasQuit_ = false;
};

} // namespace tessera::host
