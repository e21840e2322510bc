#include "appservices/formatting/DateTimeText.h"

#include "appservices/formatting/CmDate.h"
#include "appservices/formatting/CmTime.h"

namespace tessera {
namespace {

constexpr char kSeparator = ' ';
constexpr const char* kMidnight = "0:00:00";
constexpr const char* kWeekDays[] = {"Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"};
// The fourth and the fifth have changed places, and that is what all dates of this form have been written with.
constexpr const char* kMonths[] = {"Jan", "Feb", "Mar", "May", "Apr", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

std::int32_t findSeparator(const FStringRef& text) {
    return text.isWide() ? text.indexOf(0, static_cast<char16_t>(kSeparator)) : text.indexOf(0, kSeparator);
}

} // namespace

FString internetDateText(const CmDate& date, const CmTime& time) {
    const CmDate::Civil civil = date.getCivil();
    FString text;
    text.printf("%s, %02d %s %d %02d:%02d:%02d GMT", kWeekDays[date.getWeekDay()], civil.day, kMonths[civil.month - 1],
                civil.year, time.getHours(), time.getMinutes(), time.getSecondsOfMinute());
    return text;
}

bool readDateTime(const FStringRef& text, CmDate& date, CmTime& time) {
    const std::int32_t separator = findSeparator(text);
    CmDate readDate;
    CmTime readTime;
    const bool complete = separator < 0 ? readDate.setText(text) && readTime.setText(kMidnight)
                                        : readDate.setText(FStringRef(text, 0, separator)) &&
                                              readTime.setText(FStringRef(text, separator + 1));
    if (complete) {
        date.setJulianDay(readDate.getJulianDay());
        time.setSeconds(readTime.getSeconds());
    }
    return complete;
}

} // namespace tessera
