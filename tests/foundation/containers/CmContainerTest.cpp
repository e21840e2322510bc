// What holds for every form: the table of forms runs each test for each of them.
#include "foundation/containers/CmContainer.h"

#include "foundation/containers/CmArray.h"
#include "foundation/containers/CmBTree.h"
#include "foundation/containers/CmHashTable.h"
#include "foundation/containers/CmOrderedArray.h"
#include "foundation/containers/CmQueue.h"
#include "foundation/containers/CmStack.h"
#include "tests/foundation/containers/TestNumber.h"

#include <limits>
#include <mutex>
#include <set>
#include <thread>

namespace tessera::test {
namespace {

struct Form {
    const char* name;
    const char* parent;
    CmContainer* (*make)();
};

constexpr Form kForms[] = {
    {"CmLinkedList", "CmContainer", [] { return static_cast<CmContainer*>(new CmLinkedList); }},
    {"CmQueue", "CmLinkedList", [] { return static_cast<CmContainer*>(new CmQueue); }},
    {"CmStack", "CmLinkedList", [] { return static_cast<CmContainer*>(new CmStack); }},
    {"CmArray", "CmContainer", [] { return static_cast<CmContainer*>(new CmArray); }},
    {"CmOrderedArray", "CmContainer", [] { return static_cast<CmContainer*>(new CmOrderedArray); }},
    {"CmBTree", "CmContainer", [] { return static_cast<CmContainer*>(new CmBTree); }},
    {"CmHashTable", "CmContainer", [] { return static_cast<CmContainer*>(new CmHashTable); }},
};

// Counts threads by a mark in each: the system may give the number of a thread that has ended to the next one.
class ThreadCounter {
public:
    ThreadCounter() : run_(++runs) {}
    void note() {
        thread_local int notedIn = 0;
        if (notedIn != run_) {
            notedIn = run_;
            ++count_;
        }
    }
    int count() const { return count_; }

private:
    static inline int runs = 0;
    int run_;
    std::atomic<int> count_ = 0;
};

class EveryForm : public testing::TestWithParam<Form> {
protected:
    void SetUp() override {
        ASSERT_EQ(TestNumber::alive, 0);
        container_ = FRefPtr<CmContainer>::adopt(GetParam().make());
    }
    void TearDown() override {
        container_.reset();
        EXPECT_EQ(TestNumber::alive, 0) << "an element was never released";
    }

    void fill(CmOwnership ownership, std::initializer_list<int> values) {
        container_->setOwnership(ownership);
        addNew(*container_, values);
    }

    FRefPtr<CmContainer> container_;
};

INSTANTIATE_TEST_SUITE_P(Forms, EveryForm, testing::ValuesIn(kForms),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_P(EveryForm, KnowsItsClassAndItsParents) {
    EXPECT_STREQ(container_->getClassName(), GetParam().name);
    EXPECT_TRUE(container_->isTypeOf(GetParam().parent, true));
    EXPECT_TRUE(container_->isTypeOf("CmContainer", true));
    EXPECT_TRUE(container_->isTypeOf("CmObject", true));
    EXPECT_FALSE(container_->isTypeOf("CmObject", false));
    EXPECT_STREQ(container_->getMetaClass()->getParent()->getName(), GetParam().parent);
}

TEST_P(EveryForm, IsEmptyAtFirst) {
    EXPECT_TRUE(container_->isEmpty());
    EXPECT_EQ(container_->getCount(), 0);
    EXPECT_EQ(container_->at(0), nullptr);
    EXPECT_TRUE(container_->newIterator()->isDone());
    EXPECT_EQ(container_->newIterator()->next(), nullptr);
}

TEST_P(EveryForm, RefusesNullEverywhere) {
    EXPECT_FALSE(container_->add(nullptr));
    EXPECT_FALSE(container_->remove(nullptr));
    EXPECT_EQ(container_->find(nullptr), nullptr);
    EXPECT_FALSE(container_->contains(nullptr));
    EXPECT_FALSE(container_->containsInstance(nullptr));
    EXPECT_EQ(container_->countOf(nullptr), 0);
    EXPECT_EQ(container_->indexOf(nullptr), -1);
    EXPECT_EQ(container_->getCount(), 0);
}

TEST_P(EveryForm, HoldsWhatIsAddedInOrder) {
    fill(CmOwnership::owner, {1, 2, 3});
    EXPECT_EQ(contents(*container_), "1 2 3");
    EXPECT_EQ(backwards(*container_), "3 2 1");
    EXPECT_EQ(container_->getCount(), 3);
    EXPECT_FALSE(container_->isEmpty());
    EXPECT_EQ(static_cast<TestNumber*>(container_->at(1))->value, 2);
}

TEST_P(EveryForm, GivesNullForABadIndex) {
    fill(CmOwnership::owner, {1, 2});
    for (const std::int32_t index : {-1, 2, std::numeric_limits<std::int32_t>::max()}) {
        EXPECT_EQ(container_->at(index), nullptr) << index;
        EXPECT_FALSE(container_->removeAt(index)) << index;
    }
    EXPECT_EQ(container_->getCount(), 2);
}

TEST_P(EveryForm, FindsByEqualityAndByIdentity) {
    fill(CmOwnership::owner, {1, 2, 3, 5, 7});
    const TestNumber five(5);
    const TestNumber four(4);
    auto* held = container_->find(&five);
    ASSERT_NE(held, nullptr);
    EXPECT_EQ(static_cast<TestNumber*>(held)->value, 5);
    EXPECT_TRUE(container_->contains(&five));
    EXPECT_FALSE(container_->containsInstance(&five));
    EXPECT_TRUE(container_->containsInstance(held));
    EXPECT_EQ(container_->indexOf(&five), 3);
    EXPECT_EQ(container_->countOf(&five), 1);
    EXPECT_EQ(container_->find(&four), nullptr);
    EXPECT_FALSE(container_->contains(&four));
    EXPECT_EQ(container_->indexOf(&four), -1);
    EXPECT_EQ(container_->countOf(&four), 0);
}

TEST_P(EveryForm, CountsEqualElements) {
    fill(CmOwnership::owner, {2, 1, 2, 3, 2});
    const TestNumber two(2);
    EXPECT_EQ(container_->countOf(&two), 3);
}

TEST_P(EveryForm, RemovesByElementAndByIndex) {
    fill(CmOwnership::owner, {1, 2, 3, 4});
    EXPECT_TRUE(container_->remove(container_->at(1)));
    EXPECT_EQ(contents(*container_), "1 3 4");
    EXPECT_TRUE(container_->removeAt(2));
    EXPECT_EQ(contents(*container_), "1 3");
    EXPECT_TRUE(container_->removeAt(0));
    EXPECT_EQ(contents(*container_), "3");
    EXPECT_EQ(TestNumber::alive, 1);
    EXPECT_TRUE(container_->removeAt(0));
    EXPECT_TRUE(container_->isEmpty());
    addNew(*container_, {9});
    EXPECT_EQ(contents(*container_), "9");
}

TEST_P(EveryForm, OwnsNothingAtFirst) {
    EXPECT_EQ(container_->getOwnership(), CmOwnership::none);
    TestNumber element(1);
    container_->add(&element);
    EXPECT_EQ(element.getReferenceCount(), 1u);
    EXPECT_TRUE(container_->remove(&element));
    EXPECT_EQ(element.getReferenceCount(), 1u);
    container_->add(&element);
    container_->removeAll();
    EXPECT_EQ(element.getReferenceCount(), 1u);
}

TEST_P(EveryForm, SharesByReferences) {
    container_->setOwnership(CmOwnership::shared);
    TestNumber element(1);
    container_->add(&element);
    EXPECT_EQ(element.getReferenceCount(), 2u);
    EXPECT_TRUE(container_->removeAt(0));
    EXPECT_EQ(element.getReferenceCount(), 1u);
    container_->add(&element);
    container_.reset();
    EXPECT_EQ(element.getReferenceCount(), 1u);
}

TEST_P(EveryForm, OwnerReleasesWhatIsLeftAtItsEnd) {
    fill(CmOwnership::owner, {1, 2, 3});
    container_.reset();
    EXPECT_EQ(TestNumber::alive, 0);
}

TEST_P(EveryForm, OwnershipIsNotRetroactive) {
    TestNumber element(1);
    container_->add(&element);
    container_->setOwnership(CmOwnership::shared);
    EXPECT_EQ(element.getReferenceCount(), 1u);
    container_->setOwnership(CmOwnership::none);
    container_->removeAll();
    EXPECT_EQ(element.getReferenceCount(), 1u);
}

TEST_P(EveryForm, CopyOfAnOwnerIsDeep) {
    fill(CmOwnership::owner, {1, 2, 3});
    const auto copy = FRefPtr<CmContainer>::adopt(GetParam().make());
    EXPECT_TRUE(copy->copyFrom(*container_));
    EXPECT_EQ(copy->getOwnership(), CmOwnership::owner);
    EXPECT_EQ(contents(*copy), "1 2 3");
    EXPECT_EQ(TestNumber::alive, 6);
    EXPECT_FALSE(copy->containsInstance(container_->at(0)));
}

TEST_P(EveryForm, CopyOfASharedOneAddsReferences) {
    TestNumber element(1);
    container_->setOwnership(CmOwnership::shared);
    container_->add(&element);
    const auto copy = FRefPtr<CmContainer>::adopt(GetParam().make());
    EXPECT_TRUE(copy->copyFrom(*container_));
    EXPECT_EQ(copy->getOwnership(), CmOwnership::shared);
    EXPECT_EQ(copy->at(0), &element);
    EXPECT_EQ(element.getReferenceCount(), 3u);
    container_.reset();
    EXPECT_EQ(element.getReferenceCount(), 2u);
}

TEST_P(EveryForm, CopyAddsToWhatIsThere) {
    fill(CmOwnership::owner, {1});
    const auto copy = FRefPtr<CmContainer>::adopt(GetParam().make());
    copy->setOwnership(CmOwnership::owner);
    addNew(*copy, {0});
    EXPECT_TRUE(copy->copyFrom(*container_));
    EXPECT_EQ(contents(*copy), "0 1");
    EXPECT_FALSE(copy->copyFrom(*copy));
    EXPECT_EQ(contents(*copy), "0 1");
}

TEST_P(EveryForm, CloneIsOfTheSameClass) {
    fill(CmOwnership::owner, {1, 2});
    const auto copy = FRefPtr<CmObject>::adopt(container_->clone());
    ASSERT_STREQ(copy->getClassName(), GetParam().name);
    EXPECT_EQ(contents(static_cast<const CmContainer&>(*copy)), "1 2");
}

TEST_P(EveryForm, IteratorStepsBothWays) {
    fill(CmOwnership::owner, {1, 2, 3, 4, 5});
    const auto iterator = container_->newIterator();
    const auto value = [](const CmObject* element) {
        return element != nullptr ? static_cast<const TestNumber*>(element)->value : 0;
    };
    EXPECT_EQ(value(iterator->current()), 1);
    EXPECT_EQ(value(iterator->next()), 1);
    EXPECT_EQ(value(iterator->next()), 2);
    EXPECT_EQ(value(iterator->previous()), 3);
    EXPECT_EQ(value(iterator->current()), 2);
    EXPECT_EQ(value(iterator->advance(3)), 5);
    EXPECT_EQ(value(iterator->retreat(2)), 3);
    EXPECT_EQ(value(iterator->advance(-1)), 2);
    EXPECT_EQ(value(iterator->retreat(-2)), 4);
    EXPECT_EQ(value(iterator->advance(0)), 4);
    iterator->last();
    EXPECT_EQ(value(iterator->current()), 5);
    iterator->first();
    EXPECT_EQ(value(iterator->current()), 1);
}

TEST_P(EveryForm, IteratorPastEitherEndStaysDone) {
    fill(CmOwnership::owner, {1, 2});
    const auto iterator = container_->newIterator();
    EXPECT_EQ(iterator->advance(2), nullptr);
    EXPECT_TRUE(iterator->isDone());
    EXPECT_EQ(iterator->previous(), nullptr);
    EXPECT_TRUE(iterator->isDone());
    iterator->first();
    EXPECT_EQ(iterator->retreat(1), nullptr);
    EXPECT_TRUE(iterator->isDone());
    EXPECT_EQ(iterator->next(), nullptr);
    EXPECT_EQ(iterator->advance(std::numeric_limits<std::int32_t>::min()), nullptr);
    EXPECT_EQ(iterator->retreat(std::numeric_limits<std::int32_t>::min()), nullptr);
}

TEST_P(EveryForm, IteratorSeeksByIdentityFromTheFront) {
    fill(CmOwnership::owner, {1, 2, 3});
    const auto iterator = container_->newIterator();
    iterator->last();
    EXPECT_TRUE(iterator->seek(container_->at(1)));
    EXPECT_EQ(iterator->current(), container_->at(1));
    const TestNumber two(2);
    EXPECT_FALSE(iterator->seek(&two));
    EXPECT_TRUE(iterator->isDone());
}

TEST_P(EveryForm, RemovesUnderItsIterator) {
    fill(CmOwnership::owner, {1, 2, 3, 4, 5, 6, 7, 8});
    const auto iterator = container_->newIterator();
    while (!iterator->isDone()) {
        const int value = static_cast<TestNumber*>(iterator->current())->value;
        if (value % 2 == 0 || value == 1) {
            EXPECT_TRUE(container_->removeAtIterator(*iterator));
        } else {
            iterator->next();
        }
    }
    EXPECT_EQ(contents(*container_), "3 5 7");
    EXPECT_FALSE(container_->removeAtIterator(*iterator));
    addNew(*container_, {9});
    EXPECT_EQ(contents(*container_), "3 5 7 9");
}

TEST_P(EveryForm, IteratorThatRemovedTheLastElementStaysDone) {
    fill(CmOwnership::owner, {1, 2});
    const auto iterator = container_->newIterator();
    while (!iterator->isDone()) {
        EXPECT_TRUE(container_->removeAtIterator(*iterator));
    }
    addNew(*container_, {3});
    EXPECT_TRUE(iterator->isDone());
    EXPECT_EQ(iterator->current(), nullptr);
    iterator->first();
    EXPECT_FALSE(iterator->isDone());
}

TEST_P(EveryForm, IteratorOfNothingStaysDone) {
    const auto made = container_->newIterator();
    const auto reset = container_->newIterator();
    reset->first();
    fill(CmOwnership::owner, {1});
    EXPECT_TRUE(made->isDone());
    EXPECT_TRUE(reset->isDone());
    reset->first();
    EXPECT_EQ(reset->current(), container_->at(0));
}

TEST_P(EveryForm, RefusesTheIteratorOfAnother) {
    fill(CmOwnership::owner, {1});
    const auto other = FRefPtr<CmContainer>::adopt(GetParam().make());
    other->setOwnership(CmOwnership::owner);
    addNew(*other, {1});
    const auto iterator = other->newIterator();
    EXPECT_FALSE(container_->removeAtIterator(*iterator));
    EXPECT_EQ(container_->getCount(), 1);
}

TEST_P(EveryForm, ForEachStopsAtTheFirstFalse) {
    fill(CmOwnership::owner, {1, 2, 3});
    int calls = 0;
    EXPECT_FALSE(container_->forEach([&calls](CmObject*) { return ++calls < 2; }));
    EXPECT_EQ(calls, 2);
    EXPECT_TRUE(container_->forEach([](CmObject*) { return true; }));
}

TEST_P(EveryForm, FindsTheFirstAndTheLastAccepted) {
    fill(CmOwnership::owner, {1, 2, 3, 4});
    const auto even = [](CmObject* element) { return static_cast<TestNumber*>(element)->value % 2 == 0; };
    EXPECT_EQ(static_cast<TestNumber*>(container_->findFirst(even))->value, 2);
    EXPECT_EQ(static_cast<TestNumber*>(container_->findLast(even))->value, 4);
    EXPECT_EQ(container_->findFirst([](CmObject*) { return false; }), nullptr);
    EXPECT_EQ(container_->findLast([](CmObject*) { return false; }), nullptr);
}

TEST_P(EveryForm, SelectAddsTheAcceptedElsewhere) {
    fill(CmOwnership::owner, {1, 2, 3, 4});
    CmArray result;
    EXPECT_TRUE(
        container_->select([](CmObject* element) { return static_cast<TestNumber*>(element)->value > 2; }, result));
    EXPECT_EQ(contents(result), "3 4");
    EXPECT_FALSE(container_->select([](CmObject*) { return false; }, result));
    EXPECT_EQ(result.getCount(), 2);
}

TEST_P(EveryForm, ConcurrentRunVisitsEachElementOnceOnSeveralThreads) {
    container_->setOwnership(CmOwnership::owner);
    for (int value = 0; value < 103; ++value) {
        addNew(*container_, {value});
    }
    std::mutex lock;
    std::multiset<int> seen;
    ThreadCounter threads;
    const bool stopped = container_->forEachConcurrent(
        [&](CmObject* element) {
            const std::lock_guard guard(lock);
            seen.insert(static_cast<TestNumber*>(element)->value);
            threads.note();
            return true;
        },
        4, 10);
    EXPECT_FALSE(stopped) << "nothing stopped it, which is false in a parallel run";
    EXPECT_EQ(seen.size(), 103u);
    EXPECT_EQ(std::set<int>(seen.begin(), seen.end()).size(), 103u);
    EXPECT_EQ(threads.count(), 4);
}

TEST_P(EveryForm, ConcurrentRunIsSerialBelowTheMinimum) {
    fill(CmOwnership::owner, {1, 2, 3});
    std::set<std::thread::id> threads;
    EXPECT_TRUE(container_->forEachConcurrent(
        [&threads](CmObject*) { return threads.insert(std::this_thread::get_id()), true; }, 8, 2));
    EXPECT_EQ(threads, std::set<std::thread::id>{std::this_thread::get_id()});
    EXPECT_FALSE(container_->forEachConcurrent([](CmObject*) { return false; }, 8, 2));
    EXPECT_TRUE(container_->forEachConcurrent([](CmObject*) { return true; }, 1, 0));
}

TEST_P(EveryForm, ConcurrentRunTakesFewerThreadsForFewElements) {
    container_->setOwnership(CmOwnership::owner);
    for (int value = 0; value < 10; ++value) {
        addNew(*container_, {value});
    }
    ThreadCounter threads;
    // 10 / 4 and 10 / 3 are below 5, 10 / 2 isn't.
    EXPECT_FALSE(container_->forEachConcurrent([&threads](CmObject*) { return threads.note(), true; }, 4, 5));
    EXPECT_EQ(threads.count(), 2);
}

TEST_P(EveryForm, ConcurrentRunStopsAtAFalse) {
    container_->setOwnership(CmOwnership::owner);
    for (int value = 0; value < 1000; ++value) {
        addNew(*container_, {value});
    }
    std::atomic<int> calls = 0;
    EXPECT_TRUE(container_->forEachConcurrent([&calls](CmObject*) { return ++calls, false; }, 3, 1));
    EXPECT_GE(calls, 1);
    EXPECT_LE(calls, 3);
}

TEST_P(EveryForm, ConcurrentRunCountsProcessorsWhenNotToldHowMany) {
    fill(CmOwnership::owner, {1, 2, 3, 4});
    std::atomic<int> calls = 0;
    container_->forEachConcurrent([&calls](CmObject*) { return ++calls, true; }, 0, 1);
    EXPECT_EQ(calls, 4);
}

} // namespace
} // namespace tessera::test
