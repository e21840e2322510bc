#include "support/Skips.h"

namespace tessera::testing_support {

const char* whyNoSymbolicLinks() {
    return "the standard library of this compiler neither makes nor sees links here";
}

const char* whyNoOddNames() {
    return "a backslash or a colon can't stand in a name here";
}

const char* whyNoCaseInNames() {
    return "one name in two cases is one file here";
}

const char* whyNoLanguageInVariables() {
    return "the language is a setting of the system here, and no variable changes it";
}

const char* whyNoFileSizeLimit() {
    return "no process here can limit the length of its files";
}

} // namespace tessera::testing_support
