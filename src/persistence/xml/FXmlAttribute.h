// FXmlAttribute: the name and the value of one attribute of a tag.
//
// As the parser delivers it, the value holds the bytes that stood in the document, with the entities resolved; what
// code page they are in is the reader's business. An attribute stands in one FXmlAttributeList at a time.
#pragma once

#include "foundation/object/CmClass.h"
#include "foundation/text/FString.h"

#include <string_view>

namespace tessera {

class FXmlAttribute : public CmClass<FXmlAttribute, CmObject> {
public:
    static FMetaClass metaClass;

    FXmlAttribute() = default;
    FXmlAttribute(const FStringRef& name, const FStringRef& value) : name_(name), value_(value) {}
    // The copy stands in no list.
    FXmlAttribute(const FXmlAttribute& other) : CmClass(other), name_(other.name_), value_(other.value_) {}
    FXmlAttribute& operator=(const FXmlAttribute&) = delete;
    ~FXmlAttribute() override;

    FXmlAttribute* clone() const override;

    const FString& getName() const { return name_; }
    const FString& getValue() const { return value_; }
    FString& value() { return value_; }
    // 8-bit text. Text that is there already costs nothing: a tag often has the names of the tag before it.
    void setName(std::string_view name);
    void setValue(std::string_view value);

private:
    // Which includes the iterator.
    friend class FXmlAttributeList;

    FString name_;
    FString value_;
    FXmlAttribute* next_ = nullptr;
};

} // namespace tessera
