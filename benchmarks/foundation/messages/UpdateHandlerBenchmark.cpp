// Notification beside boost::signals2: one subject with many dependents, many subjects with one, coming and going.
#include "foundation/messages/UpdateHandler.h"
#include "foundation/object/CmObject.h"
#include "foundation/object/FRefPtr.h"

#include <benchmark/benchmark.h>
#include <boost/signals2.hpp>

#include <memory>
#include <vector>

namespace tessera {
namespace {

using Signal = boost::signals2::signal<void(std::int32_t)>;

class Dependent : public FObject {
public:
    void update(IBaseUnknown*, std::int32_t message) override { sum += message; }
    std::int64_t sum = 0;
};

struct Slot {
    void operator()(std::int32_t message) const { *sum += message; }
    std::int64_t* sum;
};

std::vector<FRefPtr<CmObject>> makeSubjects(std::int64_t count) {
    UpdateHandler::getInstance(true);
    std::vector<FRefPtr<CmObject>> subjects;
    for (std::int64_t i = 0; i < count; ++i) {
        subjects.push_back(FRefPtr<CmObject>::adopt(new CmObject));
    }
    return subjects;
}

void changedOurs(benchmark::State& state) {
    const auto subject = makeSubjects(1).front();
    std::vector<std::unique_ptr<Dependent>> dependents;
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        dependents.push_back(std::make_unique<Dependent>());
        subject->addDependent(dependents.back().get());
    }
    for (auto _ : state) {
        subject->changed(1);
    }
    subject->removeDependent(nullptr);
}

void changedBoost(benchmark::State& state) {
    Signal signal;
    std::vector<std::unique_ptr<std::int64_t>> sums;
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        sums.push_back(std::make_unique<std::int64_t>(0));
        signal.connect(Slot{sums.back().get()});
    }
    for (auto _ : state) {
        signal(1);
    }
}

void subjectsOurs(benchmark::State& state) {
    const auto subjects = makeSubjects(state.range(0));
    Dependent dependent;
    for (const auto& subject : subjects) {
        subject->addDependent(&dependent);
    }
    for (auto _ : state) {
        for (const auto& subject : subjects) {
            subject->changed(1);
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    for (const auto& subject : subjects) {
        subject->removeDependent(&dependent);
    }
}

void subjectsBoost(benchmark::State& state) {
    std::vector<std::unique_ptr<Signal>> signals;
    std::int64_t sum = 0;
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        signals.push_back(std::make_unique<Signal>());
        signals.back()->connect(Slot{&sum});
    }
    for (auto _ : state) {
        for (const auto& signal : signals) {
            (*signal)(1);
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// Each subject gets its dependent, then each loses it.
void addAndRemoveOurs(benchmark::State& state) {
    const auto subjects = makeSubjects(state.range(0));
    Dependent dependent;
    for (auto _ : state) {
        for (const auto& subject : subjects) {
            subject->addDependent(&dependent);
        }
        for (const auto& subject : subjects) {
            subject->removeDependent(&dependent);
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void addAndRemoveBoost(benchmark::State& state) {
    std::vector<std::unique_ptr<Signal>> signals;
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        signals.push_back(std::make_unique<Signal>());
    }
    std::vector<boost::signals2::connection> connections(signals.size());
    std::int64_t sum = 0;
    for (auto _ : state) {
        for (std::size_t i = 0; i < signals.size(); ++i) {
            connections[i] = signals[i]->connect(Slot{&sum});
        }
        for (const auto& connection : connections) {
            connection.disconnect();
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(changedOurs)->Name("messages.changed/ours")->Arg(1)->Arg(10)->Arg(1000);
BENCHMARK(changedBoost)->Name("messages.changed/boost")->Arg(1)->Arg(10)->Arg(1000);
BENCHMARK(subjectsOurs)->Name("messages.subjects/ours")->Arg(100)->Arg(10000);
BENCHMARK(subjectsBoost)->Name("messages.subjects/boost")->Arg(100)->Arg(10000);
BENCHMARK(addAndRemoveOurs)->Name("messages.addAndRemove/ours")->Arg(100)->Arg(10000);
BENCHMARK(addAndRemoveBoost)->Name("messages.addAndRemove/boost")->Arg(100)->Arg(10000);

} // namespace
} // namespace tessera
