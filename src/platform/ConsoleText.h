// ConsoleText: our programs speak UTF-8, and a console has to know. For the programs of ours alone: a module leaves its
// host's console as it is.
#pragma once

namespace tessera::platform {

// From now on to the end of the process a console shows what comes as UTF-8; then it is as before, since others use it
// as well. Output to files and pipes stays as it is. Before the first output; what is printed shows once it is flushed.
void showUtf8InConsole();

// From now on what is typed into a console comes as UTF-8 from std::cin. Input from files and pipes stays as it is.
// Before the first input.
void readUtf8FromConsole();

} // namespace tessera::platform
