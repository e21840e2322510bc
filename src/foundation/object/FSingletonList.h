// FSingletonList: the process-wide objects that are made on first use, and the order in which they go down.
//
// At the end of the process each gets one release, in the order of creation, the earliest first; from then on nothing
// is created any more, and every getInstance gives null. Whoever may run that late tests for it. Creation is guarded by
// one recursive lock: the constructor of a singleton may make another one, but must not wait for a thread that does.
//
//     static constinit FSingleton<ClassFactory> instance([] { return new ClassFactory; });
//     return instance.get(create);
#pragma once

#include <atomic>

namespace tessera {

// The place of one singleton; static storage. T is anything with release().
class FSingletonSlot {
public:
    using Make = void* (*)();
    using Release = void (*)(void*);

    constexpr FSingletonSlot(Make make, Release release) : make_(make), release_(release) {}

protected:
    void* obtain(bool create) {
        void* object = object_.load(std::memory_order_acquire);
        return object != nullptr || !create ? object : obtainSlowly();
    }

private:
    friend class FSingletonList;

    void* obtainSlowly();

    std::atomic<void*> object_{nullptr};
    Make make_;
    Release release_;
};

template <class T>
class FSingleton : public FSingletonSlot {
public:
    // make: a function without state that returns a new T with one reference.
    template <class Function>
    constexpr explicit FSingleton(Function)
        : FSingletonSlot([]() -> void* { return static_cast<T*>(Function{}()); },
                         [](void* object) { static_cast<T*>(object)->release(); }) {}

    // Borrowed. Null when there is none and create is false, and whenever the list has gone down.
    T* get(bool create) { return static_cast<T*>(obtain(create)); }
};

class FSingletonList {
public:
    // Makes the list and enters its exit handler, if that hasn't happened yet. Class records do this first of all, so
    // that the records' own end comes before that of the singletons.
    static void touch();
    static bool isDestroyed();

private:
    friend class FSingletonSlot;

    static void* create(FSingletonSlot& slot);
    static void goDown();
};

} // namespace tessera
