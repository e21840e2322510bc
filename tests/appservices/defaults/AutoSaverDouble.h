// AutoSaverDouble: an auto-saver with one number for its state, and a count of what it was asked.
#pragma once

#include "foundation/object/CmObject.h"
#include "persistence/attributes/FAttributes.h"

#include <cstdint>
#include <string>

namespace tessera::test {

class AutoSaverDouble : public CmObject {
public:
    explicit AutoSaverDouble(std::string name, std::int64_t start = 0) : state(start), name_(std::move(name)) {}

    const char* getClassName() const override { return name_.c_str(); }
    bool storeAttributes(FAttributes& attributes) const override {
        ++stored;
        attributes.setInt("state", state);
        return !refuses;
    }
    bool restoreAttributes(FAttributes& attributes) override {
        ++restored;
        return attributes.getInt("state", state);
    }

    std::int64_t state;
    bool refuses = false;
    mutable int stored = 0;
    int restored = 0;

private:
    std::string name_;
};

} // namespace tessera::test
