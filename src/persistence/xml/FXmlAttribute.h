// FXmlAttribute: the name and the value of one attribute of a tag.
//
// As the parser delivers it, the value holds the bytes that stood in the document, with the entities resolved; what
// code page they are in is the reader's business. An attribute stands in one FXmlAttributeList at a time.
//
// The bytes lie in buffers that keep their room from tag to tag; the strings are made of them when they are asked for.
// A reader in a hurry takes the views.
#pragma once

#include "foundation/object/CmClass.h"
#include "foundation/text/FString.h"

#include <string>
#include <string_view>

namespace tessera {

class FXmlAttribute : public CmClass<FXmlAttribute, CmObject> {
public:
    static FMetaClass metaClass;

    FXmlAttribute() = default;
    FXmlAttribute(const FStringRef& name, const FStringRef& value);
    // The copy stands in no list.
    FXmlAttribute(const FXmlAttribute& other);
    FXmlAttribute& operator=(const FXmlAttribute&) = delete;
    ~FXmlAttribute() override;

    FXmlAttribute* clone() const override;

    const FString& getName() const { return name_.string(); }
    const FString& getValue() const { return value_.string(); }
    FString& value() { return value_.string(); }
    // The same where it is 8-bit text; empty for 16-bit text.
    std::string_view nameView() const { return name_.view(); }
    std::string_view valueView() const { return value_.view(); }
    // 8-bit text.
    void setName(std::string_view name) { name_.assign(name); }
    void setValue(std::string_view value) { value_.assign(value); }

private:
    // Which includes the iterator.
    friend class FXmlAttributeList;

    class Text {
    public:
        Text() = default;
        explicit Text(const FStringRef& text) : string_(text), isString_(true) {}

        FString& string() const {
            if (!isString_) {
                string_.assign8(bytes_.data(), static_cast<std::int32_t>(bytes_.size()));
                isString_ = true;
            }
            return string_;
        }
        std::string_view view() const { return isString_ ? string_.view8() : std::string_view(bytes_); }
        void assign(std::string_view text) {
            if (isString_ && !string_.isWide() && string_.view8() == text) {
                return;
            }
            bytes_.assign(text);
            isString_ = false;
        }

    private:
        std::string bytes_;
        // What the bytes are as a string, once that has been asked for; then it is the text.
        mutable FString string_{""};
        mutable bool isString_ = false;
    };

    Text name_;
    Text value_;
    FXmlAttribute* next_ = nullptr;
};

} // namespace tessera
