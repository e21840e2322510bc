#include "persistence/urls/FUrl.h"

#include "persistence/archives/VirtualPath.h"
#include "persistence/paths/FNPath.h"
#include "persistence/paths/PathText.h"
#include "persistence/urls/PercentCoding.h"
#include "persistence/urls/UrlMetaHandler.h"

#include <algorithm>
#include <charconv>
#include <string>
#include <string_view>

namespace tessera {

namespace {

using pathtext::isDriveLetter;
using pathtext::stringOf;
using pathtext::viewOf;
using pathtext::wideText;
using std::u16string_view;

constexpr u16string_view kSchemeEnd = u"://";
constexpr const char* kFileScheme = "file";
constexpr char16_t kSlash = u'/';

// What stands in front of the first `mark`, which is dropped with it; all of it when there is none.
u16string_view cutAt(u16string_view& text, std::size_t mark, std::size_t markLength = 1) {
    const u16string_view front = text.substr(0, mark);
    text = mark == text.npos ? u16string_view() : text.substr(mark + markLength);
    return front;
}

// 0 for what is no port.
std::uint16_t portOf(u16string_view digits) {
    const std::string text(digits.begin(), digits.end());
    std::uint16_t port = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), port);
    const bool isAscii = std::all_of(digits.begin(), digits.end(), [](char16_t c) { return c < 0x80; });
    return error == std::errc() && end == text.data() + text.size() && isAscii ? port : std::uint16_t(0);
}

// Where an archive is named, "C:" is the drive that it lies on: a host's port would stand behind the colon.
bool isVirtualDrive(u16string_view text, u16string_view authority) {
    return authority.size() == 2 && isDriveLetter(authority[0]) && authority[1] == u':' && isVirtualText(text);
}

} // namespace

FUrl::FUrl(const FStringRef& text) : FUrl() {
    FUrl::set(text, PathKind::file);
}

FUrl::FUrl(const FUrl& other) = default;
FUrl& FUrl::operator=(const FUrl& other) = default;
FUrl::~FUrl() = default;

CmObject* FUrl::clone() const {
    return new FUrl(*this);
}

void FUrl::set(const FStringRef& text, PathKind kind) {
    const std::u16string whole = wideText(text);
    u16string_view rest = whole;
    protocol_.clear();
    host_.clear();
    port_ = 0;
    user_.clear();
    password_.clear();
    if (const std::size_t end = rest.find(kSchemeEnd); end != rest.npos) {
        const FString scheme = stringOf(cutAt(rest, end, kSchemeEnd.size()));
        if (scheme.compare(kFileScheme, -1, FCase::ignore) != 0) {
            u16string_view authority = cutAt(rest, rest.find(kSlash));
            if (const std::size_t at = authority.rfind(u'@'); at != authority.npos) {
                u16string_view account = cutAt(authority, at);
                user_ = stringOf(cutAt(account, account.find(u':')));
                password_ = stringOf(account);
            }
            // The colons of a numeric address stand in brackets.
            const std::size_t bracket = authority.rfind(u']');
            const std::size_t colon = authority.find(u':', bracket == authority.npos ? 0 : bracket);
            host_ = stringOf(cutAt(authority, isVirtualDrive(whole, authority) ? authority.npos : colon));
            port_ = portOf(authority);
        }
        adoptProtocol(scheme);
    }
    file_ = stringOf(rest);
    rebuild();
    if (kind == PathKind::folder) {
        setKind(kind);
    }
}

void FUrl::setName(const FStringRef& text) {
    const std::u16string file(viewOf(file_));
    const std::size_t end = file.ends_with(kSlash) ? file.size() - 1 : file.size();
    const std::size_t slash = end == 0 ? file.npos : file.rfind(kSlash, end - 1);
    const std::size_t start = slash == file.npos ? 0 : slash + 1;
    setFile(stringOf(file.substr(0, start) + wideText(text) + file.substr(end)));
}

// The folder, as getPath gives it, with the present name in it.
void FUrl::setPath(const FStringRef& text) {
    const FString name(name_);
    const PathKind kind = getKind();
    FUrl::set(text, PathKind::folder);
    if (!name.isEmpty()) {
        FUrl::descend(name, kind);
    }
}

void FUrl::setNativePath(const FStringRef& text) {
    FUrl::set(text, getKind());
}

void FUrl::descend(const FStringRef& name, PathKind kind) {
    std::u16string file(viewOf(file_));
    if (!file.empty() && !file.ends_with(kSlash)) {
        file.push_back(kSlash);
    }
    file += wideText(name);
    if (kind == PathKind::folder && !file.ends_with(kSlash)) {
        file.push_back(kSlash);
    }
    setFile(stringOf(file));
    setKind(kind);
}

bool FUrl::ascend() {
    u16string_view file = viewOf(file_);
    if (!FUrl::parentIsRoot()) {
        if (file.ends_with(kSlash)) {
            file.remove_suffix(1);
        }
        const std::size_t slash = file.rfind(kSlash);
        setFile(stringOf(file.substr(0, slash == file.npos ? 0 : slash + 1)));
    }
    setKind(PathKind::folder);
    return true;
}

bool FUrl::parentIsRoot() const {
    const u16string_view file = viewOf(file_);
    return file.empty() || file == u"/";
}

bool FUrl::isParentOf(const FPath* other) const {
    const FString own = FPath::getFullPath();
    const FString theirs = other != nullptr ? other->getFullPath() : FString();
    return viewOf(theirs).substr(std::min(own.length(), theirs.length())).starts_with(kSlash) &&
           own.compare(theirs, own.length(), FCase::ignore) == 0;
}

void FUrl::getFullPath(FString& out) const {
    std::u16string text(viewOf(path_));
    if (!name_.isEmpty()) {
        text += kSlash;
        text += viewOf(name_);
    }
    out = stringOf(text);
}

void FUrl::getNativePath(char16_t* buffer) const {
    const FString whole = FPath::getFullPath();
    const u16string_view text = whole.length() < kPathBufferLength ? viewOf(whole) : u16string_view();
    *std::copy(text.begin(), text.end(), buffer) = u'\0';
}

void FUrl::setProtocol(const FStringRef& protocol) {
    adoptProtocol(protocol);
    rebuild();
}

void FUrl::adoptProtocol(const FStringRef& protocol) {
    protocol_ = protocol;
    UrlMetaHandler* handlers = port_ == 0 ? UrlMetaHandler::getInstance() : nullptr;
    if (handlers != nullptr) {
        port_ = handlers->getDefaultPort(protocol_);
    }
}

void FUrl::setHost(const FStringRef& host) {
    host_ = host;
    rebuild();
}

void FUrl::setPort(std::uint16_t port) {
    port_ = port;
    rebuild();
}

void FUrl::setFile(const FStringRef& file) {
    file_ = file;
    rebuild();
}

bool FUrl::isFileScheme() const {
    return protocol_.compare(kFileScheme, -1, FCase::ignore) == 0;
}

FNPath* FUrl::toNativePath() const {
    if (!isFileScheme()) {
        return nullptr;
    }
    FString text(file_);
    decodePercent(text);
    std::u16string file = wideText(text);
    std::replace(file.begin(), file.end(), kSlash, kPathSeparator);
    if (file.size() >= 3 && file[0] == kPathSeparator && isDriveLetter(file[1]) && file[2] == u':') {
        file.erase(0, 1);
    }
    return new FNPath(stringOf(file), getKind());
}

void FUrl::setFromNativePath(const FPath& path) {
    FString text;
    path.getFullPath(text);
    std::u16string file = wideText(text);
    std::replace(file.begin(), file.end(), kPathSeparator, kSlash);
    // The colon of a drive stands for itself.
    const bool hasDrive = file.size() >= 2 && isDriveLetter(file[0]) && file[1] == u':';
    FString coded = stringOf(u16string_view(file).substr(hasDrive ? 2 : 0));
    encodePercent(coded);
    std::u16string spelled = hasDrive ? u"/" + file.substr(0, 2) : std::u16string();
    spelled += viewOf(coded);
    if (path.isFolder() && !spelled.ends_with(kSlash)) {
        spelled += kSlash;
    }
    FUrl::set(stringOf(u"file://" + spelled), path.getKind());
}

void FUrl::rebuild() {
    std::u16string folder(viewOf(protocol_));
    folder += kSchemeEnd;
    if (!isFileScheme()) {
        folder += viewOf(host_);
        if (port_ != 0) {
            FString port;
            port.printf(":%d", static_cast<int>(port_));
            folder += viewOf(port);
        }
    }
    u16string_view name = viewOf(file_);
    PathKind kind = PathKind::folder;
    if (name.ends_with(kSlash)) {
        name.remove_suffix(1);
    } else if (!name.empty()) {
        kind = PathKind::file;
    }
    if (const std::size_t slash = name.rfind(kSlash); slash != name.npos) {
        const u16string_view above = name.substr(0, slash);
        if (!above.empty() && !above.starts_with(kSlash)) {
            folder += kSlash;
        }
        folder += above;
        name.remove_prefix(slash + 1);
    }
    name_ = stringOf(name);
    path_ = stringOf(folder);
    fileType_.clear();
    setKind(kind);
}

} // namespace tessera
