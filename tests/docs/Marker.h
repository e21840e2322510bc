// Marker: the class of its own that the examples of docs/framework.md use: a place in a song that the user has named.
#pragma once

#include "foundation/object/CmClass.h"
#include "foundation/text/FString.h"

namespace tessera::test {

// [a class]
class Marker : public CmClass<Marker, CmObject> {
public:
    static FMetaClass metaClass;

    Marker() = default;
    Marker(const FStringRef& name, double seconds) : name_(name), seconds_(seconds) {}

    const FString& getName() const { return name_; }
    double getSeconds() const { return seconds_; }
    void setSeconds(double seconds);

    int compare(const CmObject* other) const override;
    Marker* clone() const override { return new Marker(*this); }
    bool storeAttributes(FAttributes& attributes) const override;
    bool restoreAttributes(FAttributes& attributes) override;

private:
    FString name_;
    double seconds_ = 0;
};
// [a class]

} // namespace tessera::test
