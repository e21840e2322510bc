// InterruptRequest: the user's wish that a program end, by Ctrl-C or by the system's polite form of ending it. For the
// programs of ours alone: a module never touches its host's signals.
#pragma once

namespace tessera::platform {

// From now on such a wish is noted; the second one ends the process at once.
void noteInterrupts();
bool interruptRequested();

} // namespace tessera::platform
