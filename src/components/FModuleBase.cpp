#include "components/FModuleBase.h"

#include "foundation/messages/FMessenger.h"
#include "foundation/threads/FLock.h"
#include "foundation/threads/FLockGuard.h"
#include "platform/NativePath.h"
#include "shell/hostapi/ModuleExports.h"

#include <algorithm>
#include <atomic>
#include <string_view>
#include <utility>
#include <vector>

namespace tessera {
namespace {

constexpr char kUnloadMessage[] = "Unload";

std::atomic<bool> deferredUnloading{true};
std::atomic<bool> librariesStayInMemory{false};

std::optional<platform::DynamicLibrary> loadLibrary(const FPath* path) {
    if (path == nullptr || !path->isTypeOf("FNPath", true)) {
        return std::nullopt;
    }
    const FString text = path->getFullPath();
    const auto native = platform::toNativePath({text.text16(), static_cast<std::size_t>(text.length())});
    return native ? platform::DynamicLibrary::load(native->c_str()) : std::nullopt;
}

template <class Function>
Function* entryPoint(const platform::DynamicLibrary& library, const char* name) {
    return reinterpret_cast<Function*>(library.symbol(name));
}

// Held to the end of the process, and never given back. Any thread may unload a module.
void keep(platform::DynamicLibrary library) {
    struct Kept {
        FLock lock;
        std::vector<platform::DynamicLibrary> libraries;
    };
    static auto* const kept = new Kept;
    const FLockGuard guard(kept->lock);
    kept->libraries.push_back(std::move(library));
}

} // namespace

bool FModuleBase::setDeferredUnloading(bool on) {
    return deferredUnloading.exchange(on);
}

void FModuleBase::setLibrariesStayInMemory(bool on) {
    librariesStayInMemory = on;
}

FModuleBase::~FModuleBase() {
    endModule();
}

void FModuleBase::endModule() {
    if (FMessenger* messenger = FMessenger::getInstance()) {
        messenger->removeMessages(this, nullptr);
    }
    unload();
}

bool FModuleBase::isEqual(const CmObject* other) const {
    const auto* module = cmCast<FModuleBase>(other);
    if (module == nullptr) {
        return false;
    }
    return path_ && module->path_ ? path_->isEqual(module->path_.get()) : this == module;
}

std::int32_t FModuleBase::receiveMessage(FMessage* message) {
    if (!message->isMessage(kUnloadMessage)) {
        return 0;
    }
    FLockGuard guard(lock_);
    // It may have been told to stay since the message was sent.
    if (useCount_ < 1 && !staysLoaded()) {
        unload();
    }
    return 1;
}

void FModuleBase::use() {
    // Before the lock: a round of delivery on another thread may be about to take it.
    if (FMessenger* messenger = FMessenger::getInstance()) {
        messenger->removeMessages(this, kUnloadMessage);
    }
    FLockGuard guard(lock_);
    ++useCount_;
}

void FModuleBase::unuse() {
    FLockGuard guard(lock_);
    useCount_ = std::max(useCount_ - 1, 0);
    if (useCount_ > 0 || staysLoaded()) {
        return;
    }
    onUnloadRequest();
    FMessenger* messenger = deferredUnloading ? FMessenger::getInstance() : nullptr;
    if (messenger == nullptr) {
        unload();
        return;
    }
    messenger->postMessage(this, new FMessage(kUnloadMessage), FMessenger::Coalesce::sameTargetAndName,
                           kUnloadDelayRounds);
    useCount_ = 0;
}

void FModuleBase::onUnloadRequest() {}

bool FModuleBase::load() {
    FLockGuard guard(lock_);
    if (library_) {
        return true;
    }
    library_ = loadLibrary(path_.get());
    if (library_) {
        auto* init = entryPoint<bool()>(*library_, kInitDllName);
        if (init != nullptr && !init()) {
            library_.reset();
        }
    }
    if (library_ && onLoaded()) {
        return true;
    }
    unload();
    return false;
}

void FModuleBase::unload() {
    FLockGuard guard(lock_);
    if (!library_) {
        return;
    }
    onUnloading();
    if (auto* exit = entryPoint<bool()>(*library_, kExitDllName)) {
        exit();
    }
    if (librariesStayInMemory) {
        keep(std::move(*library_));
    }
    library_.reset();
    useCount_ = 0;
}

bool FModuleBase::onLoaded() {
    return true;
}

void FModuleBase::onUnloading() {}

bool FModuleBase::isLoaded() const {
    FLockGuard guard(lock_);
    return library_.has_value();
}

void* FModuleBase::getSymbol(const char* name) const {
    FLockGuard guard(lock_);
    return library_ ? library_->symbol(name) : nullptr;
}

std::int32_t FModuleBase::getUseCount() const {
    FLockGuard guard(lock_);
    return useCount_;
}

} // namespace tessera
