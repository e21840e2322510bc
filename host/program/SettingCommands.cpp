#include "host/program/SettingCommands.h"

#include "common/Utf8Path.h"
#include "host/program/HostLanguage.h"
#include "host/text/HostTexts.h"
#include "host/text/Message.h"

#include <charconv>
#include <cmath>
#include <filesystem>
#include <system_error>

namespace tessera::host {
namespace {

constexpr char kWaitName[] = "wait";

bool isThere(const std::string& file) {
    std::error_code ignored;
    return std::filesystem::is_regular_file(programs::nativePath(file), ignored);
}

Complaint openNewest(Application& application) {
    for (const std::string& file : application.settings().recentProjects()) {
        if (isThere(file)) {
            return application.openProject(file);
        }
    }
    return message(hostTexts.noneToOpen);
}

} // namespace

std::optional<double> numberOf(const std::string& word) {
    double value = 0;
    const char* const end = word.data() + word.size();
    const std::from_chars_result result = std::from_chars(word.data(), end, value);
    const bool isWhole = result.ec == std::errc() && result.ptr == end && std::isfinite(value);
    return isWhole ? std::optional<double>(value) : std::nullopt;
}

Complaint openProject(Application& application, const Words& words) {
    return words.empty() ? openNewest(application) : application.openProject(words[0]);
}

Complaint showRecent(Application& application, const Words&) {
    const std::vector<std::string> files = application.settings().recentProjects();
    if (files.empty()) {
        application.core()->note(message(hostTexts.noRecent));
    }
    for (const std::string& file : files) {
        application.core()->note(isThere(file) ? file : message(hostTexts.recentMissing, file));
    }
    return {};
}

Complaint showSettings(Application& application, const Words&) {
    application.core()->note(message(hostTexts.waitSetting, application.settings().waitSeconds()));
    return {};
}

Complaint changeSetting(Application& application, const Words& words) {
    if (words[0] != kWaitName) {
        return message(hostTexts.noSuchSetting, words[0]);
    }
    const std::optional<double> seconds = numberOf(words[1]);
    if (!seconds || !application.settings().setWaitSeconds(*seconds)) {
        return message(hostTexts.waitOutOfRange, words[1], HostSettings::kLongestWait);
    }
    return {};
}

Complaint language(Application& application, const Words& words) {
    const Complaint complaint = words.empty() ? Complaint() : chooseLanguage(words[0]);
    if (complaint.empty()) {
        application.core()->note(describeLanguage());
    }
    return complaint;
}

} // namespace tessera::host
