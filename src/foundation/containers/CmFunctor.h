// CmFunctor: what the operations over a container's elements call: gets an element, gives a boolean.
//
// A reference to any callable, two pointers wide, without allocation. It doesn't keep the callable alive: it is meant
// as a parameter, made from a lambda in the call.
#pragma once

#include <memory>
#include <type_traits>
#include <utility>

namespace tessera {

class CmObject;

class CmFunctor {
public:
    template <class Callable>
    requires(!std::is_same_v<std::remove_cvref_t<Callable>, CmFunctor> &&
             std::is_invocable_r_v<bool, Callable&, CmObject*>) CmFunctor(Callable&& callable)
        : target_(const_cast<void*>(static_cast<const void*>(std::addressof(callable)))),
          call_([](void* target, CmObject* element) -> bool {
              return (*static_cast<std::remove_reference_t<Callable>*>(target))(element);
          }) {}

    bool operator()(CmObject* element) const { return call_(target_, element); }

private:
    void* target_;
    bool (*call_)(void* target, CmObject* element);
};

} // namespace tessera
