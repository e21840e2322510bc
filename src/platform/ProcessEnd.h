// ProcessEnd: how far the end of this process has come. From any thread.
#pragma once

namespace tessera::platform {

// Whether the system has stopped all other threads already, as Windows has when the exit handlers of a module run.
// Whoever waits for one of them waits for good then; what they worked on the system takes away with the process.
bool otherThreadsAreGone();

} // namespace tessera::platform
