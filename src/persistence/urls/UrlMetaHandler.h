// UrlMetaHandler: the handlers of the process, by scheme, and the way to them: what it is asked goes to the handler of
// the URL's scheme, and is answered with nothing where there is none.
//
// "file" is there from the start; further schemes are entered while the program starts. A handler is made when its
// scheme is first asked for. Schemes are compared without case. No lock: one thread at a time.
#pragma once

#include "foundation/object/FRefPtr.h"
#include "foundation/text/FString.h"
#include "persistence/urls/FUrlHandler.h"

#include <vector>

namespace tessera {

class UrlMetaHandler : public CmClass<UrlMetaHandler, FUrlHandler> {
public:
    static FMetaClass metaClass;

    // Gives one reference.
    using Factory = FUrlHandler* (*)();

    // Null once the singletons have gone down.
    static UrlMetaHandler* getInstance();

    UrlMetaHandler();
    ~UrlMetaHandler() override;

    // In the place of an earlier one of that scheme.
    void registerHandler(const FStringRef& scheme, Factory factory);
    // False when there was none.
    bool unregisterHandler(const FStringRef& scheme);
    // Borrowed. Null for a scheme that nobody handles.
    FUrlHandler* getHandler(const FStringRef& scheme);

    using FUrlHandler::getDefaultPort;
    // kResultOk for what at least one of the handlers can do.
    FResult isSupported(const char* key) const override;
    std::uint16_t getDefaultPort(const FStringRef& scheme);
    FResult isSupported(const FUrl& url, const char* key);
    // These leave the scheme of the handler in the URL.
    FStream* openFile(FUrl& url, std::uint32_t mode, std::int32_t* error) override;
    FStream* createFile(FUrl& url, std::uint32_t mode, std::int32_t* error) override;
    FFileIterator* newIterator(const FUrl& url, bool resolveLinks) override;

private:
    struct Entry {
        FString scheme;
        Factory factory;
        mutable FRefPtr<FUrlHandler> handler; // null until it is asked for

        // Borrowed; null when the factory makes none.
        FUrlHandler* made() const;
    };

    const Entry* find(const FStringRef& scheme) const;

    std::vector<Entry> entries_;
};

} // namespace tessera
