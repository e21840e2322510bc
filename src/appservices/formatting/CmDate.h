// CmDate: a day, for containers and settings.
//
// One Julian day number: the count of days since 24 November 4714 BC of the Gregorian calendar, carried back before its
// time; 1 January 1970 is 2440588. The year 0 is 1 BC. Every number is a day.
#pragma once

#include "foundation/object/CmClass.h"
#include "foundation/text/FString.h"

#include <cstdint>

namespace tessera {

class CmTime;

class CmDate : public CmClass<CmDate, CmObject> {
public:
    static FMetaClass metaClass;
    static constexpr std::int32_t kUnixEpoch = 2'440'588;

    struct Civil {
        std::int32_t year;
        // From 1.
        std::int32_t month;
        std::int32_t day;
    };

    explicit CmDate(std::int32_t julianDay = 0) : julianDay_(julianDay) {}
    CmDate(const CmDate& other) = default;
    CmDate& operator=(const CmDate&) = delete;
    ~CmDate() override = default;

    bool isEqual(const CmObject* other) const override;
    int compare(const CmObject* other) const override;
    std::uint32_t hash(std::uint32_t tableSize) const override;
    // The attribute "Julian", an integer. Without it restoring is false; a number that doesn't fit becomes the nearest.
    bool storeAttributes(FAttributes& attributes) const override;
    bool restoreAttributes(FAttributes& attributes) override;
    CmDate* clone() const override;

    std::int32_t getJulianDay() const { return julianDay_; }
    void setJulianDay(std::int32_t julianDay) { julianDay_ = julianDay; }
    // The day of a count of seconds since 1970, as files have it; the nearest day that there is, if it lies beyond.
    void setFromUnixTime(std::int64_t seconds);

    Civil getCivil() const;
    // False, and nothing changed, for a day that the calendar doesn't have or a year outside 0 to 9999.
    bool setCivil(std::int32_t year, std::int32_t month, std::int32_t day);
    // 0 is Monday.
    std::int32_t getWeekDay() const;

    // The moment as one number that grows with time: seconds since midnight of day 0.
    std::int64_t getSeconds(const CmTime& time) const;

    // "2001-01-31". Reading takes three numbers of at most four digits and nothing else; false leaves the date as it
    // was, also for days that setCivil refuses.
    FString getText() const;
    bool setText(const FStringRef& text);

private:
    std::int32_t julianDay_;
};

} // namespace tessera
