// ModuleClasses: the module's one factory and what stands in it: who made the module, and its one class.
#pragma once

#include "foundation/object/FUIDBytes.h"

namespace tessera {

struct IModuleFactory;

// The class that a host creates to run the module.
inline constexpr FUIDBytes kExchangeServiceClass = "{973C3773-AC41-4593-BDF4-89C768F4BF5A}"_uid;

// The factory with one more reference, which belongs to the caller; made if there is none. Null without memory. The
// host calls it from one thread.
IModuleFactory* getModuleFactory();

} // namespace tessera
