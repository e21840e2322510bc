#include "support/Skips.h"

namespace tessera::testing_support {

const char* whyNoSymbolicLinks() {
    return nullptr;
}

const char* whyNoBackslashInNames() {
    return nullptr;
}

const char* whyNoCaseInNames() {
    return nullptr;
}

} // namespace tessera::testing_support
