// What one system costs beside the other: the module from its load to the end of initialize, and a round trip of the
// link. It needs no benchmark library, so that it's the same program on both; prints medians, in microseconds.
#include "link/LinkSocket.h"
#include "platform/DynamicLibrary.h"
#include "platform/ProgramArguments.h"
#include "shell/hostapi/IModuleFactory.h"
#include "shell/hostapi/IPlugin.h"
#include "shell/hostapi/ModuleExports.h"
#include "support/HelperProcess.h"
#include "support/host/FakeContext.h"
#include "support/host/FakeHost.h"

#include <nanomsg/nn.h>
#include <nanomsg/pair.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace tessera;

constexpr FUIDBytes kService = "{973C3773-AC41-4593-BDF4-89C768F4BF5A}"_uid;
constexpr int kLoads = 51;
constexpr int kTrips = 5'000;
constexpr const char* kLoadOnce = "--load-once";

template <class Work>
double microseconds(Work work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start).count();
}

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

// In a process of its own: the module stays loaded to the end of one.
int loadOnce() {
    test::FakeHost host;
    const auto context = test::makeFake<test::FakeContext>("Harrow Max", "9.0.20", host.services.get());
    bool initialized = false;
    const double cost = microseconds([&] {
        static const auto module = platform::DynamicLibrary::load(TESX_MODULE);
        auto* getFactory =
            reinterpret_cast<GetPluginFactoryFunction>(module ? module->symbol(kGetPluginFactoryName) : nullptr);
        void* plugin = nullptr;
        initialized = getFactory != nullptr &&
                      getFactory()->createObject(kService, IBaseUnknown::iid, &plugin) == kResultOk &&
                      static_cast<IPlugin*>(plugin)->initialize(context.get()) == kResultOk;
    });
    std::printf("%.1f\n", initialized ? cost : -1.0);
    std::fflush(stdout);
    std::_Exit(initialized ? 0 : 1);
}

int printLoad(const char* self) {
    std::vector<double> costs;
    for (int i = 0; i < kLoads; ++i) {
        testing_support::HelperProcess process(self, {kLoadOnce});
        const double cost = std::atof(process.hear().c_str());
        if (cost <= 0) {
            std::fputs("platform_figures: the module could not be loaded and initialized\n", stderr);
            return 1;
        }
        costs.push_back(cost);
    }
    std::printf("load to end of initialize  %8.0f us\n", median(costs));
    return 0;
}

// A bare socket gives every message back until it gets an empty one.
void echo(const std::string& address) {
    const int socket = nn_socket(AF_SP, NN_PAIR);
    nn_connect(socket, address.c_str());
    for (int length = 1; length > 0;) {
        void* bytes = nullptr;
        length = nn_recv(socket, &bytes, NN_MSG, 0);
        if (length > 0) {
            nn_send(socket, &bytes, NN_MSG, 0);
        } else if (length == 0) {
            nn_freemsg(bytes);
        }
    }
    nn_close(socket);
}

int printRoundTrip() {
    LinkSocket link(LinkSocket::userAddress("tesx-platform-figures"));
    std::thread other(echo, link.address());
    bool answered = link.open(LinkSide::Bind);
    std::vector<double> costs;
    for (int i = 0; i < kTrips && answered; ++i) {
        costs.push_back(microseconds(
            [&] { answered = !link.sendAndReceive("2;suspendKiteDriver;text;", SendMode::Blocking).empty(); }));
    }
    link.send("", SendMode::Blocking);
    other.join();
    if (!answered) {
        std::fputs("platform_figures: the link was not answered\n", stderr);
        return 1;
    }
    std::printf("round trip of the link     %8.0f us\n", median(costs));
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    platform::ProgramArguments arguments(argc, argv);
    if (arguments.count() > 1 && std::strcmp(arguments.values()[1], kLoadOnce) == 0) {
        return loadOnce();
    }
    const int loaded = printLoad(arguments.values()[0]);
    return printRoundTrip() + loaded == 0 ? 0 : 1;
}
