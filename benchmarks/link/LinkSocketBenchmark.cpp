// The socket and the messages beside bare nanomsg: what the module adds to the library's own work.
#include "link/LinkSocket.h"

#include "link/PeerController.h"
#include "link/WireMessage.h"
#include "support/PinnedProcess.h"
#include "workflow/HostServices.h"

#include <benchmark/benchmark.h>
#include <nanomsg/nn.h>
#include <nanomsg/pair.h>

#include <atomic>
#include <string>
#include <thread>
#include <unistd.h>

namespace {

using namespace tessera;

const bool pinned = (pinToOneProcessor(), true);

std::string address(const char* name) {
    return "ipc:///tmp/tesx-benchmark-" + std::to_string(getpid()) + name;
}

// A bare nanomsg pair socket that gives every message back, or swallows it.
class OtherSide {
public:
    enum class Does { Echo, Swallow };

    OtherSide(const std::string& where, Does does) : socket_(nn_socket(AF_SP, NN_PAIR)) {
        nn_connect(socket_, where.c_str());
        thread_ = std::thread([this, does] { run(does); });
    }
    ~OtherSide() {
        ending_ = true;
        thread_.join();
        nn_close(socket_);
    }

private:
    void run(Does does) {
        const int timeOutMs = 50;
        nn_setsockopt(socket_, NN_SOL_SOCKET, NN_RCVTIMEO, &timeOutMs, sizeof timeOutMs);
        while (!ending_) {
            void* bytes = nullptr;
            const int length = nn_recv(socket_, &bytes, NN_MSG, 0);
            if (length < 0) {
                continue;
            }
            if (does == Does::Echo) {
                nn_send(socket_, &bytes, NN_MSG, 0);
            } else {
                nn_freemsg(bytes);
            }
        }
    }

    int socket_;
    std::atomic<bool> ending_{false};
    std::thread thread_;
};

// With the time limits that ours has: nanomsg reads the clock at each call on a socket with a limit, also at those that
// don't wait.
class BareSocket {
public:
    explicit BareSocket(const std::string& where) : socket_(nn_socket(AF_SP, NN_PAIR)) {
        const int limitMs = 4000;
        nn_setsockopt(socket_, NN_SOL_SOCKET, NN_RCVTIMEO, &limitMs, sizeof limitMs);
        nn_setsockopt(socket_, NN_SOL_SOCKET, NN_SNDTIMEO, &limitMs, sizeof limitMs);
        nn_bind(socket_, where.c_str());
    }
    ~BareSocket() { nn_close(socket_); }
    int id() const { return socket_; }

private:
    int socket_;
};

void roundTrip(benchmark::State& state) {
    LinkSocket socket(address("ours"));
    socket.open(LinkSide::Bind);
    const OtherSide other(address("ours"), OtherSide::Does::Echo);
    const std::string message(static_cast<std::size_t>(state.range(0)), 'x');
    socket.sendAndReceive(message, SendMode::Blocking);
    for (auto _ : state) {
        benchmark::DoNotOptimize(socket.sendAndReceive(message, SendMode::Blocking));
    }
}

void bareRoundTrip(benchmark::State& state) {
    const BareSocket socket(address("bare"));
    const OtherSide other(address("bare"), OtherSide::Does::Echo);
    const std::string message(static_cast<std::size_t>(state.range(0)), 'x');
    const auto exchange = [&] {
        nn_send(socket.id(), message.data(), message.size(), 0);
        void* bytes = nullptr;
        benchmark::DoNotOptimize(nn_recv(socket.id(), &bytes, NN_MSG, 0));
        nn_freemsg(bytes);
    };
    exchange();
    for (auto _ : state) {
        exchange();
    }
}

void poll(benchmark::State& state) {
    PeerController controller;
    controller.openLink();
    if (!controller.isLinkOpen()) {
        state.SkipWithError("another module of this user has the address");
    }
    for (auto _ : state) {
        controller.pollOnce();
    }
}

void barePoll(benchmark::State& state) {
    const BareSocket socket(address("bare"));
    for (auto _ : state) {
        void* bytes = nullptr;
        benchmark::DoNotOptimize(nn_recv(socket.id(), &bytes, NN_MSG, NN_DONTWAIT));
    }
}

void writeAndSend(benchmark::State& state) {
    LinkSocket socket(address("ours"));
    socket.open(LinkSide::Bind);
    const OtherSide other(address("ours"), OtherSide::Does::Swallow);
    const std::string path(static_cast<std::size_t>(state.range(0)), 'p');
    for (auto _ : state) {
        benchmark::DoNotOptimize(socket.send(writeMessage({WireVerb::openFile, path}), SendMode::Blocking));
    }
}

void bareSend(benchmark::State& state) {
    const BareSocket socket(address("bare"));
    const OtherSide other(address("bare"), OtherSide::Does::Swallow);
    const std::string message = "2;openFile;" + std::string(static_cast<std::size_t>(state.range(0)), 'p') + ";";
    for (auto _ : state) {
        benchmark::DoNotOptimize(nn_send(socket.id(), message.data(), message.size(), 0));
    }
}

const auto registered = [] {
    benchmark::RegisterBenchmark("link.roundTrip/ours", roundTrip)->Arg(40)->Arg(400)->Arg(4000)->UseRealTime();
    benchmark::RegisterBenchmark("link.roundTrip/nanomsg", bareRoundTrip)->Arg(40)->Arg(400)->Arg(4000)->UseRealTime();
    benchmark::RegisterBenchmark("link.poll/ours", poll);
    benchmark::RegisterBenchmark("link.poll/nanomsg", barePoll);
    benchmark::RegisterBenchmark("link.send/ours", writeAndSend)->Arg(40)->Arg(400)->Arg(4000)->UseRealTime();
    benchmark::RegisterBenchmark("link.send/nanomsg", bareSend)->Arg(40)->Arg(400)->Arg(4000)->UseRealTime();
    return 0;
}();

} // namespace
