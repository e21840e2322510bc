#include "persistence/files/FileChangeHub.h"

#include "foundation/messages/FMessenger.h"
#include "foundation/object/FSingletonList.h"

#include <algorithm>

namespace tessera {

namespace {

// The messenger is looked up at each use: it may have gone before the hub does, at the end of the process.
FMessenger* messenger() {
    return FMessenger::getInstance();
}

} // namespace

FileChangeHub* FileChangeHub::getInstance(bool create) {
    static constinit FSingleton<FileChangeHub> instance([] { return new FileChangeHub; });
    return instance.get(create);
}

FileChangeHub::FileChangeHub() {
    if (FMessenger* office = messenger()) {
        group_ = office->createGroup();
        office->addTarget(name, static_cast<IUpdateTarget*>(this));
    }
}

FileChangeHub::~FileChangeHub() {
    for (IBaseUnknown* listener : listeners_) {
        listener->release();
    }
}

void FileChangeHub::join(IBaseUnknown* listener) {
    if (listener == nullptr) {
        return;
    }
    listener->addRef();
    listeners_.push_back(listener);
    if (FMessenger* office = messenger()) {
        office->addToGroup(group_, listener);
    }
}

void FileChangeHub::leave(IBaseUnknown* listener) {
    const auto found = std::find(listeners_.begin(), listeners_.end(), listener);
    if (found == listeners_.end()) {
        return;
    }
    if (FMessenger* office = messenger()) {
        office->removeFromGroup(group_, listener);
    }
    listeners_.erase(found);
    listener->release();
}

std::int32_t FileChangeHub::receiveMessage(FMessage* message) {
    FMessenger* office = messenger();
    return office != nullptr && office->sendToGroup(group_, message) ? 1 : 0;
}

} // namespace tessera
