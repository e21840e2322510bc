// What every object costs: references, creation by name and identifier, class questions.
#include "foundation/containers/CmQueue.h"
#include "foundation/object/ClassFactory.h"
#include "foundation/object/CmClass.h"
#include "foundation/object/DynamicCast.h"
#include "foundation/object/FRefPtr.h"
#include "foundation/object/IHostList.h"
#include "foundation/object/UHostList.h"

#include <benchmark/benchmark.h>

#include <atomic>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <unordered_map>

namespace tessera {
namespace {

class CountedByHand {
public:
    virtual ~CountedByHand() = default;
    virtual std::uint32_t addRef() { return count_.fetch_add(1, std::memory_order_relaxed) + 1; }
    virtual std::uint32_t release() {
        const std::uint32_t left = count_.fetch_sub(1, std::memory_order_acq_rel) - 1;
        if (left == 0) {
            delete this;
        }
        return left;
    }

private:
    std::atomic<std::uint32_t> count_{1};
};

template <class Counted>
void referenceAndRelease(benchmark::State& state) {
    auto* object = new Counted;
    for (auto _ : state) {
        // Without this the compiler, which has just seen the class, calls its operations directly.
        benchmark::DoNotOptimize(object);
        object->addRef();
        object->release();
    }
    object->release();
}

// The map that a user would fill by hand: the same names as in the registry.
std::unordered_map<std::string, std::function<CmObject*()>> factoriesByName() {
    std::unordered_map<std::string, std::function<CmObject*()>> factories;
    for (const FMetaClass* record : ClassFactory::getInstance(true)->getRecords()) {
        if (record->getName() != nullptr) {
            factories[record->getName()] = [] { return new CmObject; };
        }
    }
    factories["UHostList"] = [] { return new UHostList; };
    return factories;
}

// Registers so many classes beside those of the framework, for as long as it lives.
class FurtherClasses {
public:
    explicit FurtherClasses(std::int64_t count) {
        for (std::int64_t i = 0; i < count; ++i) {
            names_.push_back("FurtherClass" + std::to_string(i));
            records_.emplace_back(names_.back().c_str(), &CmObject::metaClass, &createCmObject<CmObject>);
        }
    }
    ~FurtherClasses() {
        for (FMetaClass& record : records_) {
            ClassFactory::getInstance(true)->removeClass(&record);
        }
    }

private:
    std::deque<std::string> names_;
    std::deque<FMetaClass> records_;
};

void createByNameOurs(benchmark::State& state) {
    const FurtherClasses further(state.range(0));
    const char* name = "UHostList";
    for (auto _ : state) {
        benchmark::DoNotOptimize(name);
        static_cast<CmObject*>(ClassFactory::getInstance(true)->createInstance(name))->release();
    }
}

void createByNameStd(benchmark::State& state) {
    const FurtherClasses further(state.range(0));
    const auto factories = factoriesByName();
    const char* name = "UHostList";
    for (auto _ : state) {
        benchmark::DoNotOptimize(name);
        const auto found = factories.find(name);
        found->second()->release();
    }
}

void createByIdentifierOurs(benchmark::State& state) {
    for (auto _ : state) {
        static_cast<IHostList*>(ClassFactory::getInstance(true)->createInstance(IHostList::iid))->release();
    }
}

void createByIdentifierStd(benchmark::State& state) {
    std::unordered_map<std::string, std::function<IHostList*()>> factories;
    for (int i = 0; i < 20; ++i) {
        factories["0123456789ABCDEF01234567" + std::to_string(10000000 + i)] = [] { return new UHostList; };
    }
    factories["8E8562D867F54576817561CFC2B134E3"] = [] { return new UHostList; };
    const char* name = "8E8562D867F54576817561CFC2B134E3";
    for (auto _ : state) {
        benchmark::DoNotOptimize(name);
        const auto found = factories.find(name);
        found->second()->release();
    }
}

void isTypeOfOurs(benchmark::State& state) {
    const std::unique_ptr<CmObject> object(new CmQueue);
    const CmObject* asked = object.get();
    for (auto _ : state) {
        benchmark::DoNotOptimize(asked);
        benchmark::DoNotOptimize(asked->isTypeOf("CmObject", true));
    }
}

void isTypeOfDynamicCast(benchmark::State& state) {
    const DynamicCastSubject subject;
    for (auto _ : state) {
        benchmark::DoNotOptimize(subject.isThreeBasesUp());
    }
}

BENCHMARK(referenceAndRelease<CmObject>)->Name("object.reference/ours/1");
BENCHMARK(referenceAndRelease<CountedByHand>)->Name("object.reference/hand/1");
BENCHMARK(createByNameOurs)->Name("object.createByName/ours")->Arg(0)->Arg(1000);
BENCHMARK(createByNameStd)->Name("object.createByName/std")->Arg(0)->Arg(1000);
BENCHMARK(createByIdentifierOurs)->Name("object.createByIdentifier/ours/1");
BENCHMARK(createByIdentifierStd)->Name("object.createByIdentifier/std/1");
BENCHMARK(isTypeOfOurs)->Name("object.isTypeOf/ours/3");
BENCHMARK(isTypeOfDynamicCast)->Name("object.isTypeOf/dynamic_cast/3");

} // namespace
} // namespace tessera
