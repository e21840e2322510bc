#include "persistence/urls/UrlMetaHandler.h"

#include "foundation/object/FSingletonList.h"
#include "persistence/urls/FUrl.h"
#include "persistence/urls/FUrlFileHandler.h"

#include <algorithm>

namespace tessera {

namespace {

struct KnownScheme {
    const char* scheme;
    UrlMetaHandler::Factory factory;
};

constexpr KnownScheme kSchemes[] = {
    {"file", []() -> FUrlHandler* { return new FUrlFileHandler; }},
};

constinit FSingleton<UrlMetaHandler> instance([] { return new UrlMetaHandler; });

} // namespace

UrlMetaHandler* UrlMetaHandler::getInstance() {
    return instance.get(true);
}

UrlMetaHandler::UrlMetaHandler() {
    for (const KnownScheme& known : kSchemes) {
        registerHandler(known.scheme, known.factory);
    }
}

UrlMetaHandler::~UrlMetaHandler() = default;

void UrlMetaHandler::registerHandler(const FStringRef& scheme, Factory factory) {
    unregisterHandler(scheme);
    entries_.push_back({FString(scheme), factory, {}});
}

bool UrlMetaHandler::unregisterHandler(const FStringRef& scheme) {
    return std::erase_if(entries_,
                         [&](const Entry& entry) { return entry.scheme.compare(scheme, -1, FCase::ignore) == 0; }) != 0;
}

const UrlMetaHandler::Entry* UrlMetaHandler::find(const FStringRef& scheme) const {
    for (const Entry& entry : entries_) {
        if (entry.scheme.compare(scheme, -1, FCase::ignore) == 0) {
            return &entry;
        }
    }
    return nullptr;
}

FUrlHandler* UrlMetaHandler::getHandler(const FStringRef& scheme) {
    const Entry* entry = find(scheme);
    return entry != nullptr ? entry->made() : nullptr;
}

FUrlHandler* UrlMetaHandler::Entry::made() const {
    if (!handler && factory != nullptr) {
        handler = FRefPtr<FUrlHandler>::adopt(factory());
    }
    return handler.get();
}

std::uint16_t UrlMetaHandler::getDefaultPort(const FStringRef& scheme) {
    const FUrlHandler* handler = getHandler(scheme);
    return handler != nullptr ? handler->getDefaultPort() : std::uint16_t(0);
}

FResult UrlMetaHandler::isSupported(const char* key) const {
    const bool supported = std::any_of(entries_.begin(), entries_.end(), [key](const Entry& entry) {
        const FUrlHandler* handler = entry.made();
        return handler != nullptr && handler->isSupported(key) == kResultOk;
    });
    return supported ? kResultOk : kResultFalse;
}

FResult UrlMetaHandler::isSupported(const FUrl& url, const char* key) {
    const FUrlHandler* handler = getHandler(url.getProtocol());
    return handler != nullptr ? handler->isSupported(key) : kResultFalse;
}

FStream* UrlMetaHandler::openFile(FUrl& url, std::uint32_t mode, std::int32_t* error) {
    FUrlHandler* handler = getHandler(url.getProtocol());
    FStream* stream = handler != nullptr ? handler->openFile(url, mode, error) : nullptr;
    if (stream != nullptr) {
        url.setHandler(url.getProtocol());
    }
    return stream;
}

FStream* UrlMetaHandler::createFile(FUrl& url, std::uint32_t mode, std::int32_t* error) {
    FUrlHandler* handler = getHandler(url.getProtocol());
    FStream* stream = handler != nullptr ? handler->createFile(url, mode, error) : nullptr;
    if (stream != nullptr) {
        url.setHandler(url.getProtocol());
    }
    return stream;
}

FFileIterator* UrlMetaHandler::newIterator(const FUrl& url, bool resolveLinks) {
    FUrlHandler* handler = getHandler(url.getProtocol());
    return handler != nullptr ? handler->newIterator(url, resolveLinks) : nullptr;
}

} // namespace tessera
