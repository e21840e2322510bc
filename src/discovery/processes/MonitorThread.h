// MonitorThread: looks at all watched children every 200 ms and tells their listeners when one has ended. There is one
// at most, made with the first watched child; it ends, and deletes itself, when there is nobody left to watch.
#pragma once

#include "foundation/object/FObject.h"
#include "foundation/threads/FThread.h"

namespace tessera {

class FMetaClass;

class MonitorThread : public FObject, public FThread {
public:
    static FMetaClass metaClass;

    MonitorThread();

    const char* getClassName() const override;
    bool isTypeOf(const char* className, bool askBase) const override;
    std::uint32_t run() override;
};

} // namespace tessera
