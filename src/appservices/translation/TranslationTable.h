// TranslationTable: the texts of the program in the user's language, looked up by their English text.
//
// The texts come from "translation.xml" beside the module, the language from "lang.cfg" in the user's folder of the
// program or, without that, from the user's settings. A missing file leaves the English texts. A broken one is told to
// the user through the hook for questions, if there is one, and what was read up to the break is in the table.
//
// Start-up loads the table on the main thread; from then on any thread may look up. setLanguage and reload are for the
// main thread too, at a time when no other thread looks up or holds a text of the table: those texts end then.
//
// A look-up hashes the key; a key with a context in double braces, which goes into a list, costs a walk along the list.
#pragma once

#include "appservices/translation/ITranslationListener.h"
#include "appservices/translation/LanguageCode.h"
#include "appservices/translation/TextStore.h"
#include "appservices/translation/TranslationMap.h"
#include "foundation/object/FObject.h"
#include "foundation/object/FRefPtr.h"
#include "foundation/text/FString.h"
#include "foundation/threads/FLock.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace tessera {

class FStream;
struct TranslatedText;

class TranslationTable : public FObject, private ITranslationListener {
public:
    struct Language {
        LanguageCode code;
        FString name;
    };

    // What a look-up gives that finds nothing.
    enum class FallBack { key, null };

    // Where the program keeps what is built into it: a stream with one reference for the caller, or null.
    using ResourceSource = FStream* (*)(const FStringRef& name);

    TranslationTable() = default;
    TranslationTable(const TranslationTable&) = delete;
    TranslationTable& operator=(const TranslationTable&) = delete;
    // Constants that have asked this table ask again.
    ~TranslationTable() override;

    // The one of the process. Null once the singletons have gone down.
    static TranslationTable* getInstance();
    // Asked for "translation.xml" when there is no such file, or none that can be read. Null for nowhere.
    static void setResourceSource(ResourceSource source);

    // The start-up. With preferredOnly nothing is read, the table stays empty, and every text is English; the name
    // promises more than it does. False when a translation was to be read and none was found, or a part of one.
    bool load(bool preferredOnly);
    // Another language. Before load only the code is kept; after it everything is read again, as reload does.
    void setLanguage(const FStringRef& code);
    // The same at any time: the table is emptied, the file read again, the constants that have asked ask again. A code
    // that the file doesn't have gives its first language. False as load.
    bool reload(const FStringRef& code);
    // Adds the content of a file, from where the stream stands. False when it can't be read to its end, or the table
    // stays empty on purpose.
    bool loadFromStream(FStream& stream);
    bool loadFromMemory(const void* data, std::size_t size);

    // The translation, which may be empty where it was given so for a context. The key may be null.
    const char16_t* lookup(const char16_t* key, FallBack fallBack) const;
    // What the user sees for the constant: the translation, or the key, or the key in disguise.
    const char16_t* translate(TranslatedText& text);
    // The same for a key in either width that is no constant, as a text that stands by itself: a key that comes back
    // loses its context.
    FString translateKey(const FStringRef& key);

    // Two letters: the language in use or, as long as there is none, the system's.
    const char* getLanguageCode() const;
    // What "lang.cfg" says.
    const LanguageCode& getConfigCode() const { return configCode_; }
    const std::vector<Language>& getLanguages() const { return languages_; }
    std::size_t getStringCount() const { return strings_.size() + contextKeys_.size(); }
    bool isLoaded() const { return loaded_; }

    // Texts of every language are entered, the last one of a key winning. For checking files.
    void setAcceptAllLanguages(bool on) { acceptAllLanguages_ = on; }
    // On at first. Off, translations are taken as they are.
    void setVerification(bool on) { verifies_ = on; }
    // Compares the printf conversions of a translation with those of its key, see conversionsMatch. kResultFailure, and
    // in out "printf mismatch at line %d", when they differ.
    FResult verify(std::u16string_view key, std::u16string_view text, std::int32_t line, FString& out) const;

    // Whether a file "PSEUDO_TRANSLATION" lies beside the module. Looked at once.
    bool isPseudoOffered();

private:
    struct ContextKey {
        std::u16string_view key;
        const char16_t* text;
    };
    enum class PseudoOffer { unknown, yes, no };

    void addLanguage(std::string_view code, std::u16string_view name) override;
    bool wants(std::string_view code) const override;
    FResult addTranslation(std::u16string_view key, std::string_view code, std::u16string_view text, std::int32_t line,
                           FString& error) override;

    const char16_t* find(std::u16string_view key) const;
    bool isPseudoActive() const;
    const char16_t* pseudoForm(std::u16string_view key);
    bool readForLanguage();
    bool readTables();
    bool readResource();
    bool readXml(std::string_view bytes);
    bool readOldForm(std::string_view bytes);
    void report(const FStringRef& message) const;
    void clearStrings();
    void forgetCachedTexts();

    TranslationMap strings_;
    std::vector<Language> languages_;
    LanguageCode languageCode_;
    LanguageCode configCode_;
    std::vector<ContextKey> contextKeys_;
    TextStore contextTexts_;
    bool loaded_ = false;
    bool readOnly_ = false;
    bool acceptAllLanguages_ = false;
    bool verifies_ = true;
    bool reportsErrors_ = true;
    PseudoOffer pseudoOffer_ = PseudoOffer::unknown;
    // Guards the two below.
    FLock lock_{"TranslationTable"};
    // Texts in disguise, entered as they are asked for; made when that language is first in use.
    FRefPtr<TranslationTable> pseudo_;
    // The constants that have kept an answer.
    std::vector<TranslatedText*> cachedTexts_;
};

} // namespace tessera
