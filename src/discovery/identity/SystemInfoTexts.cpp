#include "discovery/identity/SystemInfoTexts.h"

namespace tessera {

namespace {

FString widen(const std::string& utf8) {
    FString text;
    text.assignUtf8(utf8.c_str(), static_cast<std::int32_t>(utf8.size()));
    return text;
}

} // namespace

SystemInfoTexts::SystemInfoTexts(const SystemInfo& info)
    : userName(widen(info.userName)),
      computerName(widen(info.computerName)),
      platform(widen(info.platform)),
      osName(widen(info.osName)),
      osMajor(info.osMajor),
      osMinor(info.osMinor),
      osBuild(info.osBuild) {}

const SystemInfoTexts& systemInfoTexts() {
    static const SystemInfoTexts& texts = *new SystemInfoTexts(systemInfo());
    return texts;
}

} // namespace tessera
