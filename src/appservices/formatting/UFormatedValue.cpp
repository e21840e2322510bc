#include "appservices/formatting/UFormatedValue.h"

#include "appservices/formatting/NumberText.h"
#include "appservices/translation/TranslatedText.h"
#include "foundation/values/CutToInteger.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace tessera {
namespace {

constexpr double kHertzPerKilohertz = 1000;
constexpr std::int32_t kUnitDecimals = 2;

// These hold words; all other forms are the same in every language.
constinit TranslatedText sampleRateForm{u"%.3f kHz"};
constinit TranslatedText bitRateForm{u"%d kBit/s"};
constinit TranslatedText variableBitRateForm{u"VBR %d kBit/s"};
constinit TranslatedText integerSampleForm{u"%d bit"};
constinit TranslatedText floatSampleForm{u"32 bit float"};

} // namespace

bool UFormatedValue::isTypeOf(const char* className, bool askBase) const {
    return CmClass::isTypeOf(className, askBase) || (askBase && UValue::isTypeOf(className, true));
}

UFormatedValue* UFormatedValue::clone() const {
    return new UFormatedValue(*this);
}

void UFormatedValue::setVersion(std::int32_t major, std::int32_t minor, std::int32_t revision) {
    change({Kind::version, {major, minor, revision}, 0, 0, {}});
}

void UFormatedValue::setRectangle(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom) {
    change({Kind::rectangle, {left, top, right, bottom}, 0, 0, {}});
}

void UFormatedValue::setSampleRate(double rate) {
    change({Kind::sampleRate, {}, rate, 0, {}});
}

void UFormatedValue::setBitRate(std::int32_t rate) {
    change({Kind::bitRate, {rate}, 0, 0, {}});
}

void UFormatedValue::setVariableBitRate(std::int32_t rate) {
    change({Kind::variableBitRate, {rate}, 0, 0, {}});
}

void UFormatedValue::setDuration(std::int32_t seconds) {
    change({Kind::duration, {std::max(seconds, 0)}, 0, 0, {}});
}

void UFormatedValue::setIntegerSampleWidth(std::int32_t bits) {
    change({Kind::integerSampleWidth, {bits}, 0, 0, {}});
}

void UFormatedValue::setFloatSampleWidth() {
    change({Kind::floatSampleWidth, {32}, 0, 0, {}});
}

void UFormatedValue::setNumberWithUnit(double number, const FStringRef& unit) {
    change({Kind::numberWithUnit, {}, number, 0, unit});
}

void UFormatedValue::setIntegerWithUnit(std::int32_t number, const FStringRef& unit) {
    change({Kind::integerWithUnit, {number}, 0, 0, unit});
}

void UFormatedValue::setNumber(double number, std::int32_t decimals) {
    change({Kind::number, {}, number, decimals, {}});
}

void UFormatedValue::setValue(std::int32_t value) {
    Content content = content_;
    if (hasFraction(content.kind)) {
        content.number = value;
    } else if (content.kind == Kind::duration) {
        content.integers[0] = std::max(value, 0);
    } else if (content.kind != Kind::floatSampleWidth) {
        content.integers[0] = value;
    }
    change(std::move(content));
}

std::int32_t UFormatedValue::getValue() const {
    return hasFraction(content_.kind) ? cutToInteger(content_.number) : content_.integers[0];
}

void UFormatedValue::copyValue(const UValue* other) {
    if (const auto* formatted = cmCast<UFormatedValue>(static_cast<const CmObject*>(other)); formatted != nullptr) {
        change(formatted->content_);
    } else if (other != nullptr) {
        setValue(other->getValue());
    }
}

bool UFormatedValue::getString(FString& text) const {
    const auto& [first, second, third, fourth] = content_.integers;
    switch (content_.kind) {
    case Kind::version:
        return text.printf(u"%d.%d.%d", first, second, third);
    case Kind::rectangle:
        return text.printf(u"(%d|%d|%d|%d)", first, second, third, fourth);
    case Kind::sampleRate:
        return text.printf(translateFormat(sampleRateForm), content_.number / kHertzPerKilohertz);
    case Kind::bitRate:
        return text.printf(translateFormat(bitRateForm), first);
    case Kind::variableBitRate:
        return text.printf(translateFormat(variableBitRateForm), first);
    case Kind::duration:
        return text.printf(u"%.2d:%.2d:%.2d", first / 3600, first % 3600 / 60, first % 60);
    case Kind::integerSampleWidth:
        return text.printf(translateFormat(integerSampleForm), first);
    case Kind::floatSampleWidth:
        return text.printf(translateFormat(floatSampleForm));
    case Kind::numberWithUnit:
        // "%.2f %s", in which "-0.00" never shows.
        text = formatNumber(content_.number, kUnitDecimals);
        text.appendChar(' ');
        text.append(content_.unit);
        return true;
    case Kind::integerWithUnit: {
        const FString unit(content_.unit);
        return text.printf(u"%d %s", first, unit.text16());
    }
    case Kind::number:
        text = formatNumber(content_.number, content_.decimals);
        return true;
    }
    return false;
}

bool UFormatedValue::setString(const FStringRef&) {
    return false;
}

void UFormatedValue::change(Content content) {
    if (isSame(content, content_) || !checkChange()) {
        return;
    }
    content_ = std::move(content);
    applyChange();
    if (!hasState(kUnreported)) {
        notify();
    }
}

bool UFormatedValue::isSame(const Content& a, const Content& b) {
    // By their bits, so that what is no number equals itself.
    return a.kind == b.kind && a.integers == b.integers && a.decimals == b.decimals && a.unit == b.unit &&
           std::bit_cast<std::uint64_t>(a.number) == std::bit_cast<std::uint64_t>(b.number);
}

bool UFormatedValue::hasFraction(Kind kind) {
    return kind == Kind::sampleRate || kind == Kind::numberWithUnit || kind == Kind::number;
}

} // namespace tessera
