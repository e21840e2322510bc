#include "link/PeerLocation.h"

#include "exportscripts/KnownProducts.h"

namespace tessera {

namespace {

constexpr std::string_view kPathPlaceholder = "$PATH";
// A script may bring quotes of its own, while the command line puts them around every argument.
constexpr std::string_view kQuotedPathPlaceholder = "\"$PATH\"";
constexpr std::string_view kExchangeSwitch = "--tesx";

std::string fillTemplate(std::string argument, std::string_view file) {
    for (std::size_t place = argument.find(kQuotedPathPlaceholder); place != std::string::npos;
         place = argument.find(kQuotedPathPlaceholder, place + kPathPlaceholder.size())) {
        argument.replace(place, kQuotedPathPlaceholder.size(), kPathPlaceholder);
    }
    const std::size_t place = argument.find(kPathPlaceholder);
    if (place != std::string::npos) {
        argument.replace(place, kPathPlaceholder.size(), file);
    }
    return argument;
}

} // namespace

AudioExportScript choosePeer(const AudioExportScriptList& peers) {
    auto [first, last] = peers.scriptsOf(kPeerNames[0]);
    if (first == last) {
        first = peers.begin();
        last = peers.end();
    }
    AudioExportScript choice;
    for (; first != last; ++first) {
        if (first->second.version > choice.version) {
            choice = first->second;
        }
    }
    return choice;
}

std::vector<std::string> launchArguments(const std::vector<std::string>& templates, std::string_view file) {
    std::vector<std::string> arguments;
    arguments.reserve(templates.size() + 1);
    for (const std::string& text : templates) {
        arguments.push_back(fillTemplate(text, file));
    }
    if (!file.empty() && !arguments.empty()) {
        arguments.insert(arguments.end() - 1, std::string(kExchangeSwitch));
    }
    return arguments;
}

} // namespace tessera
