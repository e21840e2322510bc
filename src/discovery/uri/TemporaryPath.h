// TemporaryPath: a path in the temporary folder that nobody else comes up with. Nothing is made there; told to, the
// object removes whatever its owner put there when it goes.
#pragma once

#include "discovery/uri/Uri.h"

namespace tessera {

class TemporaryPath {
public:
    enum class AtEnd { keep, remove };

    // An empty URI when there is no temporary folder.
    explicit TemporaryPath(AtEnd atEnd = AtEnd::keep);
    TemporaryPath(const TemporaryPath&) = delete;
    TemporaryPath& operator=(const TemporaryPath&) = delete;
    ~TemporaryPath();

    const Uri& uri() const { return uri_; }
    void setAtEnd(AtEnd atEnd) { atEnd_ = atEnd; }

private:
    Uri uri_;
    AtEnd atEnd_;
};

} // namespace tessera
