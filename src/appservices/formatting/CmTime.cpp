#include "appservices/formatting/CmTime.h"

#include "appservices/formatting/NumberFields.h"
#include "persistence/attributes/FAttributes.h"

#include <algorithm>
#include <limits>

namespace tessera {
namespace {

constexpr const char* kSecondsKey = "Seconds";

} // namespace

bool CmTime::isEqual(const CmObject* other) const {
    const auto* time = cmCast<CmTime>(other);
    return time != nullptr && seconds_ == time->seconds_;
}

int CmTime::compare(const CmObject* other) const {
    const auto* time = cmCast<CmTime>(other);
    if (time == nullptr) {
        return CmObject::compare(other);
    }
    return seconds_ < time->seconds_ ? -1 : seconds_ > time->seconds_ ? 1 : 0;
}

std::uint32_t CmTime::hash(std::uint32_t tableSize) const {
    return tableSize != 0 ? seconds_ % tableSize : 0;
}

bool CmTime::storeAttributes(FAttributes& attributes) const {
    return attributes.setInt(kSecondsKey, seconds_);
}

bool CmTime::restoreAttributes(FAttributes& attributes) {
    std::int64_t seconds = 0;
    if (!attributes.getInt(kSecondsKey, seconds)) {
        return false;
    }
    seconds_ =
        static_cast<std::uint32_t>(std::clamp<std::int64_t>(seconds, 0, std::numeric_limits<std::uint32_t>::max()));
    return true;
}

CmTime* CmTime::clone() const {
    return new CmTime(*this);
}

void CmTime::setFromUnixTime(std::int64_t seconds) {
    const std::int64_t ofDay = seconds % kSecondsPerDay;
    seconds_ = static_cast<std::uint32_t>(ofDay < 0 ? ofDay + kSecondsPerDay : ofDay);
}

bool CmTime::setClock(std::uint32_t hours, std::uint32_t minutes, std::uint32_t seconds) {
    if (hours > 23 || minutes > 59 || seconds > 59) {
        return false;
    }
    seconds_ = hours * 3600 + minutes * 60 + seconds;
    return true;
}

FString CmTime::getText() const {
    FString text;
    text.printf("%02d:%02d:%02d", getHours(), getMinutes(), getSecondsOfMinute());
    return text;
}

bool CmTime::setText(const FStringRef& text) {
    const auto fields = readNumberFields(text, ':');
    return fields && setClock((*fields)[0], (*fields)[1], (*fields)[2]);
}

} // namespace tessera
