// UFormatedValue: a value that shows numbers as text: versions, rates, durations, sizes of samples, numbers with units.
//
// It is set as one of these kinds and prints on demand, in the language of the user where there are words in the text.
// It isn't typed in: setString refuses. Setting what it shows already does nothing; otherwise checkChange is asked, the
// numbers are stored, applyChange follows and, unless reporting is off, notify. As a plain value it is the number, of
// several the first one, cut to an integer; setValue sets that one and leaves the kind. It has no range, and isn't
// saved.
#pragma once

#include "foundation/values/UValue.h"

#include <array>
#include <cstdint>

namespace tessera {

class UFormatedValue : public CmClass<UFormatedValue, UValue> {
public:
    static FMetaClass metaClass;

    enum class Kind : std::int32_t {
        version,            // "1.2.3"
        rectangle,          // "(0|0|640|480)"
        sampleRate,         // "44.100 kHz"
        bitRate,            // "192 kBit/s"
        variableBitRate,    // "VBR 192 kBit/s"
        duration,           // "01:02:03"
        integerSampleWidth, // "24 bit"
        floatSampleWidth,   // "32 bit float"
        numberWithUnit,     // "-6.00 dB"
        integerWithUnit,    // "3 dB"
        number,             // "1.5", see formatNumber
    };

    // A version: "0.0.0".
    UFormatedValue() = default;
    UFormatedValue(const UFormatedValue& other) = default;
    ~UFormatedValue() override = default;

    bool isTypeOf(const char* className, bool askBase) const override;
    UFormatedValue* clone() const override;

    void setVersion(std::int32_t major, std::int32_t minor, std::int32_t revision);
    void setRectangle(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom);
    // In Hz.
    void setSampleRate(double rate);
    // In kBit/s.
    void setBitRate(std::int32_t rate);
    void setVariableBitRate(std::int32_t rate);
    // In seconds; a negative one is 0.
    void setDuration(std::int32_t seconds);
    void setIntegerSampleWidth(std::int32_t bits);
    void setFloatSampleWidth();
    // The unit is shown as it stands.
    void setNumberWithUnit(double number, const FStringRef& unit);
    void setIntegerWithUnit(std::int32_t number, const FStringRef& unit);
    void setNumber(double number, std::int32_t decimals);

    Kind getKind() const { return content_.kind; }

    bool isEditable() const override { return false; }
    void setValue(std::int32_t value) override;
    std::int32_t getValue() const override;
    // All of another formatted value, the number of any other.
    void copyValue(const UValue* other) override;
    bool getString(FString& text) const override;
    bool setString(const FStringRef& text) override;

private:
    struct Content {
        Kind kind = Kind::version;
        std::array<std::int32_t, 4> integers = {};
        // For the kinds that have a fraction, in place of the first integer.
        double number = 0;
        std::int32_t decimals = 0;
        FString unit;
    };

    void change(Content content);
    static bool isSame(const Content& a, const Content& b);
    static bool hasFraction(Kind kind);

    Content content_;
};

} // namespace tessera
