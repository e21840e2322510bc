// XmlHandler: reads translation files of the newer form: what FXmlParser2 finds in UTF-8 XML, put together to languages
// and translations.
//
//     <Translation>
//       <LanguageTable> <language key="de">Deutsch</language> </LanguageTable>
//       <StringTable> <String key="Open"> <de>Öffnen</de> </String> </StringTable>
//     </Translation>
//
// "Key" is taken for "key" in a string. A tag out of its place, and a listener that says so, stop the parser; what was
// told before stands. The listener is borrowed.
#pragma once

#include "foundation/text/FString.h"
#include "persistence/xml/IXmlListener.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tessera {

struct ITranslationListener;

class XmlHandler : public IXmlListener {
public:
    explicit XmlHandler(ITranslationListener& listener) : listener_(listener) {}

    void startElement(IXmlParser& parser, const char* name, const char* const* attributes) override;
    void endElement(IXmlParser& parser, const char* name) override;
    void characters(IXmlParser& parser, const char* text, std::int32_t length) override;
    void comment(IXmlParser& parser, const char* text) override;

    // How many translations were read.
    std::int32_t getStringCount() const { return stringCount_; }
    // Why the listener stopped the parser; empty when it didn't.
    const FString& getErrorMessage() const { return errorMessage_; }

private:
    enum class State { outside = 0, languageTable = 1, language = 2, stringTable = 3, string = 4 };

    bool open(std::string_view name, const char* const* attributes);
    bool openOutside(std::string_view name);
    bool openLanguage(std::string_view name, const char* const* attributes);
    bool openString(std::string_view name, const char* const* attributes);
    bool openText(std::string_view name);
    bool closeText(IXmlParser& parser);
    void stop(IXmlParser& parser);

    ITranslationListener& listener_;
    State state_ = State::outside;
    // Inside the root, and inside one of a string's texts.
    bool inRoot_ = false;
    bool inText_ = false;
    bool stopped_ = false;
    FString key_;
    std::string code_;
    std::string text_;
    std::int32_t stringCount_ = 0;
    FString errorMessage_;
};

} // namespace tessera
