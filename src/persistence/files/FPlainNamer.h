// FPlainNamer: counts upward from the number that a name already has: "Take-07" becomes "Take-08", or the first free
// one above; "Take" becomes "Take-01".
#pragma once

#include "persistence/paths/IUniqueNamer.h"

namespace tessera {

class FPlainNamer : public IUniqueNamer {
public:
    virtual ~FPlainNamer() = default;

    bool makeName(const FStringRef& base, const FStringRef& extension, ICandidateChecker& checker,
                  FString& result) override;
};

} // namespace tessera
