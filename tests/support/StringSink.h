// StringSink: a foreign string object that takes 8-bit text and keeps it.
#pragma once

#include "foundation/text/IStringSource.h"
#include "support/ForeignObject.h"

#include <string>

namespace tessera::test {

class StringSink : public ForeignObject<IStringSource> {
public:
    void setText8(const char* newText) override { text = newText; }

    std::string text = "(nothing)";
};

} // namespace tessera::test
