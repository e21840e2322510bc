#include "support/Skips.h"

namespace tessera::testing_support {

const char* whyNoSymbolicLinks() {
    return "the standard library of this compiler neither makes nor sees links here";
}

const char* whyNoBackslashInNames() {
    return "a backslash ends a folder's name here";
}

const char* whyNoCaseInNames() {
    return "one name in two cases is one file here";
}

} // namespace tessera::testing_support
