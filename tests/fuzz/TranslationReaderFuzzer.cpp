// Translation files of the older form. What the reader tells is bounded by the file and the same each time; and where
// the file is plain enough to mean the same as XML, and both readers take it, both tell the same.
#include "appservices/translation/ITranslationListener.h"
#include "appservices/translation/TranslationReader.h"
#include "appservices/translation/XmlHandler.h"
#include "persistence/streams/FMemoryStream.h"
#include "persistence/xml/FXmlParser2.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace tessera;

void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

struct Listener final : ITranslationListener {
    std::vector<std::u16string> told;
    std::int32_t translations = 0;

    void addLanguage(std::string_view code, std::u16string_view name) override { tell({}, code, name); }
    bool wants(std::string_view) const override { return true; }
    FResult addTranslation(std::u16string_view key, std::string_view code, std::u16string_view text, std::int32_t line,
                           FString&) override {
        require(line >= 1);
        ++translations;
        tell(key, code, text);
        return kResultOk;
    }

private:
    // The older form doesn't tell empty texts, and XML has blanks for all white space in an attribute.
    void tell(std::u16string_view key, std::string_view code, std::u16string_view text) {
        if (text.empty()) {
            return;
        }
        std::u16string line(key);
        line.append(1, u'|').append(code.begin(), code.end());
        std::replace_if(
            line.begin(), line.end(), [](char16_t c) { return c < u' '; }, u' ');
        told.push_back(line.append(1, u'|').append(text));
    }
};

bool isPlain(std::string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return c == '\n' || (c >= ' ' && c <= '~' && c != '&'); });
}

void compareWithXml(std::string_view text, const Listener& old) {
    Listener listener;
    FMemoryStream stream(static_cast<const void*>(text.data()), static_cast<std::int32_t>(text.size()));
    FXmlParser2 parser(std::make_unique<XmlHandler>(static_cast<ITranslationListener&>(listener)), "UTF-8");
    // A second root is the end for one of them and more of the same for the other.
    if (parser.parse(stream) && stream.tell() == static_cast<std::int64_t>(text.size())) {
        require(listener.told == old.told);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    Listener listener;
    TranslationReader reader(text, listener);
    const bool complete = reader.read();
    require(reader.getStringCount() == listener.translations);
    require(complete == reader.getErrorMessage().isEmpty());
    // The message, two parts of the file, and the marks.
    require(reader.describeError().length() <= 40'000);
    std::size_t length = 0;
    for (const std::u16string& line : listener.told) {
        length += line.size();
    }
    // A string's key is told once more for each of its languages.
    require(length <= (size + 1) * (size + 1));

    Listener again;
    TranslationReader second(text, again);
    require(second.read() == complete && again.told == listener.told);
    if (complete && isPlain(text)) {
        compareWithXml(text, listener);
    }
    return 0;
}
