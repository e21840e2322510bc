// An editor for the tests. The last arguments are what the peer puts in: a file to read and one to write, or one to
// edit in place.
//   reverse IN OUT           the frames from back to front
//   copy IN OUT
//   take OTHER IN OUT        another file as the result
//   take OTHER FILE          the same in place
//   nothing [FILE]...        ends at once
//   exit CODE IN OUT
//   text IN OUT              writes what is no sound
//   named NAME MARK IN OUT   copies if the input has that name, leaves the file MARK behind, and spoils the input
//   linger MARK IN OUT       copies, leaves MARK behind and stays until it is ended
//   linger-at NAME IN OUT    stays if the input has that name, else copies
#include "common/OpenSound.h"
#include "common/Utf8Path.h"
#include "platform/ProgramArguments.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

namespace {

namespace fs = std::filesystem;
using tessera::programs::nativePath;
using tessera::programs::openSound;
using tessera::programs::utf8Text;
using Paths = std::vector<fs::path>;

void write(const fs::path& path, const char* text) {
    std::ofstream(path, std::ios::binary) << text;
}

void copySound(const fs::path& from, const fs::path& to) {
    // The standard's own copy doesn't replace files on every system.
    fs::remove(to);
    fs::copy_file(from, to);
}

// For as long as the input is there, which goes with the folder of the test; and not for ever.
void stay(const fs::path& in) {
    constexpr auto kLook = std::chrono::milliseconds(50);
    constexpr auto kLongest = std::chrono::minutes(2);
    std::error_code error;
    for (auto waited = kLook; waited < kLongest && fs::exists(in, error); waited += kLook) {
        std::this_thread::sleep_for(kLook);
    }
}

int reverse(const fs::path& in, const fs::path& out) {
    SF_INFO info = {};
    SNDFILE* source = openSound(utf8Text(in), SFM_READ, &info);
    if (source == nullptr) {
        return 1;
    }
    const auto width = static_cast<std::size_t>(info.channels);
    std::vector<int> samples(static_cast<std::size_t>(info.frames) * width);
    sf_read_int(source, samples.data(), static_cast<sf_count_t>(samples.size()));
    sf_close(source);
    std::vector<int> reversed;
    for (std::size_t frame = samples.size() / width; frame-- > 0;) {
        reversed.insert(reversed.end(), &samples[frame * width], &samples[frame * width] + width);
    }
    SNDFILE* result = openSound(utf8Text(out), SFM_WRITE, &info);
    if (result == nullptr) {
        return 1;
    }
    sf_write_int(result, reversed.data(), static_cast<sf_count_t>(reversed.size()));
    return sf_close(result);
}

} // namespace

int main(int argc, char** argv) {
    tessera::platform::ProgramArguments arguments(argc, argv);
    if (arguments.count() < 3) {
        return 2;
    }
    const std::string command = arguments.values()[1];
    const std::string parameter = arguments.values()[2];
    Paths paths;
    for (int i = 2; i < arguments.count(); ++i) {
        paths.push_back(nativePath(arguments.values()[i]));
    }
    const fs::path& out = paths.back();
    const fs::path& in = paths[paths.size() - std::min<std::size_t>(paths.size(), 2)];
    if (command == "reverse") {
        return reverse(in, out);
    }
    if (command == "copy") {
        copySound(in, out);
    } else if (command == "take") {
        copySound(paths.front(), out);
    } else if (command == "exit") {
        return std::atoi(parameter.c_str());
    } else if (command == "text") {
        write(out, "hello\n");
    } else if (command == "named") {
        if (in.filename() != paths.front()) {
            return 1;
        }
        write(paths[1], "");
        copySound(in, out);
        write(in, "");
    } else if (command == "linger") {
        copySound(in, out);
        write(paths.front(), "");
        stay(in);
    } else if (command == "linger-at") {
        if (in.filename() == paths.front()) {
            stay(in);
            return 0;
        }
        copySound(in, out);
    }
    return 0;
}
