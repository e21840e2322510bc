#include "persistence/xml/FXmlAttribute.h"

namespace tessera {

FXmlAttribute::FXmlAttribute(const FStringRef& name, const FStringRef& value) : name_(name), value_(value) {}

FXmlAttribute::FXmlAttribute(const FXmlAttribute& other)
    : CmClass(other), name_(other.getName()), value_(other.getValue()) {}

FXmlAttribute::~FXmlAttribute() = default;

FXmlAttribute* FXmlAttribute::clone() const {
    return new FXmlAttribute(*this);
}

} // namespace tessera
