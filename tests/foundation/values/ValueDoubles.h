// Values and targets that note what happens to them.
#pragma once

#include "foundation/messages/FMessage.h"
#include "foundation/values/UIntValue.h"

#include <string>
#include <vector>

namespace tessera::test {

class NotedTarget : public CmObject {
public:
    ~NotedTarget() override {
        if (gone != nullptr) {
            *gone = true;
        }
    }
    void updateFrom(CmObject* changed, std::int32_t message) override {
        from.push_back(changed);
        updates.push_back(message);
    }
    std::int32_t receiveMessage(FMessage* message) override {
        messages.emplace_back(message->getName());
        values.push_back(message->getObject(FStringRef("Value")));
        return 1;
    }

    std::vector<CmObject*> from;
    std::vector<std::int32_t> updates;
    std::vector<std::string> messages;
    std::vector<CmObject*> values;
    bool* gone = nullptr;
};

class NotedValue : public UIntValue {
public:
    NotedValue(std::int32_t value, std::int32_t minimum, std::int32_t maximum) : UIntValue(value, minimum, maximum) {}
    void notify() override {
        steps.emplace_back("notify");
        endedByUser = hasState(kEndFromUser);
        UIntValue::notify();
    }
    bool checkChange() override {
        steps.emplace_back("check");
        return permitted;
    }
    void applyChange() override { steps.emplace_back("apply"); }
    void beginEdit(bool fromUser) override {
        steps.emplace_back("begin");
        UIntValue::beginEdit(fromUser);
    }
    void endEdit(bool fromUser) override {
        steps.emplace_back("end");
        UIntValue::endEdit(fromUser);
    }

    std::vector<std::string> steps;
    bool permitted = true;
    bool endedByUser = false;
};

} // namespace tessera::test
