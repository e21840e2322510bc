#include "peer/EditJob.h"

#include "common/Utf8Path.h"
#include "platform/ProgramRun.h"

#include <chrono>
#include <filesystem>

namespace tessera::peer {
namespace {

namespace fs = std::filesystem;
using programs::nativePath;
using programs::utf8Text;

// The standard's own copy doesn't replace files on every system.
void copyOver(const fs::path& from, const fs::path& to, std::error_code& error) {
    std::error_code ignored;
    fs::remove(to, ignored);
    fs::copy_file(from, to, error);
}

// A name beside the file that nothing bears.
fs::path unusedNameBeside(const fs::path& file) {
    std::error_code ignored;
    fs::path name = file;
    name += ".edited";
    for (int number = 2; fs::exists(fs::symlink_status(name, ignored)); ++number) {
        name = file;
        name += ".edited" + std::to_string(number);
    }
    return name;
}

} // namespace

EditJob::EditJob(EditorCommand command, std::string exchangeFile, std::string workFolder)
    : FThread("tesx-peer.editor"),
      command_(std::move(command)),
      exchangeFile_(std::move(exchangeFile)),
      workFolder_(std::move(workFolder)) {}

EditJob::~EditJob() {
    stop();
    join();
}

std::uint32_t EditJob::run() {
    edit();
    if (!keepWork_) {
        std::error_code ignored;
        fs::remove_all(nativePath(workFolder_), ignored);
    }
    ended_.store(true, std::memory_order_release);
    return 0;
}

bool EditJob::edit() {
    return prepareCopies() && runEditor() && checkResult() && publish();
}

bool EditJob::fail(std::string problem) {
    problem_ = std::move(problem);
    return false;
}

// Both copies keep the file's own name, as that is what an editor with a window shows.
bool EditJob::prepareCopies() {
    const fs::path exchange = nativePath(exchangeFile_);
    const fs::path work = nativePath(workFolder_);
    const fs::path original = work / "original" / exchange.filename();
    const fs::path edited = work / "edited" / exchange.filename();
    original_ = utf8Text(original);
    edited_ = utf8Text(edited);
    std::error_code error;
    fs::create_directories(original.parent_path(), error);
    fs::create_directories(edited.parent_path(), error);
    copyOver(exchange, original, error);
    if (!error && command_.editsInPlace()) {
        copyOver(original, edited, error);
        // Times may come in whole seconds, and an editor may be quicker: the copy looks old, so that any save shows.
        std::error_code ignored;
        fs::last_write_time(edited, fs::file_time_type::clock::now() - std::chrono::hours(1), ignored);
    }
    if (error) {
        return fail("cannot copy " + exchangeFile_ + " for the editor: " + error.message());
    }
    std::string reason;
    const auto facts = readSoundFacts(original_, &reason);
    if (!facts) {
        return fail(exchangeFile_ + " is no sound file that can be edited: " + reason);
    }
    wanted_ = *facts;
    return true;
}

bool EditJob::runEditor() {
    std::error_code error;
    const auto before = fs::last_write_time(nativePath(edited_), error);
    const std::string& in = command_.editsInPlace() ? edited_ : original_;
    const platform::ProgramEnd end = platform::runProgram(command_.program(), command_.arguments(in, edited_), stop_);
    switch (end.kind) {
    case platform::ProgramEnd::Kind::NotStarted:
        return fail("cannot start the editor " + command_.program() + ": " + platform::systemErrorText(end.code) +
                    "; check the name behind --editor");
    case platform::ProgramEnd::Kind::Crashed:
        return fail("the editor " + command_.program() + " was ended by signal " + std::to_string(end.code));
    case platform::ProgramEnd::Kind::Stopped:
        return fail("the edit was given up");
    case platform::ProgramEnd::Kind::Exited:
        break;
    }
    if (end.code != 0) {
        return fail("the editor " + command_.program() + " ended with code " + std::to_string(end.code) +
                    "; its own message stands above");
    }
    const auto after = fs::last_write_time(nativePath(edited_), error);
    if (error) {
        return fail("the editor " + command_.program() + " wrote no file; its command has to write to {out}");
    }
    if (command_.editsInPlace() && after == before) {
        return fail("the editor was closed without saving");
    }
    return true;
}

bool EditJob::checkResult() {
    std::string reason;
    const auto facts = readSoundFacts(edited_, &reason);
    if (!facts) {
        keepWork_ = true;
        return fail("what the editor wrote is no sound file: " + reason + "; it stays at " + edited_);
    }
    if (facts->rate != wanted_.rate || facts->channels != wanted_.channels) {
        keepWork_ = true;
        return fail("what the editor wrote has " + facts->text() + ", expected " + wanted_.text() +
                    "; save it at the same rate and with the same channels; it stays at " + edited_);
    }
    keptLength_ = facts->frames == wanted_.frames;
    if (facts->sameFormat(wanted_)) {
        return true;
    }
    const fs::path converted = nativePath(workFolder_) / "converted" / nativePath(edited_).filename();
    std::error_code ignored;
    fs::create_directories(converted.parent_path(), ignored);
    if (!convertSound(edited_, utf8Text(converted), wanted_, &reason)) {
        keepWork_ = true;
        return fail("what the editor wrote could not be converted back to " + wanted_.text() + ": " + reason +
                    "; it stays at " + edited_);
    }
    edited_ = utf8Text(converted);
    return true;
}

// The work folder may lie on another file system than the exchange folder, where a rename can't reach. So the result is
// first copied beside the exchange file, and takes its name when it is complete.
bool EditJob::publish() {
    if (stop_) {
        return fail("the edit was given up");
    }
    const fs::path exchange = nativePath(exchangeFile_);
    const fs::path complete = unusedNameBeside(exchange);
    std::error_code error;
    fs::copy_file(nativePath(edited_), complete, error);
    const bool isOurs = error != std::errc::file_exists;
    if (!error && !stop_) {
        fs::rename(complete, exchange, error);
        if (!error) {
            return true;
        }
    }
    if (isOurs) {
        std::error_code ignored;
        fs::remove(complete, ignored);
    }
    if (stop_) {
        return fail("the edit was given up");
    }
    keepWork_ = true;
    return fail("cannot write " + exchangeFile_ + ": " + error.message() + "; the result stays at " + edited_);
}

} // namespace tessera::peer
