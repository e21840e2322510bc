// ObjectStreaming: an object on a stream, with its class, so that the reader can make one of the same.
//
// The persistent class name as a framework string, then what the object's own write puts there. A null object is the
// empty name and nothing else. The length isn't told, so a reader that doesn't know the class can't skip the object.
#pragma once

#include "foundation/object/CmObject.h"

namespace tessera {

class FStream;

// The name that an object is stored under: the persistent one of its record, or its own where it has none.
const char* storedClassName(const CmObject& object);

bool writeObject(FStream& stream, const CmObject* object);

// With one reference for the caller in object; null for a stored null. False, and null, when the stream ends early,
// when the object's read fails, and when objects stand in each other more than 256 deep; also for a class that isn't
// registered or is no className, which is reported as -98 with its name.
bool readObject(FStream& stream, const char* className, CmObject*& object);

} // namespace tessera
