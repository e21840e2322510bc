// CmTime: a time of the day, for containers and settings.
//
// One count of seconds since midnight, UTC where it goes with a CmDate. Any count is kept as it was given; the parts of
// the day, its text and secondsOfDay look at the day alone, so a day and a second count as the first second.
#pragma once

#include "foundation/object/CmClass.h"
#include "foundation/text/FString.h"

#include <cstdint>

namespace tessera {

class CmTime : public CmClass<CmTime, CmObject> {
public:
    static FMetaClass metaClass;
    static constexpr std::uint32_t kSecondsPerDay = 86'400;

    explicit CmTime(std::uint32_t seconds = 0) : seconds_(seconds) {}
    CmTime(const CmTime& other) = default;
    CmTime& operator=(const CmTime&) = delete;
    ~CmTime() override = default;

    bool isEqual(const CmObject* other) const override;
    int compare(const CmObject* other) const override;
    std::uint32_t hash(std::uint32_t tableSize) const override;
    // The attribute "Seconds". Without it restoring is false; a number that doesn't fit becomes the nearest one.
    bool storeAttributes(FAttributes& attributes) const override;
    bool restoreAttributes(FAttributes& attributes) override;
    CmTime* clone() const override;

    std::uint32_t getSeconds() const { return seconds_; }
    void setSeconds(std::uint32_t seconds) { seconds_ = seconds; }
    // The time of the day of a count of seconds since 1970, as files have it.
    void setFromUnixTime(std::int64_t seconds);
    // False, and nothing changed, for what no clock shows: hours to 23, minutes and seconds to 59.
    bool setClock(std::uint32_t hours, std::uint32_t minutes, std::uint32_t seconds);

    std::uint32_t secondsOfDay() const { return seconds_ % kSecondsPerDay; }
    std::int32_t getHours() const { return static_cast<std::int32_t>(secondsOfDay() / 3600); }
    std::int32_t getMinutes() const { return static_cast<std::int32_t>(secondsOfDay() % 3600 / 60); }
    std::int32_t getSecondsOfMinute() const { return static_cast<std::int32_t>(secondsOfDay() % 60); }

    // "10:05:00". Reading takes three numbers of at most four digits and nothing else; false leaves the time as it was.
    FString getText() const;
    bool setText(const FStringRef& text);

private:
    std::uint32_t seconds_;
};

} // namespace tessera
