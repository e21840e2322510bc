#include "platform/ProgramArguments.h"

#include "platform/windows/WideText.h"

// Before the one that needs it.
#include <windows.h>

#include <shellapi.h>

#include <memory>

namespace tessera::platform {

std::vector<std::string> ProgramArguments::textsOf(int count, char** values) {
    int found = 0;
    const std::unique_ptr<wchar_t*[], decltype(&LocalFree)> arguments(CommandLineToArgvW(GetCommandLineW(), &found),
                                                                      LocalFree);
    if (arguments == nullptr) {
        return {values, values + count};
    }
    std::vector<std::string> texts;
    for (int i = 0; i < found; ++i) {
        texts.push_back(utf8Of(arguments[static_cast<std::size_t>(i)]));
    }
    return texts;
}

} // namespace tessera::platform
