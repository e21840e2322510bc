// A program that stands for the peer: it writes its arguments, each in brackets on a line of its own, to the file that
// the variable TESX_TEST_REPORT names.
#include "common/Utf8Path.h"
#include "platform/ProgramArguments.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

int main(int argc, char** argv) {
    tessera::platform::ProgramArguments arguments(argc, argv);
    const char* report = std::getenv("TESX_TEST_REPORT");
    if (report == nullptr) {
        return 1;
    }
    const std::filesystem::path path = tessera::programs::nativePath(report);
    std::filesystem::path unfinished = path;
    unfinished += ".new";
    std::ofstream out(unfinished, std::ios::binary);
    for (int i = 1; i < arguments.count(); ++i) {
        out << "[" << arguments.values()[i] << "]\n";
    }
    out.close();
    std::filesystem::rename(unfinished, path);
}
