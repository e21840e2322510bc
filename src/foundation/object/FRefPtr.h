// FRefPtr: holds one reference of anything with addRef and release, and gives it back at the end of its scope.
//
// Constructing or assigning from a bare pointer adds a reference; adopt() takes over one that the caller already owns,
// as the operations named create..., clone and get...Instance hand out. Not synchronised: one thread at a time.
#pragma once

#include <cstddef>
#include <utility>

namespace tessera {

template <class T>
class FRefPtr {
public:
    FRefPtr() = default;
    FRefPtr(std::nullptr_t) {}
    explicit FRefPtr(T* object) : object_(object) { addRef(); }
    FRefPtr(const FRefPtr& other) : object_(other.object_) { addRef(); }
    FRefPtr(FRefPtr&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    ~FRefPtr() { drop(object_); }

    static FRefPtr adopt(T* object) {
        FRefPtr result;
        result.object_ = object;
        return result;
    }

    // The new target gets its reference before the old one loses its own: the old one may be all that keeps it alive.
    FRefPtr& operator=(T* object) {
        if (object != nullptr) {
            object->addRef();
        }
        drop(std::exchange(object_, object));
        return *this;
    }
    FRefPtr& operator=(const FRefPtr& other) { return *this = other.object_; }
    FRefPtr& operator=(FRefPtr&& other) noexcept {
        if (this != &other) {
            drop(std::exchange(object_, std::exchange(other.object_, nullptr)));
        }
        return *this;
    }

    T* get() const { return object_; }
    T* operator->() const { return object_; }
    T& operator*() const { return *object_; }
    explicit operator bool() const { return object_ != nullptr; }
    friend bool operator==(const FRefPtr& a, const FRefPtr& b) { return a.object_ == b.object_; }
    friend bool operator==(const FRefPtr& a, const T* b) { return a.object_ == b; }

    // Gives the reference up to the caller.
    [[nodiscard]] T* detach() { return std::exchange(object_, nullptr); }
    void reset() { drop(std::exchange(object_, nullptr)); }

    // For out parameters of queryInterface and queryService: what was held is released first, and the reference that
    // the callee stores becomes this holder's.
    void** receive() {
        reset();
        return reinterpret_cast<void**>(&object_);
    }

private:
    void addRef() {
        if (object_ != nullptr) {
            object_->addRef();
        }
    }
    static void drop(T* object) {
        if (object != nullptr) {
            object->release();
        }
    }

    T* object_ = nullptr;
};

// The interface T of any object, or null; a null object gives null.
template <class T, class Object>
FRefPtr<T> queryFor(Object* object) {
    FRefPtr<T> result;
    if (object != nullptr && object->queryInterface(T::iid, result.receive()) != 0) {
        static_cast<void>(result.detach());
    }
    return result;
}

} // namespace tessera
