// CmDelegatingUnknown: wraps an object of another module, known by interface alone, so that it can live in containers
// and be saved with them.
//
// The wrapper holds a reference of the wrapped object. Two wrappers of one object are equal. It saves the object
// through IPersistentObject, and makes a new one through the component source (IComponentSource) on the way back;
// without the interface or without a source, saving and restoring fail.
#pragma once

#include "foundation/object/CmClass.h"
#include "foundation/object/FRefPtr.h"

namespace tessera {

class CmDelegatingUnknown : public CmClass<CmDelegatingUnknown, CmObject> {
public:
    static FMetaClass metaClass;

    // Told when a wrapper goes. Not referenced.
    class Owner {
    public:
        virtual void removeDelegate(CmDelegatingUnknown* delegate) = 0;

    protected:
        ~Owner() = default;
    };

    explicit CmDelegatingUnknown(IBaseUnknown* object = nullptr, Owner* owner = nullptr);
    CmDelegatingUnknown(const CmDelegatingUnknown&) = delete;
    CmDelegatingUnknown& operator=(const CmDelegatingUnknown&) = delete;
    ~CmDelegatingUnknown() override;

    // Borrowed.
    IBaseUnknown* getObject() const { return object_.get(); }
    void setObject(IBaseUnknown* object) { object_ = object; }

    bool isEqual(const CmObject* other) const override;
    bool read(FStream& stream) override;
    bool write(FStream& stream) const override;
    // "GUID", the class of the wrapped object, and "ObjData", what the object saved.
    bool storeAttributes(FAttributes& attributes) const override;
    bool restoreAttributes(FAttributes& attributes) override;

private:
    bool saveObject(FUIDBytes& uid, FAttributes& attributes) const;
    bool createObject(const FUIDBytes& uid);
    bool loadObject(FAttributes& attributes);

    FRefPtr<IBaseUnknown> object_;
    Owner* owner_;
};

} // namespace tessera
