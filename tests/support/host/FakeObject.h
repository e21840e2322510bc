// FakeObject: what all doubles of host objects share: reference count, interface query, and a count of all doubles
// alive, by which a test sees what was leaked.
#pragma once

#include "foundation/object/FRefPtr.h"
#include "foundation/object/IBaseUnknown.h"

#include <atomic>
#include <utility>

namespace tessera::test {

inline std::atomic<int> liveDoubles{0};

// Answers each interface's identifier; IBaseUnknown is the first one's table.
template <class... Interfaces>
class FakeObject : public Interfaces... {
public:
    FakeObject() { ++liveDoubles; }
    FakeObject(const FakeObject&) = delete;
    FakeObject& operator=(const FakeObject&) = delete;

    FResult queryInterface(const FUIDBytes& uid, void** out) override {
        *out = nullptr;
        return (answer<Interfaces>(uid, out) || ...) ? kResultOk : kNoInterface;
    }
    std::uint32_t addRef() override { return ++references_; }
    std::uint32_t release() override {
        const std::uint32_t left = --references_;
        if (left == 0) {
            delete this;
        }
        return left;
    }
    std::uint32_t references() const { return references_; }

protected:
    virtual ~FakeObject() { --liveDoubles; }

private:
    template <class Interface>
    bool answer(const FUIDBytes& uid, void** out) {
        if (!(uid == Interface::iid) && !(uid == IBaseUnknown::iid)) {
            return false;
        }
        addRef();
        *out = static_cast<Interface*>(this);
        return true;
    }

    std::atomic<std::uint32_t> references_{1};
};

template <class T, class... Arguments>
FRefPtr<T> makeFake(Arguments&&... arguments) {
    return FRefPtr<T>::adopt(new T(std::forward<Arguments>(arguments)...));
}

} // namespace tessera::test
