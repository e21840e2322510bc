// The host's settings on the disk: those of the process (see FGlobalDefaultPool) in one file in the folder of the
// host's own user data. What the user has to know is told in one line, in the user's language. Main thread.
#pragma once

#include <functional>
#include <string>

namespace tessera::host {

// The name of the host in the user's folders, and of its settings, so that they never meet those of another program.
inline constexpr char kHostFolderName[] = "tesx-host";

using Tell = std::function<void(const std::string& line)>;

// A damaged file is put aside, and the one before it used where a save was broken off; otherwise all begins afresh.
// Where the damaged one can't be put aside, nothing is saved in this run, so that it isn't lost.
void loadSettings(const Tell& tell);

// Nothing without a folder for the user's data.
void saveSettings(const Tell& tell);

} // namespace tessera::host
