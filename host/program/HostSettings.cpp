#include "host/program/HostSettings.h"

#include "appservices/defaults/IDefaultPool.h"
#include "foundation/text/FString.h"
#include "host/text/Text16.h"

#include <algorithm>
#include <cstdint>
#include <optional>

namespace tessera::host {
namespace {

constexpr char kProjectsGroup[] = "Projects";
constexpr char kWaitGroup[] = "Wait";
constexpr char kSecondsKey[] = "Seconds";

FString projectKey(std::size_t number) {
    return FString(std::to_string(number).c_str());
}

bool isTimeToWait(double seconds) {
    return seconds >= 0 && seconds <= HostSettings::kLongestWait;
}

} // namespace

std::vector<std::string> HostSettings::recentProjects() const {
    std::vector<std::string> paths;
    for (std::size_t number = 1; number <= kMostProjects; ++number) {
        FString text;
        if (pool_.getString(kProjectsGroup, projectKey(number), text) && text.toWide()) {
            paths.push_back(toUtf8(text.view16()).value_or(std::string()));
        }
    }
    std::erase(paths, std::string());
    return paths;
}

void HostSettings::noteProject(const std::string& path) {
    std::vector<std::string> paths = recentProjects();
    std::erase(paths, path);
    paths.insert(paths.begin(), path);
    std::size_t number = 1;
    for (const std::string& kept : paths) {
        const std::optional<std::u16string> text = toText16(kept);
        if (text && number <= kMostProjects) {
            const FStringRef wide(text->data(), static_cast<std::int32_t>(text->size()));
            number += pool_.setString(kProjectsGroup, projectKey(number), wide) ? 1 : 0;
        }
    }
    while (number <= kMostProjects) {
        pool_.remove(kProjectsGroup, projectKey(number++));
    }
}

double HostSettings::waitSeconds() const {
    double seconds = 0;
    const bool isThere = pool_.getFloat(kWaitGroup, kSecondsKey, seconds);
    return isThere && isTimeToWait(seconds) ? seconds : kDefaultWait;
}

bool HostSettings::setWaitSeconds(double seconds) {
    return isTimeToWait(seconds) && pool_.setFloat(kWaitGroup, kSecondsKey, seconds);
}

} // namespace tessera::host
