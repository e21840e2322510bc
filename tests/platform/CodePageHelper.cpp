// Prints, as hexadecimal code units, what the bytes given as the only argument (in hexadecimal, too) are in the
// system's code page, or "invalid"; behind them the number of the code page that CodePage::system stands for. The test
// runs it in environments of its own, since a process decides for one code page when it is loaded.
#include "platform/CodePages.h"

#include <clocale>
#include <cstdio>
#include <string>
#include <string_view>

int main(int argc, char** argv) {
    using namespace tessera;
    if (argc != 2) {
        return 2;
    }
    // What a host does later must make no difference.
    std::setlocale(LC_ALL, "C");
    std::string bytes;
    const std::string_view digits = argv[1];
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
        bytes += static_cast<char>(std::stoi(std::string(digits.substr(i, 2)), nullptr, 16));
    }
    char16_t units[64];
    const CodePage page = platform::resolveCodePage(CodePage::system);
    const std::ptrdiff_t count = platform::widen(page, bytes.data(), bytes.size(), units, 64);
    if (count < 0) {
        std::printf("invalid ");
    }
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        std::printf("%04x ", static_cast<unsigned>(units[i]));
    }
    std::printf("%u", static_cast<unsigned>(page));
    return 0;
}
