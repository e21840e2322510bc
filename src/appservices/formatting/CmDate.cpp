#include "appservices/formatting/CmDate.h"

#include "appservices/formatting/CmTime.h"
#include "appservices/formatting/NumberFields.h"
#include "persistence/attributes/FAttributes.h"

#include <algorithm>
#include <limits>

namespace tessera {
namespace {

// The Gregorian calendar repeats itself after this many days.
constexpr std::int64_t kDaysPerEra = 146'097;
constexpr std::int64_t kYearsPerEra = 400;
// 1 March of the year 0. Years that begin in March have their leap day at their end, where it moves no other day.
constexpr std::int64_t kFirstEra = 1'721'120;
constexpr const char* kJulianKey = "Julian";

std::int32_t nearestDay(std::int64_t day) {
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(day, Limits::min(), Limits::max()));
}

std::int64_t floorDivide(std::int64_t value, std::int64_t divisor) {
    return value / divisor - (value % divisor < 0 ? 1 : 0);
}

std::int32_t toJulianDay(std::int32_t year, std::int32_t month, std::int32_t day) {
    const std::int64_t marchYear = month > 2 ? year : year - 1;
    const std::int64_t era = floorDivide(marchYear, kYearsPerEra);
    const std::int64_t yearOfEra = marchYear - era * kYearsPerEra;
    const std::int64_t marchMonth = month > 2 ? month - 3 : month + 9;
    // From March on, months of 31 and 30 days follow each other in a pattern of five: 153 days.
    const std::int64_t dayOfYear = (153 * marchMonth + 2) / 5 + day - 1;
    const std::int64_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return static_cast<std::int32_t>(kFirstEra + era * kDaysPerEra + dayOfEra);
}

} // namespace

bool CmDate::isEqual(const CmObject* other) const {
    const auto* date = cmCast<CmDate>(other);
    return date != nullptr && julianDay_ == date->julianDay_;
}

int CmDate::compare(const CmObject* other) const {
    const auto* date = cmCast<CmDate>(other);
    if (date == nullptr) {
        return CmObject::compare(other);
    }
    return julianDay_ < date->julianDay_ ? -1 : julianDay_ > date->julianDay_ ? 1 : 0;
}

std::uint32_t CmDate::hash(std::uint32_t tableSize) const {
    return tableSize != 0 ? static_cast<std::uint32_t>(julianDay_) % tableSize : 0;
}

bool CmDate::storeAttributes(FAttributes& attributes) const {
    return attributes.setInt(kJulianKey, julianDay_);
}

bool CmDate::restoreAttributes(FAttributes& attributes) {
    std::int64_t day = 0;
    if (!attributes.getInt(kJulianKey, day)) {
        return false;
    }
    julianDay_ = nearestDay(day);
    return true;
}

CmDate* CmDate::clone() const {
    return new CmDate(*this);
}

void CmDate::setFromUnixTime(std::int64_t seconds) {
    julianDay_ = nearestDay(floorDivide(seconds, CmTime::kSecondsPerDay) + kUnixEpoch);
}

CmDate::Civil CmDate::getCivil() const {
    const std::int64_t days = julianDay_ - kFirstEra;
    const std::int64_t era = floorDivide(days, kDaysPerEra);
    const std::int64_t dayOfEra = days - era * kDaysPerEra;
    // The leap days are taken out first: one in 4 years, none in 100, one in 400.
    const std::int64_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36'524 - dayOfEra / 146'096) / 365;
    const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const std::int64_t marchMonth = (5 * dayOfYear + 2) / 153;
    const std::int64_t month = marchMonth < 10 ? marchMonth + 3 : marchMonth - 9;
    const std::int64_t year = era * kYearsPerEra + yearOfEra + (month <= 2 ? 1 : 0);
    return {static_cast<std::int32_t>(year), static_cast<std::int32_t>(month),
            static_cast<std::int32_t>(dayOfYear - (153 * marchMonth + 2) / 5 + 1)};
}

bool CmDate::setCivil(std::int32_t year, std::int32_t month, std::int32_t day) {
    if (year < 0 || year > 9999 || month < 1 || month > 12 || day < 1 || day > 31) {
        return false;
    }
    const CmDate date(toJulianDay(year, month, day));
    // A day that the month doesn't have comes back as one of the next month.
    if (date.getCivil().day != day) {
        return false;
    }
    julianDay_ = date.julianDay_;
    return true;
}

std::int32_t CmDate::getWeekDay() const {
    const std::int32_t day = julianDay_ % 7;
    return day < 0 ? day + 7 : day;
}

std::int64_t CmDate::getSeconds(const CmTime& time) const {
    return std::int64_t{julianDay_} * CmTime::kSecondsPerDay + time.secondsOfDay();
}

FString CmDate::getText() const {
    const Civil civil = getCivil();
    FString text;
    text.printf("%04d-%02d-%02d", civil.year, civil.month, civil.day);
    return text;
}

bool CmDate::setText(const FStringRef& text) {
    const auto fields = readNumberFields(text, '-');
    return fields && setCivil(static_cast<std::int32_t>((*fields)[0]), static_cast<std::int32_t>((*fields)[1]),
                              static_cast<std::int32_t>((*fields)[2]));
}

} // namespace tessera
