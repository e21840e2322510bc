// DynamicCast: the compiler's own class question, beside which ours is measured. Its source alone is compiled with
// run-time type information.
#pragma once

#include <memory>

namespace tessera {

class DynamicCastSubject {
public:
    DynamicCastSubject();
    ~DynamicCastSubject();

    // Whether an object known by its root is of the class three above its own.
    bool isThreeBasesUp() const;

private:
    struct Root;
    struct First;
    struct Second;
    struct Third;
    struct Fourth;

    std::unique_ptr<Root> object_;
};

} // namespace tessera
