#include "persistence/xml/FXmlAttribute.h"

namespace tessera {

namespace {

void assignText(FString& target, std::string_view text) {
    if (target.isWide() || target.view8() != text) {
        target.assign8(text.data(), static_cast<std::int32_t>(text.size()));
    }
}

} // namespace

FXmlAttribute::~FXmlAttribute() = default;

FXmlAttribute* FXmlAttribute::clone() const {
    return new FXmlAttribute(*this);
}

void FXmlAttribute::setName(std::string_view name) {
    assignText(name_, name);
}

void FXmlAttribute::setValue(std::string_view value) {
    assignText(value_, value);
}

} // namespace tessera
