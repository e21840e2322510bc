// FObject: the root of the framework: reference count, interface query, class questions, dependents.
//
// A new object has a count of 1, which belongs to its creator; the release that brings it to 0 deletes the object. Only
// addRef and release may be called from any thread without further care. There is no compiler type information: class
// questions go by name, through isTypeOf, or through asCmObject and cmCast.
#pragma once

#include "foundation/object/IUpdateTarget.h"

#include <atomic>

namespace tessera {

struct IUpdateRegistry;

class FObject : public IUpdateTarget {
public:
    FObject() = default;
    // A copy is an object of its own, with a count of its own.
    FObject(const FObject&) : FObject() {}
    FObject& operator=(const FObject&) { return *this; }

    // Made up afresh whenever the module is loaded. Asking for it is this module's private cast: it gives the FObject*
    // of an object of this module, and no object of another module answers it.
    static const FUIDBytes& privateUID();
    // Where addDependent and its three companions forward to; null for nowhere. Not referenced.
    static void setUpdateHandler(IUpdateRegistry* handler);
    static IUpdateRegistry* getUpdateHandler();

    FResult queryInterface(const FUIDBytes& uid, void** out) override;
    std::uint32_t addRef() override { return addReference(); }
    std::uint32_t release() override { return releaseReference(); }
    void update(IBaseUnknown* changed, std::int32_t message) override;
    virtual ~FObject() = default;

    virtual bool isA(const char* className) const { return isTypeOf(className, false); }
    virtual const char* getClassName() const;
    // An exact match with the own class name or, with askBase, with that of any base. A null name matches nothing.
    virtual bool isTypeOf(const char* className, bool askBase) const;
    virtual void addDependent(IUpdateTarget* dependent);
    virtual void removeDependent(IUpdateTarget* dependent);
    // Tells all dependents now, respectively at the next round of the idle task.
    virtual void changed(std::int32_t message);
    virtual void deferChanged(std::int32_t message);
    // All dependents have been told. May be called under the update handler's lock, so it must not block.
    virtual void updateDone(std::int32_t message);
    virtual bool isSameInstance(const FObject* other) const { return this == other; }

    std::uint32_t getReferenceCount() const { return static_cast<std::uint32_t>(count_.load()); }

protected:
    // For classes with further interfaces, whose addRef and release exist once more for each of them.
    std::uint32_t addReference() {
        return static_cast<std::uint32_t>(count_.fetch_add(1, std::memory_order_relaxed) + 1);
    }
    std::uint32_t releaseReference() {
        const std::int32_t left = count_.fetch_sub(1, std::memory_order_acq_rel) - 1;
        return left != 0 ? static_cast<std::uint32_t>(left) : destroy();
    }

private:
    std::uint32_t destroy();

    std::atomic<std::int32_t> count_{1};
};

} // namespace tessera
