#include "foundation/text/FVariant.h"

#include <cstdlib>
#include <utility>

namespace tessera {

FVariant::FVariant(FVariant&& other) noexcept
    : type_(std::exchange(other.type_, kEmpty)), value_(std::exchange(other.value_, Value{0})) {}

FVariant& FVariant::operator=(FVariant&& other) noexcept {
    if (this != &other) {
        clear();
        type_ = std::exchange(other.type_, kEmpty);
        value_ = std::exchange(other.value_, Value{0});
    }
    return *this;
}

void FVariant::setInteger(std::int64_t value) {
    clear();
    type_ = kInteger;
    value_.integer = value;
}

void FVariant::setFloat(double value) {
    clear();
    type_ = kFloat;
    value_.real = value;
}

void FVariant::setText8(const char* text, std::uint16_t ownerBit) {
    clear();
    type_ = static_cast<std::uint16_t>(kText8 | ownerBit);
    value_.text8 = text;
}

void FVariant::setText16(const char16_t* text, std::uint16_t ownerBit) {
    clear();
    type_ = static_cast<std::uint16_t>(kText16 | ownerBit);
    value_.text16 = text;
}

void FVariant::setObject(IBaseUnknown* object, std::uint16_t ownerBit) {
    clear();
    type_ = static_cast<std::uint16_t>(kObject | ownerBit);
    value_.object = object;
}

void FVariant::clear() {
    // Emptied first: releasing the object may lead back here.
    const std::uint16_t word = std::exchange(type_, kEmpty);
    const Value value = std::exchange(value_, Value{0});
    if ((word & kOwner) == 0) {
        return;
    }
    switch (word & kTypeMask) {
    case kText8:
        std::free(const_cast<char*>(value.text8));
        return;
    case kText16:
        std::free(const_cast<char16_t*>(value.text16));
        return;
    case kObject:
        if (value.object != nullptr) {
            value.object->release();
        }
        return;
    default:
        return;
    }
}

} // namespace tessera
