#include "peer/HandOver.h"

#include "common/Utf8Path.h"
#include "foundation/threads/FThread.h"
#include "platform/Processes.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace tessera::peer {
namespace {

namespace fs = std::filesystem;
using programs::nativePath;

constexpr int kPollMs = 20;

bool writeWhole(const fs::path& path, const std::string& text) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << text;
    file.close();
    return !file.fail();
}

} // namespace

HandOver::HandOver(std::string folder) : folder_(std::move(folder)) {
    std::error_code ignored;
    fs::create_directories(nativePath(folder_), ignored);
}

bool HandOver::tryBecomeLive() {
    if (!lock_) {
        lock_ = platform::InstanceLock::tryAcquire(folder_ + "/live", folderProblem_);
    }
    return lock_.has_value();
}

HandOver::Outcome HandOver::handOver(const std::string& path, int timeoutMs) {
    const fs::path letter = nativePath(folder_) / (std::to_string(platform::ownProcessId()) + ".open");
    fs::path draft = letter;
    draft.replace_extension(".draft");
    std::error_code error;
    if (!writeWhole(draft, path) || (fs::rename(draft, letter, error), error)) {
        fs::remove(draft, error);
        return Outcome::NobodyTookIt;
    }
    for (int waited = 0; waited < timeoutMs; waited += kPollMs) {
        if (!fs::exists(letter, error)) {
            return Outcome::Taken;
        }
        if (tryBecomeLive()) {
            // The live one may have read the letter as its last act; whoever removes it has the file.
            return fs::remove(letter, error) ? Outcome::BecameLive : Outcome::Taken;
        }
        FThread::sleep(kPollMs);
    }
    return fs::remove(letter, error) ? Outcome::NobodyTookIt : Outcome::Taken;
}

std::vector<std::string> HandOver::takeFiles() {
    std::vector<fs::path> letters;
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(nativePath(folder_), error)) {
        if (entry.path().extension() == ".open") {
            letters.push_back(entry.path());
        }
    }
    std::sort(letters.begin(), letters.end());
    std::vector<std::string> paths;
    for (const fs::path& letter : letters) {
        std::ifstream file(letter, std::ios::binary);
        std::string path{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
        file.close();
        if (fs::remove(letter, error) && !path.empty()) {
            paths.push_back(std::move(path));
        }
    }
    return paths;
}

} // namespace tessera::peer
