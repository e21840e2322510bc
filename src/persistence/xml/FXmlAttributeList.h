// FXmlAttributeList: the attributes of one tag, in the order in which they stand there.
//
// The list holds a reference of each. The attributes are chained to each other, so that a list needs no memory of its
// own and moves as a whole. Two attributes may have one name; find gives the first.
#pragma once

#include "foundation/object/FRefPtr.h"
#include "persistence/xml/FXmlAttribute.h"

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>

namespace tessera {

class FXmlAttributeList {
public:
    class Iterator {
    public:
        using iterator_category = std::input_iterator_tag;
        using value_type = FXmlAttribute;
        using difference_type = std::ptrdiff_t;
        using pointer = const FXmlAttribute*;
        using reference = const FXmlAttribute&;

        explicit Iterator(const FXmlAttribute* attribute) : attribute_(attribute) {}
        const FXmlAttribute& operator*() const { return *attribute_; }
        const FXmlAttribute* operator->() const { return attribute_; }
        Iterator& operator++();
        friend bool operator==(const Iterator& a, const Iterator& b) = default;

    private:
        const FXmlAttribute* attribute_;
    };

    FXmlAttributeList() = default;
    FXmlAttributeList(const FXmlAttributeList&) = delete;
    FXmlAttributeList& operator=(const FXmlAttributeList&) = delete;
    ~FXmlAttributeList() { clear(); }

    std::int32_t getCount() const { return count_; }
    bool isEmpty() const { return first_ == nullptr; }
    Iterator begin() const { return Iterator(first_); }
    Iterator end() const { return Iterator(nullptr); }

    // Null when there is none of that name. Names are 8-bit and compared byte by byte.
    const FXmlAttribute* find(std::string_view name) const;
    // The value of the first attribute of that name, or null.
    const FString* valueOf(std::string_view name) const;

    // At the end. The attribute must stand in no other list.
    void add(FRefPtr<FXmlAttribute> attribute);
    void add(const FStringRef& name, const FStringRef& value);
    // Null when the list is empty.
    FRefPtr<FXmlAttribute> takeFirst();
    void clear();
    // Lets go of the attributes that others hold references of as well.
    void dropShared();
    // Takes over all of the other list, in front of what this one has.
    void prepend(FXmlAttributeList& other);

private:
    FXmlAttribute* first_ = nullptr;
    FXmlAttribute* last_ = nullptr;
    std::int32_t count_ = 0;
};

inline FXmlAttributeList::Iterator& FXmlAttributeList::Iterator::operator++() {
    attribute_ = attribute_->next_;
    return *this;
}

} // namespace tessera
