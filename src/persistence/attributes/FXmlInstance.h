// FXmlInstance: an object that was read and is built when somebody asks for it.
//
// Until then it holds the class name and the tree. Building makes an object of the class and hands it the tree; an
// unknown class is reported as -98 with its name. Whether that goes well or not, the tree is given up, so an instance
// that failed stays without an object. Objects that need each other meet while they are built: what asks for an object
// that is just being restored gets it as far as it is.
#pragma once

#include "foundation/object/FRefPtr.h"
#include "foundation/text/FString.h"
#include "persistence/attributes/FXmlObject.h"

namespace tessera {

class FXmlInstance : public CmClass<FXmlInstance, FXmlObject> {
public:
    static FMetaClass metaClass;
    // So many objects may be under construction within each other on a thread; one beyond stays as it is and gives
    // null. Chains of references can be as long as a document likes, and stacks can't.
    static constexpr int kDeepestBuild = 1000;

    // Takes the caller's reference of the tree over.
    FXmlInstance(std::uint64_t id, FString className, FAttributes* attributes);
    FXmlInstance(const FXmlInstance&) = delete;
    FXmlInstance& operator=(const FXmlInstance&) = delete;
    ~FXmlInstance() override;

    const FString& getStoredClassName() const { return className_; }

    CmObject* getObject() override;
    FAttributes* getAttributes() override { return attributes_.get(); }
    bool isClass(const char* className) const override;
    // This very instance with a further reference: what it stands for is one object, however often a tree is copied.
    FXmlInstance* clone() const override;

private:
    void build();

    FRefPtr<CmObject> object_;
    FRefPtr<FAttributes> attributes_;
    FString className_;
};

} // namespace tessera
