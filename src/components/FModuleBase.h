// FModuleBase: one library of a known path, loaded while somebody uses it.
//
// use() and unuse() count; load() brings the library in on first need. When the last use has ended the library goes at
// once or, where there is a messenger, 100 rounds of the idle task later (some 12 seconds), unless it is used again
// meanwhile; one that is marked to stay never goes this way. A library's "InitDll" may refuse to be loaded, its
// "ExitDll" is called before it goes; both are optional.
//
// The lock guards handle, count and, in FModule, the factory; it is recursive, and held while the library's own entry
// points run. So any thread may load and use; the message that unloads comes on the thread of the idle task. Two
// modules of one path are equal.
#pragma once

#include "foundation/object/CmClass.h"
#include "foundation/object/FRefPtr.h"
#include "foundation/threads/FLock.h"
#include "persistence/paths/FPath.h"
#include "platform/DynamicLibrary.h"

#include <atomic>
#include <cstdint>
#include <optional>

namespace tessera {

class FModuleBase : public CmClass<FModuleBase, CmObject> {
public:
    static FMetaClass metaClass;

    // Flags. Once loaded, the library stays.
    static constexpr std::uint32_t kStaysLoaded = 1;
    static constexpr std::int32_t kUnloadDelayRounds = 100;

    // Shares the path; null for none.
    explicit FModuleBase(FPath* path = nullptr) : path_(path) {}
    FModuleBase(const FModuleBase&) = delete;
    FModuleBase& operator=(const FModuleBase&) = delete;
    // Unloads. A subclass that overrides onUnloading calls endModule in its own destructor.
    ~FModuleBase() override;

    bool isEqual(const CmObject* other) const override;
    // "Unload": the delay is over.
    std::int32_t receiveMessage(FMessage* message) override;

    // Counts, and keeps an unloading from happening that was put off; loads nothing.
    virtual void use();
    virtual void unuse();
    // The last use has ended; the library hasn't been given up yet.
    virtual void onUnloadRequest();
    // True when the library is there, also when it was before. The path must be an FNPath.
    virtual bool load();
    virtual void unload();
    // The library has been loaded; false gives it up again.
    virtual bool onLoaded();
    // It is about to go.
    virtual void onUnloading();

    // Borrowed; null for none.
    FPath* getPath() const { return path_.get(); }
    bool isLoaded() const;
    // Null when it isn't loaded or has no such symbol.
    void* getSymbol(const char* name) const;
    std::int32_t getUseCount() const;
    std::uint32_t getFlags() const { return flags_; }
    bool staysLoaded() const { return (flags_ & kStaysLoaded) != 0; }
    void setStaysLoaded(bool on) { on ? flags_.fetch_or(kStaysLoaded) : flags_.fetch_and(~kStaysLoaded); }

    // Process-wide, on at first: unloading is put off. Gives the old value.
    static bool setDeferredUnloading(bool on);
    // Process-wide, off at first: unloading does all but give the library back to the system, for tools that look at
    // the code of a process after its end.
    static void setLibrariesStayInMemory(bool on);

protected:
    // What the destructor does, callable from the one of a subclass: no message comes any more, the library goes.
    void endModule();
    FLock& getLock() const { return lock_; }

private:
    FRefPtr<FPath> path_;
    std::optional<platform::DynamicLibrary> library_;
    mutable FLock lock_;
    std::int32_t useCount_ = 0;
    std::atomic<std::uint32_t> flags_{0};
};

} // namespace tessera
