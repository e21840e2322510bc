// IMessageAccess: a message as modules see it: a name and typed values under keys. The first interface of FMessage.
//
// Keys and names are 8-bit, end with a zero, and are copied. A getter answers kResultOk with the value in *out, or
// kResultFalse, with *out untouched, when the key is missing. A setter makes the value if the key is new.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct IMessageAccess : IBaseUnknown {
    static constexpr FUIDBytes iid = "{BA8586DE-FC4A-4737-9BAD-0542C8E6B953}"_uid;

    // Case sensitive.
    virtual bool isMessage(const char* name) = 0;
    // Belongs to the message and stands until its name changes.
    virtual const char* getName() = 0;
    virtual void setName(const char* name) = 0;
    virtual FResult setInt(const char* key, std::int64_t value) = 0;
    virtual FResult getInt(const char* key, std::int64_t* out) = 0;
    virtual FResult setFloat(const char* key, double value) = 0;
    virtual FResult getFloat(const char* key, double* out) = 0;
    virtual FResult setString(const char* key, const char* text) = 0;
    // Texts belong to the message and stand until the value changes or is asked for in the other width.
    virtual FResult getString(const char* key, const char** out) = 0;
    virtual FResult setPointer(const char* key, void* pointer) = 0;
    virtual FResult getPointer(const char* key, void** out) = 0;
    virtual FResult getString16(const char* key, const char16_t** out) = 0;
    // kResultFalse when the key is missing.
    virtual FResult remove(const char* key) = 0;
    virtual bool has(const char* key) = 0;

protected:
    ~IMessageAccess() = default;
};

} // namespace tessera
