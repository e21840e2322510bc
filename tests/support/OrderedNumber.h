// OrderedNumber: a CmObject with a number for its value, and a count of those alive. It has no record of its own.
#pragma once

#include "foundation/object/CmObject.h"

namespace tessera::test {

class OrderedNumber : public CmObject {
public:
    explicit OrderedNumber(int number) : value(number) { ++alive; }
    OrderedNumber(const OrderedNumber& other) : CmObject(other), value(other.value) { ++alive; }
    OrderedNumber& operator=(const OrderedNumber&) = delete;
    ~OrderedNumber() override { --alive; }

    bool isEqual(const CmObject* other) const override { return compare(other) == 0; }
    int compare(const CmObject* other) const override {
        const int others = static_cast<const OrderedNumber*>(other)->value;
        return value < others ? -1 : value > others ? 1 : 0;
    }
    OrderedNumber* clone() const override { return new OrderedNumber(*this); }

    int value;
    static inline int alive = 0;
};

} // namespace tessera::test
