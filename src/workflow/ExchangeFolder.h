// The exchange folder: where the files lie that go to the peer, "Marlgrove/TeEx" in the user's temporary folder.
// Nothing in it is ever deleted by us: the peer may have a file open for as long as it likes.
#pragma once

#include "foundation/object/FRefPtr.h"
#include "shell/hostapi/IHostFile.h"

namespace tessera {

// A new host file object for the folder, which is made if it isn't there. Null when the user has no temporary folder,
// or the host makes no file objects. Main thread.
FRefPtr<IHostFile> exchangeFolder();

} // namespace tessera
