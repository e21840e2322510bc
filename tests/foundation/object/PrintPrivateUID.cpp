// Prints this load's private identifier.
#include "foundation/object/FObject.h"
#include "foundation/object/FUID.h"

#include <cstdio>

int main() {
    char text[tessera::FUID::kTextSize];
    tessera::FUID(tessera::FObject::privateUID()).toString(text);
    std::fputs(text, stdout);
}
