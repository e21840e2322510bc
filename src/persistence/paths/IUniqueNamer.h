// IUniqueNamer: finds a name that nobody has yet; ICandidateChecker answers its questions about a candidate.
#pragma once

#include "foundation/text/FString.h"

namespace tessera {

struct ICandidateChecker {
    // Whether the name, with folder and extension, is short enough.
    virtual bool isValid(const FStringRef& candidate) = 0;
    // Whether a file, or a folder where a folder is named, has that name.
    virtual bool isTaken(const FStringRef& candidate) = 0;

protected:
    ~ICandidateChecker() = default;
};

struct IUniqueNamer {
    // base comes without folder, dot and extension. True with a free name in result; false with an empty one.
    virtual bool makeName(const FStringRef& base, const FStringRef& extension, ICandidateChecker& checker,
                          FString& result) = 0;

protected:
    ~IUniqueNamer() = default;
};

} // namespace tessera
