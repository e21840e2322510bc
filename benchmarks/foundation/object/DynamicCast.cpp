#include "foundation/object/DynamicCast.h"

namespace tessera {

struct DynamicCastSubject::Root {
    virtual ~Root() = default;
};
struct DynamicCastSubject::First : Root {};
struct DynamicCastSubject::Second : First {};
struct DynamicCastSubject::Third : Second {};
struct DynamicCastSubject::Fourth : Third {};

DynamicCastSubject::DynamicCastSubject() : object_(new Fourth) {}
DynamicCastSubject::~DynamicCastSubject() = default;

bool DynamicCastSubject::isThreeBasesUp() const {
    return dynamic_cast<const First*>(object_.get()) != nullptr;
}

} // namespace tessera
