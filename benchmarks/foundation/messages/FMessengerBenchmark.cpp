// Posting and delivering beside Boost.Asio's post and run.
#include "foundation/messages/FMessenger.h"

#include <benchmark/benchmark.h>
#include <boost/asio/io_context.hpp>
#include <boost/asio/post.hpp>

#include <vector>

namespace tessera {
namespace {

class Target : public CmObject {
public:
    std::int32_t receiveMessage(FMessage*) override { return ++received; }
    std::int32_t received = 0;
};

void postOurs(benchmark::State& state) {
    FMessenger messenger;
    Target target;
    std::vector<FRefPtr<FMessage>> messages;
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        messages.push_back(FRefPtr<FMessage>::adopt(new FMessage(FStringRef("message"))));
    }
    for (auto _ : state) {
        for (const auto& message : messages) {
            message->addRef();
            messenger.postMessage(&target, message.get());
        }
        messenger.deliverMessages();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void postAsio(benchmark::State& state) {
    boost::asio::io_context context;
    Target target;
    std::vector<FRefPtr<FMessage>> messages;
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        messages.push_back(FRefPtr<FMessage>::adopt(new FMessage(FStringRef("message"))));
    }
    for (auto _ : state) {
        for (const auto& message : messages) {
            boost::asio::post(context, [&target, message] { target.receiveMessage(message.get()); });
        }
        context.run();
        context.restart();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(postOurs)->Name("messages.post/ours")->Arg(10)->Arg(1000);
BENCHMARK(postAsio)->Name("messages.post/asio")->Arg(10)->Arg(1000);

} // namespace
} // namespace tessera
