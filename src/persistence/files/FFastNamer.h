// FFastNamer: finds the next free number behind a name in few questions, even when thousands are taken.
//
// "Take" becomes "Take-01"; if that is taken, numbers are doubled until one is free, and the first free one is searched
// between the last two. That assumes that the taken numbers have no gaps: after a gap the name is free, but may not be
// the lowest.
#pragma once

#include "persistence/paths/IUniqueNamer.h"

namespace tessera {

class FFastNamer : public IUniqueNamer {
public:
    enum class Suffix { keep, strip };

    // With strip, a number that the base already has ("Take-07") is taken off first.
    explicit FFastNamer(Suffix suffix = Suffix::strip) : suffix_(suffix) {}
    virtual ~FFastNamer() = default;

    bool makeName(const FStringRef& base, const FStringRef& extension, ICandidateChecker& checker,
                  FString& result) override;

private:
    Suffix suffix_;
};

} // namespace tessera
