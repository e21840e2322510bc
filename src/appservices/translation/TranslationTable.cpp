#include "appservices/translation/TranslationTable.h"

#include "appservices/translation/FormatConversions.h"
#include "appservices/translation/KeyContext.h"
#include "appservices/translation/LanguageFile.h"
#include "appservices/translation/LanguageTable.h"
#include "appservices/translation/PseudoText.h"
#include "appservices/translation/TranslatedText.h"
#include "appservices/translation/TranslationReader.h"
#include "appservices/translation/XmlHandler.h"
#include "foundation/object/FSingletonList.h"
#include "foundation/threads/FLockGuard.h"
#include "persistence/files/FFileSystem.h"
#include "persistence/objects/PersistenceHooks.h"
#include "persistence/paths/FNPath.h"
#include "persistence/paths/IApplicationFolders.h"
#include "persistence/streams/FMemoryStream.h"
#include "persistence/streams/FileOpenMode.h"
#include "persistence/xml/FXmlParser2.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace tessera {
namespace {

constexpr const char* kTranslationFile = "translation.xml";
constexpr const char* kLanguageFile = "lang.cfg";
constexpr const char* kPseudoFile = "PSEUDO_TRANSLATION";
constexpr std::string_view kPseudoCode = "xx";
constexpr std::u16string_view kPseudoName = u"Pseudo Translation";
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kUtf8Declaration = "encoding=\"utf-8\"";
// How far a declaration is looked for, in bytes.
constexpr std::size_t kDeclarationRange = 128;
// No translation is shorter; what is can't even be told apart.
constexpr std::size_t kLongestNoFile = 3;
constexpr std::int32_t kReadBlock = 65'536;

constinit TranslationTable::ResourceSource resourceSource = nullptr;

std::optional<FNPath> programFile(ApplicationFolder code, const char* name) {
    IApplicationFolders* const folders = applicationFoldersSource != nullptr ? applicationFoldersSource() : nullptr;
    const FNPath* const folder = folders != nullptr ? folders->folder(code) : nullptr;
    return folder != nullptr ? std::optional<FNPath>(std::in_place, name, *folder, PathKind::file) : std::nullopt;
}

// Opens the file and hands the stream to work; false without such a file.
template <class Work>
bool withProgramFile(ApplicationFolder code, const char* name, Work work) {
    FFileSystem* const files = FFileSystem::getInstance();
    std::optional<FNPath> path = programFile(code, name);
    if (files == nullptr || !path) {
        return false;
    }
    FStream* const stream = files->openFile(*path, FileOpenMode::read | FileOpenMode::shareRead, nullptr);
    if (stream == nullptr) {
        return false;
    }
    const bool result = work(*stream);
    files->closeStream(stream);
    return result;
}

std::string readWhole(FStream& stream) {
    std::string content;
    std::size_t size = 0;
    std::int32_t read = 0;
    do {
        content.resize(size + kReadBlock);
        read = std::clamp(stream.read(content.data() + size, kReadBlock), 0, kReadBlock);
        size += static_cast<std::size_t>(read);
    } while (read != 0);
    content.resize(size);
    return content;
}

char lowered(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool isUtf8Xml(std::string_view bytes) {
    const std::string_view head = bytes.substr(0, kDeclarationRange);
    return bytes.starts_with(kUtf8Mark) ||
           std::search(head.begin(), head.end(), kUtf8Declaration.begin(), kUtf8Declaration.end(),
                       [](char a, char b) { return lowered(a) == b; }) != head.end();
}

} // namespace

TranslationTable::~TranslationTable() {
    forgetCachedTexts();
}

TranslationTable* TranslationTable::getInstance() {
    static constinit FSingleton<TranslationTable> instance([] { return new TranslationTable; });
    return instance.get(true);
}

void TranslationTable::setResourceSource(ResourceSource source) {
    resourceSource = source;
}

bool TranslationTable::load(bool preferredOnly) {
    loaded_ = true;
    readOnly_ = preferredOnly;
    if (readOnly_) {
        return true;
    }
    configCode_ = LanguageCode();
    withProgramFile(ApplicationFolder::userData, kLanguageFile, [this](FStream& stream) {
        configCode_ = readLanguageFile(stream);
        return true;
    });
    languageCode_ = configCode_.isComplete()
                        ? configCode_
                        : LanguageCode(LanguageTable::codeOf(LanguageTable::getInstance().userLanguage()));
    return readForLanguage();
}

void TranslationTable::setLanguage(const FStringRef& code) {
    if (loaded_) {
        reload(code);
    } else {
        languageCode_ = LanguageCode(FString(code).text8());
    }
}

bool TranslationTable::reload(const FStringRef& code) {
    languageCode_ = LanguageCode(FString(code).text8());
    const bool complete = !readOnly_ && readForLanguage();
    forgetCachedTexts();
    return complete;
}

// Reads the texts of the language in use, or of the file's first one, English without any, which is then the one in
// use.
bool TranslationTable::readForLanguage() {
    bool complete = readTables();
    const bool isOffered = std::any_of(languages_.begin(), languages_.end(),
                                       [this](const Language& language) { return language.code == languageCode_; });
    if (!isOffered) {
        const LanguageCode wanted = std::exchange(
            languageCode_, languages_.empty() ? LanguageCode(LanguageTable::codeOf(LanguageTable::kEnglish))
                                              : languages_.front().code);
        if (languageCode_ != wanted) {
            // The user has been told already what is wrong with the file.
            reportsErrors_ = false;
            complete = readTables();
            reportsErrors_ = true;
        }
    }
    LanguageTable::getInstance().setUserLanguage(LanguageTable::indexOfCode(languageCode_.text()));
    return complete;
}

bool TranslationTable::readTables() {
    clearStrings();
    languages_.clear();
    bool complete = withProgramFile(ApplicationFolder::module, kTranslationFile,
                                    [this](FStream& stream) { return loadFromStream(stream); });
    if (!complete) {
        complete = readResource();
    }
    if (isPseudoOffered()) {
        addLanguage(kPseudoCode, kPseudoName);
    }
    return complete;
}

bool TranslationTable::readResource() {
    const auto stream = FRefPtr<FStream>::adopt(resourceSource != nullptr ? resourceSource(kTranslationFile) : nullptr);
    if (!stream) {
        return false;
    }
    // What came out of a broken file makes room for the whole.
    clearStrings();
    languages_.clear();
    return loadFromStream(*stream);
}

bool TranslationTable::loadFromStream(FStream& stream) {
    const std::string content = readWhole(stream);
    return loadFromMemory(content.data(), content.size());
}

bool TranslationTable::loadFromMemory(const void* data, std::size_t size) {
    if (readOnly_ || size <= kLongestNoFile || size > std::numeric_limits<std::int32_t>::max()) {
        return false;
    }
    const std::string_view bytes(static_cast<const char*>(data), size);
    return isUtf8Xml(bytes) ? readXml(bytes) : readOldForm(bytes);
}

bool TranslationTable::readXml(std::string_view bytes) {
    FMemoryStream stream(static_cast<const void*>(bytes.data()), static_cast<std::int32_t>(bytes.size()));
    auto owned = std::make_unique<XmlHandler>(static_cast<ITranslationListener&>(*this));
    const XmlHandler& handler = *owned;
    FXmlParser2 parser(std::move(owned), "UTF-8");
    if (parser.parse(stream)) {
        return true;
    }
    report(handler.getErrorMessage().isEmpty() ? parser.getErrorText() : handler.getErrorMessage());
    return false;
}

bool TranslationTable::readOldForm(std::string_view bytes) {
    TranslationReader reader(bytes, *this);
    if (reader.read()) {
        return true;
    }
    report(reader.describeError());
    return false;
}

void TranslationTable::report(const FStringRef& message) const {
    if (reportsErrors_) {
        // Nothing to choose: the text of a second button is empty.
        askUser(message, "OK", "");
    }
}

void TranslationTable::addLanguage(std::string_view code, std::u16string_view name) {
    languages_.push_back({LanguageCode(code), FString(name.data(), static_cast<std::int32_t>(name.size()))});
}

bool TranslationTable::wants(std::string_view code) const {
    return acceptAllLanguages_ || code == getLanguageCode();
}

FResult TranslationTable::addTranslation(std::u16string_view key, std::string_view, std::u16string_view text,
                                         std::int32_t line, FString& error) {
    if (verifies_ && verify(key, text, line, error) != kResultOk) {
        return kResultFailure;
    }
    if (hasContext(key)) {
        contextKeys_.push_back({{contextTexts_.add(key), key.size()}, contextTexts_.add(text)});
    } else {
        strings_.set(key, text);
    }
    return kResultOk;
}

FResult TranslationTable::verify(std::u16string_view key, std::u16string_view text, std::int32_t line,
                                 FString& out) const {
    if (conversionsMatch(key, text)) {
        return kResultOk;
    }
    out.clear();
    out.printf("printf mismatch at line %d", line);
    return kResultFailure;
}

const char16_t* TranslationTable::lookup(const char16_t* key, FallBack fallBack) const {
    const char16_t* const found = key != nullptr ? find(key) : nullptr;
    return found != nullptr || fallBack == FallBack::null ? found : key;
}

const char16_t* TranslationTable::find(std::u16string_view key) const {
    if (readOnly_) {
        return nullptr;
    }
    const char16_t* const text = strings_.find(key);
    if (text != nullptr && *text != u'\0') {
        return text;
    }
    // No other key stands in the list.
    if (!hasContext(key)) {
        return nullptr;
    }
    const auto found = std::find_if(contextKeys_.begin(), contextKeys_.end(),
                                    [key](const ContextKey& entry) { return entry.key == key; });
    return found != contextKeys_.end() ? found->text : nullptr;
}

const char16_t* TranslationTable::translate(TranslatedText& constant) {
    const char16_t* text = lookup(constant.key, FallBack::key);
    if (text == nullptr) {
        return nullptr;
    }
    if (*text == u'\0') {
        text = constant.key;
    }
    if (text == constant.key && isPseudoActive()) {
        text = pseudoForm(text);
    }
    const char16_t* before = nullptr;
    // Several threads may come here with one constant; they bring the same answer.
    if (constant.cached.compare_exchange_strong(before, text, std::memory_order_acq_rel)) {
        const FLockGuard guard(lock_);
        cachedTexts_.push_back(&constant);
        return text;
    }
    return before;
}

FString TranslationTable::translateKey(const FStringRef& key) {
    FString wide(key);
    if (!wide.toWide()) {
        return wide;
    }
    const char16_t* text = find(wide.view16());
    if ((text == nullptr || *text == u'\0') && isPseudoActive()) {
        text = pseudoForm(wide.view16());
    }
    if (text != nullptr && *text != u'\0') {
        wide.assign16(text);
    } else {
        wide.remove(static_cast<std::int32_t>(withoutContext(wide.view16()).size()));
    }
    return wide;
}

const char* TranslationTable::getLanguageCode() const {
    return languageCode_.isEmpty() ? LanguageTable::codeOf(LanguageTable::getInstance().systemLanguage())
                                   : languageCode_.text();
}

bool TranslationTable::isPseudoOffered() {
    if (pseudoOffer_ == PseudoOffer::unknown) {
        FFileSystem* const files = FFileSystem::getInstance();
        const std::optional<FNPath> path = programFile(ApplicationFolder::module, kPseudoFile);
        pseudoOffer_ = files != nullptr && path && files->fileExists(*path) ? PseudoOffer::yes : PseudoOffer::no;
    }
    return pseudoOffer_ == PseudoOffer::yes;
}

bool TranslationTable::isPseudoActive() const {
    return !readOnly_ && pseudoOffer_ == PseudoOffer::yes && languageCode_.view() == kPseudoCode;
}

const char16_t* TranslationTable::pseudoForm(std::u16string_view key) {
    const FLockGuard guard(lock_);
    if (!pseudo_) {
        pseudo_ = FRefPtr<TranslationTable>::adopt(new TranslationTable);
    }
    const char16_t* const known = pseudo_->strings_.find(key);
    return known != nullptr ? known : pseudo_->strings_.set(key, pseudoText(key));
}

void TranslationTable::clearStrings() {
    // Answers that were given out of an empty table were keys; they stay.
    if (getStringCount() != 0 || pseudo_) {
        forgetCachedTexts();
    }
    strings_.clear();
    contextKeys_.clear();
    contextTexts_.clear();
    pseudo_.reset();
}

void TranslationTable::forgetCachedTexts() {
    const FLockGuard guard(lock_);
    for (TranslatedText* const constant : cachedTexts_) {
        constant->cached.store(nullptr, std::memory_order_release);
    }
    cachedTexts_.clear();
}

} // namespace tessera
