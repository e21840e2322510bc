#include "support/Skips.h"

namespace tessera::testing_support {

const char* whyNoSymbolicLinks() {
    return nullptr;
}

const char* whyNoOddNames() {
    return nullptr;
}

const char* whyNoCaseInNames() {
    return nullptr;
}

const char* whyNoLanguageInVariables() {
    return nullptr;
}

const char* whyNoFileSizeLimit() {
    return nullptr;
}

} // namespace tessera::testing_support
