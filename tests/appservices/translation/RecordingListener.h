// RecordingListener: writes down what a reader of translation files tells, one line each, and can end the reading.
#pragma once

#include "appservices/translation/ITranslationListener.h"
#include "foundation/text/FString.h"

#include <string>
#include <vector>

namespace tessera::test {

class RecordingListener final : public ITranslationListener {
public:
    std::vector<std::u16string> told;
    std::vector<std::int32_t> lines;
    // The translation, counted from 1, at which the listener has had enough.
    int endsAt = 0;
    std::string unwanted;

    void forget() {
        told.clear();
        lines.clear();
    }
    void addLanguage(std::string_view code, std::u16string_view name) override {
        told.push_back(u"language " + widen(code) + u": " + std::u16string(name));
    }
    bool wants(std::string_view code) const override { return code != unwanted; }
    FResult addTranslation(std::u16string_view key, std::string_view code, std::u16string_view text, std::int32_t line,
                           FString& error) override {
        told.push_back(std::u16string(key) + u" in " + widen(code) + u": " + std::u16string(text));
        lines.push_back(line);
        if (static_cast<int>(lines.size()) != endsAt) {
            return kResultOk;
        }
        error.assign8("enough");
        return kResultFailure;
    }

private:
    static std::u16string widen(std::string_view ascii) { return {ascii.begin(), ascii.end()}; }
};

} // namespace tessera::test
