// FUrl: a path that names what need not be a file of the machine: a scheme, for most schemes a host, and the file
// there.
//
// The parts are what counts: each change of one builds folder and name anew. The separator is "/" here. The folder text
// starts with the scheme and "://" and ends without a separator; user and password stand in neither text. A "/" at the
// end of the file text makes a folder. Texts are kept as they are spelled, percent coding included.
//
//     http://host:8080/a/b.wav    protocol "http", host "host", port 8080, file "a/b.wav"
//                                 folder "http://host:8080/a", name "b.wav"
//     file:///tmp/a.wav           protocol "file", file "/tmp/a.wav"; folder "file:///tmp", name "a.wav"
//     vfs://C:/a.pak//b.wav       protocol "vfs", host "C:" (a drive here, no host and port), file "a.pak//b.wav"
//
// Binary form: protocol and host as strings, a 16-bit port, file as a string, then user and password as strings, which
// older streams may lack at their end.
#pragma once

#include "persistence/paths/FPath.h"

#include <cstdint>

namespace tessera {

class FNPath;

class FUrl : public CmClass<FUrl, FPath> {
public:
    static FMetaClass metaClass;

    FUrl() : CmClass(PathKind::folder) {}
    explicit FUrl(const FStringRef& text);
    FUrl(const FUrl& other);
    FUrl& operator=(const FUrl& other);
    ~FUrl() override;

    CmObject* clone() const override;
    bool read(FStream& stream) override;
    bool write(FStream& stream) const override;
    bool storeAttributes(FAttributes& attributes) const override;
    bool restoreAttributes(FAttributes& attributes) override;

    // Takes the text apart: scheme up to "://", user and password up to "@", host, ":" and port, file. For "file" all
    // behind "://" is the file. A text without "://" is a file without a scheme. A "/" at the end makes a folder,
    // whatever kind says.
    void set(const FStringRef& text, PathKind kind) override;
    void setName(const FStringRef& text) override;
    void setPath(const FStringRef& text) override;
    void setNativePath(const FStringRef& text) override;
    void descend(const FStringRef& name, PathKind kind) override;
    bool ascend() override;
    bool parentIsRoot() const override;
    bool isParentOf(const FPath* other) const override;
    using FPath::getFullPath;
    void getFullPath(FString& out) const override;
    // The same text.
    void getNativePath(char16_t* buffer) const override;

    // The scheme of the handler that opened it; empty before.
    const FString& getHandler() const { return handler_; }
    void setHandler(const FStringRef& scheme) { handler_ = scheme; }
    const FString& getProtocol() const { return protocol_; }
    // With port 0 the port becomes the one that a handler of that scheme has by default.
    void setProtocol(const FStringRef& protocol);
    const FString& getHost() const { return host_; }
    void setHost(const FStringRef& host);
    std::uint16_t getPort() const { return port_; }
    void setPort(std::uint16_t port);
    const FString& getFile() const { return file_; }
    void setFile(const FStringRef& file);
    const FString& getUser() const { return user_; }
    void setUser(const FStringRef& user) { user_ = user; }
    const FString& getPassword() const { return password_; }
    void setPassword(const FStringRef& password) { password_ = password; }

    bool isFileScheme() const;
    // The machine's file that a URL of the scheme "file" means. Null for other schemes. One reference for the caller.
    FNPath* toNativePath() const;
    // Becomes the URL of the scheme "file" for a native path.
    void setFromNativePath(const FPath& path);

private:
    void adoptProtocol(const FStringRef& protocol);
    // Folder, name and kind out of the parts.
    void rebuild();

    FString handler_;
    FString protocol_;
    FString host_;
    std::uint16_t port_ = 0;
    FString file_;
    FString user_;
    FString password_;
};

} // namespace tessera
