// OpenSound: opens a sound file by a path in UTF-8, whatever characters the system's own call takes.
#pragma once

#include <sndfile.h>
#include <string>

namespace tessera::programs {

// As sf_open: the caller closes it with sf_close; null with the reason in sf_strerror.
SNDFILE* openSound(const std::string& utf8Path, int mode, SF_INFO* info);

} // namespace tessera::programs
