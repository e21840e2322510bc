// Loads the library of the first argument, has it begin to work, and ends: "EndingHelper LIBRARY REPORT PROGRAM".
#include "platform/DynamicLibrary.h"
#include "platform/ProgramArguments.h"

int main(int argc, char** argv) {
    tessera::platform::ProgramArguments arguments(argc, argv);
    if (arguments.count() != 4) {
        return 2;
    }
    char** words = arguments.values();
    auto library = tessera::platform::DynamicLibrary::load(words[1]);
    // Never given back: the library goes down with the process.
    auto* kept = library ? new tessera::platform::DynamicLibrary(std::move(*library)) : nullptr;
    using Begin = bool (*)(const char* report, const char* program);
    const auto begin = kept != nullptr ? reinterpret_cast<Begin>(kept->symbol("beginWork")) : nullptr;
    return begin != nullptr && begin(words[2], words[3]) ? 0 : 1;
}
