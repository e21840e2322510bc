#include "platform/ProgramArguments.h"

namespace tessera::platform {

std::vector<std::string> ProgramArguments::textsOf(int count, char** values) {
    return {values, values + count};
}

} // namespace tessera::platform
