// OwnRegistry: registry values of its own for one test, empty at first and gone at the end of the scope. What the user
// and the machine keep there is neither seen nor touched.
//
// Where values are files, they are in folder(). Not for use while other threads are at the registry.
#pragma once

#include "support/ScratchFolder.h"

#include <filesystem>
#include <memory>

namespace tessera::testing_support {

class OwnRegistry {
public:
    OwnRegistry();
    OwnRegistry(const OwnRegistry&) = delete;
    OwnRegistry& operator=(const OwnRegistry&) = delete;
    ~OwnRegistry();

    const ScratchFolder& folder() const { return folder_; }
    // Takes away what the values are kept in: none is there, and none can be written from now on.
    void remove();

private:
    class Redirection;

    ScratchFolder folder_;
    std::unique_ptr<Redirection> redirection_;
};

} // namespace tessera::testing_support
