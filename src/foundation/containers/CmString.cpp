#include "foundation/containers/CmString.h"

#include "foundation/containers/CmContainer.h"
#include "foundation/object/FRefPtr.h"

#include <string_view>

namespace tessera {
namespace {

template <class Character>
void addItem(CmContainer& list, std::basic_string_view<Character> piece, FItemForm form, FEmptyLastItem empty) {
    auto item =
        FRefPtr<CmString>::adopt(new CmString(FStringRef(piece.data(), static_cast<std::int32_t>(piece.size()))));
    if (form == FItemForm::trimmed) {
        item->string().trim();
    }
    const bool wanted = !item->isEmpty() || empty == FEmptyLastItem::kept;
    if (wanted && list.add(item.get())) {
        // The creation reference is the list's now.
        static_cast<void>(item.detach());
    }
}

template <class Character>
std::int32_t splitText(const Character* text, Character separator, CmContainer& list, FItemForm form,
                       FEmptyLastItem emptyLast) {
    list.setOwnership(CmOwnership::owner);
    if (text == nullptr) {
        return list.getCount();
    }
    std::basic_string_view<Character> rest(text);
    for (std::size_t at = rest.find(separator); at != rest.npos; at = rest.find(separator)) {
        addItem(list, rest.substr(0, at), form, FEmptyLastItem::dropped);
        rest.remove_prefix(at + 1);
    }
    addItem(list, rest, form, emptyLast);
    return list.getCount();
}

} // namespace

FResult CmString::queryInterface(const FUIDBytes& uid, void** out) {
    if (uid == IStringSource::iid) {
        addReference();
        *out = static_cast<IStringSource*>(this);
        return kResultOk;
    }
    return CmClass::queryInterface(uid, out);
}

bool CmString::isEqual(const CmObject* other) const {
    const auto* string = cmCast<CmString>(other);
    return string != nullptr ? text_.compare(string->text_) == 0 : CmObject::isEqual(other);
}

int CmString::compare(const CmObject* other) const {
    const auto* string = cmCast<CmString>(other);
    return string != nullptr ? text_.compare(string->text_) : CmObject::compare(other);
}

std::uint32_t CmString::hash(std::uint32_t tableSize) const {
    return text_.hash(tableSize);
}

CmString* CmString::clone() const {
    return new CmString(*this);
}

void CmString::setText8(const char* text) {
    text_.assign8(text);
}

void CmString::setText16(const char16_t* text) {
    text_.assign16(text);
}

const char* CmString::getText8() {
    return text_.text8();
}

const char16_t* CmString::getText16() {
    return text_.text16();
}

bool CmString::isWide() {
    return text_.isWide();
}

bool CmString::isEmpty() {
    return text_.isEmpty();
}

std::int32_t CmString::split(const char* text, char separator, CmContainer& list, FItemForm form,
                             FEmptyLastItem emptyLast) {
    return splitText(text, separator, list, form, emptyLast);
}

std::int32_t CmString::split(const char16_t* text, char16_t separator, CmContainer& list, FItemForm form,
                             FEmptyLastItem emptyLast) {
    return splitText(text, separator, list, form, emptyLast);
}

} // namespace tessera
