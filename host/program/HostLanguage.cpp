#include "host/program/HostLanguage.h"

#include "appservices/translation/LanguageTable.h"
#include "appservices/translation/TranslationTable.h"
#include "foundation/text/FString.h"
#include "host/text/HostTexts.h"
#include "host/text/Message.h"
#include "host/text/PathText.h"
#include "host/text/Text16.h"
#include "persistence/files/FFileSystem.h"
#include "persistence/paths/FNPath.h"
#include "persistence/paths/IApplicationFolders.h"
#include "persistence/streams/FStream.h"
#include "persistence/streams/FileOpenMode.h"

#include <cstdint>
#include <utility>
#include <vector>

namespace tessera::host {
namespace {

struct Language {
    std::string code;
    std::string name;
};

constexpr char kLanguageFile[] = "lang.cfg";

// Without translations it is English.
std::vector<Language> offeredLanguages() {
    std::vector<Language> result;
    if (TranslationTable* const table = TranslationTable::getInstance()) {
        for (const TranslationTable::Language& language : table->getLanguages()) {
            FString name(language.name);
            name.toWide();
            result.push_back({language.code.text(), toUtf8(name.view16()).value_or("")});
        }
    }
    if (result.empty()) {
        result.push_back(
            {LanguageTable::codeOf(LanguageTable::kEnglish), LanguageTable::nameOf(LanguageTable::kEnglish)});
    }
    return result;
}

std::string codesOf(const std::vector<Language>& languages) {
    std::string result;
    for (const Language& language : languages) {
        result += (result.empty() ? "" : ", ") + language.code;
    }
    return result;
}

const Language* findLanguage(const std::vector<Language>& languages, const std::string& code) {
    for (const Language& language : languages) {
        if (language.code == code) {
            return &language;
        }
    }
    return nullptr;
}

bool writeFile(FNPath file, const std::string& content) {
    FFileSystem* const files = FFileSystem::getInstance();
    FStream* const stream = files != nullptr
                                ? files->createFile(file, FileOpenMode::write | FileOpenMode::createFolders, nullptr)
                                : nullptr;
    if (stream == nullptr) {
        return false;
    }
    const auto size = static_cast<std::int32_t>(content.size());
    const bool written = stream->write(content.data(), size) == size;
    files->closeStream(stream);
    return written;
}

Complaint keepLanguage(const std::string& code) {
    IApplicationFolders* const folders = applicationFoldersSource != nullptr ? applicationFoldersSource() : nullptr;
    const FNPath* const folder = folders != nullptr ? folders->folder(ApplicationFolder::userData) : nullptr;
    if (folder == nullptr || folder->getPath().isEmpty()) {
        return message(hostTexts.languageNotKept, kLanguageFile);
    }
    const FNPath file(kLanguageFile, *folder, PathKind::file);
    return writeFile(file, code) ? Complaint() : message(hostTexts.languageNotKept, pathText(file));
}

} // namespace

std::string describeLanguage() {
    const std::vector<Language> languages = offeredLanguages();
    TranslationTable* const table = TranslationTable::getInstance();
    const Language* used = table != nullptr ? findLanguage(languages, table->getLanguageCode()) : nullptr;
    used = used != nullptr ? used : &languages.front();
    return message(hostTexts.languageLine, used->code, used->name, codesOf(languages));
}

Complaint chooseLanguage(const std::string& code) {
    const std::vector<Language> languages = offeredLanguages();
    if (findLanguage(languages, code) == nullptr) {
        return message(hostTexts.noSuchLanguage, code, codesOf(languages));
    }
    Complaint complaint = keepLanguage(code);
    if (complaint.empty()) {
        TranslationTable::getInstance()->reload(code.c_str());
    }
    return complaint;
}

} // namespace tessera::host
