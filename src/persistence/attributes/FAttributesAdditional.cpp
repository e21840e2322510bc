// Foreign attribute lists inside of a tree.
#include "foundation/containers/CmContainer.h"
#include "foundation/messages/FIntIDAttribute.h"
#include "foundation/text/FNumberText.h"
#include "persistence/attributes/FAttributes.h"

#include <algorithm>
#include <string_view>

namespace tessera {

namespace {

constexpr std::string_view kNumberPrefix = "IntID:";
constexpr std::uint16_t kLeftOut = AttributeBits::kTransient | AttributeBits::kPointer;
constexpr int kIdBytes = 4;

bool isPrintable(char c) {
    return c >= ' ' && c <= '~';
}

FString keyOfNumber(std::uint32_t id) {
    char text[kIdBytes];
    for (int i = 0; i < kIdBytes; ++i) {
        text[i] = static_cast<char>(id >> (8 * i) & 0xff);
    }
    if (std::all_of(text, text + kIdBytes, isPrintable)) {
        return {text, kIdBytes};
    }
    FString key(kNumberPrefix.data());
    key.append(FNumberText::unsignedInteger(id).ref());
    return key;
}

std::uint32_t numberOfKey(const FStringRef& key) {
    const FString narrow(key);
    const std::string_view text(narrow.text8());
    std::uint32_t id = 0;
    if (text.starts_with(kNumberPrefix)) {
        narrow.getUInt32(id, static_cast<std::int32_t>(kNumberPrefix.size()));
        return id;
    }
    for (std::size_t i = 0; i < std::min<std::size_t>(text.size(), kIdBytes); ++i) {
        id |= static_cast<std::uint32_t>(static_cast<unsigned char>(text[i])) << (8 * i);
    }
    return id;
}

FRefPtr<FAttributeValue> newRecord(FAttributes::AdditionalKeys keys, const FStringRef& key) {
    return FRefPtr<FAttributeValue>::adopt(keys == FAttributes::AdditionalKeys::numbers
                                               ? static_cast<FAttributeValue*>(new FIntIDAttribute(numberOfKey(key)))
                                               : new FStringIDAttribute(key));
}

} // namespace

bool FAttributes::exportAdditional(const CmContainer& list, const FStringRef& key) {
    auto tree = FRefPtr<FAttributes>::adopt(new FAttributes);
    const bool complete = list.forEach([&tree](CmObject* element) {
        const auto* value = cmCast<FAttributeValue>(element);
        if (value == nullptr || value->hasType(kLeftOut)) {
            return true;
        }
        FString name;
        if (const auto* numbered = cmCast<FIntIDAttribute>(element)) {
            name = keyOfNumber(numbered->getId());
        } else if (const auto* named = cmCast<FStringIDAttribute>(element)) {
            name = named->getKey();
        } else {
            return true;
        }
        auto* record = new FStringIDAttribute(name);
        record->copyFrom(*value);
        return tree->append(record);
    });
    return complete && setObject(key, tree.detach(), AttributeHolding::owned);
}

bool FAttributes::importAdditional(CmContainer& list, AdditionalKeys keys, AdditionalPresent present,
                                   const FStringRef& key) const {
    const FAttributes* tree = getTree(key);
    if (tree == nullptr) {
        return false;
    }
    for (std::int32_t i = 0; i < tree->getCount(); ++i) {
        const FStringIDAttribute& source = *tree->at(i);
        auto record = newRecord(keys, source.getKey());
        auto* same = cmCast<FAttributeValue>(list.find(record.get()));
        if (same != nullptr) {
            if (present == AdditionalPresent::replaced) {
                same->copyFrom(source);
            }
            continue;
        }
        record->copyFrom(source);
        if (!list.add(record.get())) {
            return false;
        }
        // A list that shares has a reference of its own now; any other takes this one.
        if (list.getOwnership() != CmOwnership::shared) {
            static_cast<void>(record.detach());
        }
    }
    return true;
}

} // namespace tessera
