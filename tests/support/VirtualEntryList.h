// VirtualEntryList: the entries of a folder in an archive, walked from a list.
#pragma once

#include "persistence/archives/IVirtualFileSystem.h"
#include "support/Counted.h"

#include <utility>
#include <vector>

namespace tessera::test {

class VirtualEntryList final : public Counted<IVirtualIterator> {
public:
    explicit VirtualEntryList(std::vector<VirtualEntry> entries) : entries_(std::move(entries)) {}

    FResult next(VirtualEntry* entry) override {
        if (next_ == entries_.size()) {
            return kResultFalse;
        }
        *entry = entries_[next_++];
        return kResultOk;
    }
    FResult reset() override {
        next_ = 0;
        return kResultOk;
    }

private:
    std::vector<VirtualEntry> entries_;
    std::size_t next_ = 0;
};

} // namespace tessera::test
