// The three copies of an edit on real files, 24 bit stereo: a range, a splice, the whole of finishEdit. The host's side
// is bare reads and writes, so what is measured is how the module asks for them.
#include "workflow/EditSession.h"

#include "workflow/AudioSplice.h"
#include "workflow/FileStore.h"
#include "workflow/FrameBlock.h"

#include "support/host/FakeHost.h"

#include <benchmark/benchmark.h>
#include <sndfile.h>
#include <spawn.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <initializer_list>
#include <random>
#include <vector>

extern char** environ;

namespace {

using namespace tessera;
using namespace tessera::test;
namespace fs = std::filesystem;

constexpr std::int64_t kSmall = 1'000'000;
constexpr std::int64_t kLarge = 10'000'000;

// A folder for this run, which is the temporary folder of everything in it.
class RunFolder {
public:
    RunFolder() : path_(fs::temp_directory_path() / ("tesx-benchmark-" + std::to_string(getpid()))) {
        fs::create_directories(path_ / "song" / "Audio");
        setenv("TMPDIR", path_.c_str(), 1);
    }
    ~RunFolder() { fs::remove_all(path_); }
    fs::path operator/(const std::string& name) const { return path_ / name; }

private:
    fs::path path_;
};

const RunFolder& folder() {
    static const RunFolder run;
    return run;
}

SNDFILE* create(const fs::path& path) {
    SF_INFO info{};
    info.channels = kStereo24.channels;
    info.samplerate = static_cast<int>(kStereo24.sampleRate);
    info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_24;
    return sf_open(path.c_str(), SFM_WRITE, &info);
}

SNDFILE* openForRead(const fs::path& path) {
    SF_INFO info{};
    return sf_open(path.c_str(), SFM_READ, &info);
}

// A sound file of noise, made once.
fs::path sound(std::int64_t frames, const std::string& name) {
    const fs::path path = folder() / (name + std::to_string(frames) + ".wav");
    if (!fs::exists(path)) {
        SNDFILE* file = create(path);
        std::minstd_rand random(1);
        std::vector<int> block(200'000);
        for (std::int64_t left = frames; left > 0; left -= 100'000) {
            for (int& sample : block) {
                sample = static_cast<int>(random()) << 8;
            }
            sf_writef_int(file, block.data(), std::min<std::int64_t>(left, 100'000));
        }
        sf_close(file);
    }
    return path;
}

std::u16string wide(const fs::path& path) {
    const std::string text = path.string();
    return {text.begin(), text.end()};
}

void run(std::initializer_list<std::string> command) {
    std::vector<char*> arguments;
    for (const std::string& argument : command) {
        arguments.push_back(const_cast<char*>(argument.c_str()));
    }
    arguments.push_back(nullptr);
    pid_t child = 0;
    int status = 1;
    if (posix_spawnp(&child, arguments[0], nullptr, nullptr, arguments.data(), environ) == 0) {
        waitpid(child, &status, 0);
    }
    if (status != 0) {
        std::abort();
    }
}

void setBytes(benchmark::State& state) {
    state.SetBytesProcessed(state.iterations() * state.range(0) * kStereo24.bytesPerFrame());
}

void copyRange(benchmark::State& state) {
    FileStore store;
    const auto source = wide(sound(state.range(0), "original"));
    const auto target = wide(folder() / "copy.wav");
    for (auto _ : state) {
        const auto reader = store.reader(source);
        const auto writer = store.writer(target, kStereo24);
        reader->open();
        writer->open();
        if (!FrameBlock().copy(*reader, *writer, state.range(0))) {
            state.SkipWithError("the copy failed");
        }
    }
    setBytes(state);
}

void bareReadAndWrite(benchmark::State& state) {
    const fs::path source = sound(state.range(0), "original");
    const fs::path target = folder() / "copy.wav";
    for (auto _ : state) {
        const int in = open(source.c_str(), O_RDONLY);
        const int out = open(target.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        lseek(in, kHeaderSize, SEEK_SET);
        lseek(out, kHeaderSize, SEEK_SET);
        std::vector<char> block(16384 * static_cast<std::size_t>(kStereo24.bytesPerFrame()));
        for (ssize_t got = read(in, block.data(), block.size()); got > 0; got = read(in, block.data(), block.size())) {
            benchmark::DoNotOptimize(write(out, block.data(), static_cast<std::size_t>(got)));
        }
        close(in);
        close(out);
    }
    setBytes(state);
}

void splice(benchmark::State& state) {
    FileStore store;
    FakeHost host(&store);
    const std::int64_t third = state.range(0) / 3;
    const auto whole = makeFake<FakeFile>(store, host.script, wide(sound(state.range(0), "original")));
    const auto edited = makeFake<FakeFile>(store, host.script, wide(sound(third, "edited")));
    for (auto _ : state) {
        auto target = makeFake<FakeFile>(store, host.script, wide(folder() / "song/Audio"));
        const auto result =
            AudioSplice(host.services.get(), FRefPtr<IHostFile>(whole.get()), FRefPtr<IHostFile>(edited.get()))
                .spliceInto(FRefPtr<IHostFile>(target.get()), third, third);
        state.PauseTiming();
        if (!result) {
            state.SkipWithError("the splice failed");
        }
        fs::remove(narrow(target->text()));
        host.script.clear();
        state.ResumeTiming();
    }
    setBytes(state);
}

void cp(benchmark::State& state) {
    const fs::path source = sound(state.range(0), "original");
    const fs::path target = folder() / "song/Audio/cp.wav";
    for (auto _ : state) {
        run({"cp", source.string(), target.string()});
        state.PauseTiming();
        fs::remove(target);
        state.ResumeTiming();
    }
    setBytes(state);
}

class Peer final : public IPeerLink {
public:
    bool isPeerAvailable() override { return true; }
    void openAudioFile(IHostFile*) override {}
    IHostFile* editSelection() override { return nullptr; }
    void cancelAudioFile(IHostFile*) override {}
    std::int32_t suspendDriver(const char16_t*) override { return 0; }
};

void finishEdit(benchmark::State& state) {
    FileStore store;
    FakeHost host(&store, wide(folder() / "song"));
    const double seconds = static_cast<double>(state.range(0)) / static_cast<double>(kStereo24.sampleRate);
    const auto event = host.addEvent(wide(sound(state.range(0), "original")), {0, seconds / 3, seconds / 3});
    host.selection->select(1, event.get());
    Peer peer;
    EditSession session;
    session.start(&peer);
    session.beginEdit();
    const fs::path exchanged = folder() / "Marlgrove/TeEx";
    const std::string edited = "original" + std::to_string(state.range(0)) + ".wav";
    for (auto _ : state) {
        const FResult result = session.finishEdit("");
        state.PauseTiming();
        if (result != kResultOk || host.undo->blocks.empty()) {
            state.SkipWithError("the edit failed");
            break;
        }
        host.undo->undo();
        host.undo->blocks.clear();
        host.project->fakePool().nodes.clear();
        host.script.clear();
        for (const auto& entry : fs::directory_iterator(folder() / "song/Audio")) {
            fs::remove(entry.path());
        }
        for (const auto& entry : fs::directory_iterator(exchanged)) {
            if (entry.path().filename() != edited) {
                fs::remove(entry.path());
            }
        }
        state.ResumeTiming();
    }
    session.stop();
    fs::remove_all(exchanged);
    setBytes(state);
}

// The same two copies by way of integers: the whole file, then head, edit and tail.
void copyInts(SNDFILE* in, SNDFILE* out, std::int64_t frames) {
    std::vector<int> block(16384 * static_cast<std::size_t>(kStereo24.channels));
    while (frames > 0) {
        const sf_count_t got = sf_readf_int(in, block.data(), std::min<std::int64_t>(frames, 16384));
        if (got < 1) {
            return;
        }
        sf_writef_int(out, block.data(), got);
        frames -= got;
    }
}

void finishByInts(benchmark::State& state) {
    const std::int64_t frames = state.range(0);
    const fs::path original = sound(frames, "original");
    const fs::path editedPath = sound(frames / 3, "edited");
    for (auto _ : state) {
        SNDFILE* in = openForRead(original);
        SNDFILE* out = create(folder() / "whole.wav");
        copyInts(in, out, frames);
        sf_close(in);
        sf_close(out);
        in = openForRead(folder() / "whole.wav");
        SNDFILE* edited = openForRead(editedPath);
        out = create(folder() / "spliced.wav");
        copyInts(in, out, frames / 3);
        copyInts(edited, out, frames / 3);
        sf_seek(in, frames / 3 * 2, SEEK_SET);
        copyInts(in, out, frames - frames / 3 * 2);
        sf_close(in);
        sf_close(edited);
        sf_close(out);
        state.PauseTiming();
        fs::remove(folder() / "whole.wav");
        fs::remove(folder() / "spliced.wav");
        state.ResumeTiming();
    }
    setBytes(state);
}

// A copy, then head, edit and tail that lie ready as files of their own.
void finishBySox(benchmark::State& state) {
    const std::int64_t third = state.range(0) / 3;
    const std::string original = sound(state.range(0), "original");
    const std::string part = sound(third, "edited");
    const std::string whole = folder() / "whole.wav";
    const std::string spliced = folder() / "spliced.wav";
    for (auto _ : state) {
        run({"sox", original, whole});
        run({"sox", part, part, part, spliced});
        state.PauseTiming();
        fs::remove(whole);
        fs::remove(spliced);
        state.ResumeTiming();
    }
    setBytes(state);
}

const auto registered = [] {
    const auto add = [](const char* name, void (*function)(benchmark::State&)) {
        benchmark::RegisterBenchmark(name, function)
            ->Arg(kSmall)
            ->Arg(kLarge)
            ->UseRealTime()
            ->Unit(benchmark::kMillisecond);
    };
    add("workflow.copyRange/ours", copyRange);
    add("workflow.copyRange/syscalls", bareReadAndWrite);
    add("workflow.splice/ours", splice);
    add("workflow.splice/cp", cp);
    add("workflow.finishEdit/ours", finishEdit);
    add("workflow.finishEdit/sndfile", finishByInts);
    add("workflow.finishEdit/sox", finishBySox);
    return 0;
}();

} // namespace
