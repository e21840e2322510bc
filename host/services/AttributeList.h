// AttributeList: what a guest wants to travel with an exported file.
#pragma once

#include "host/objects/HostCore.h"
#include "host/objects/HostObject.h"
#include "shell/hostapi/AttributeValue.h"
#include "shell/hostapi/IAttributeList.h"

#include <memory>
#include <string>
#include <vector>

namespace tessera::host {

class AttributeList final : public HostObject<AttributeList, UnusedSlots<IAttributeList>> {
public:
    struct Attribute {
        std::string key;
        std::string text; // numbers as text, too
    };

    explicit AttributeList(const std::shared_ptr<HostCore>& core) : HostObject(core->watch, "AttributeList") {}

    const std::vector<Attribute>& attributes() const { return attributes_; }
    // "key=text; key=text".
    std::string asText() const;

    FResult set(const char* key, const AttributeValue* value, std::int64_t unused) override;

private:
    void unusedSlotCalled(const char* interfaceName, int slot) override { reportReserved(interfaceName, slot); }

    std::vector<Attribute> attributes_;
};

} // namespace tessera::host
