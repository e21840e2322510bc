#include "host/text/Message.h"

#include "host/TranslatedHost.h"

#include <limits>

namespace tessera::host {
namespace {

class MessageTest : public TranslatedHost {
protected:
    // A file with one German text.
    void translateAs(const std::string& key, const std::string& german) {
        std::ofstream(folders_.module.path() / "translation.xml")
            << "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<Translation><LanguageTable>"
               "<language key=\"de\">Deutsch</language></LanguageTable><StringTable><String key=\""
            << key << "\"><de>" << german << "</de></String></StringTable></Translation>";
        speak("de");
    }
};

TEST_F(MessageTest, ValuesTakeThePlacesOfTheirConversions) {
    static constinit TranslatedText text{u"%d of %s, %.3f s (%f) 100%%"};
    EXPECT_EQ(message(text, 3, "song.wav", 2.0005, 7.0), "3 of song.wav, 2.001 s (7) 100%");
    EXPECT_EQ(message(text, std::size_t(3), std::string("ü"), -1.0, 0.4), "3 of ü, -1.000 s (0) 100%");
}

TEST_F(MessageTest, BytesOfAValueAreLeftAlone) {
    static constinit TranslatedText text{u"%s"};
    EXPECT_EQ(message(text, "%d \xff"), "%d \xff");
}

TEST_F(MessageTest, TheLargestNumbersFit) {
    static constinit TranslatedText text{u"%d %.9f"};
    const std::string result =
        message(text, std::numeric_limits<std::int64_t>::min(), -std::numeric_limits<double>::max());
    EXPECT_EQ(result.substr(0, 31), "-9223372036854775808 -179769313");
    EXPECT_EQ(result.substr(result.size() - 10), ".000000000");
}

TEST_F(MessageTest, ATextWithValuesThatItDoesNotTakeIsShownAsItStands) {
    static constinit TranslatedText text{u"%d events%"};
    EXPECT_EQ(message(text, "many"), "%d events%");
    EXPECT_EQ(message(text), "%d events%");
    EXPECT_EQ(message(text, 1), "%d events%");
}

TEST_F(MessageTest, TheTranslationIsUsedAndKeepsThePoint) {
    static constinit TranslatedText text{u"wait %.1f s"};
    translateAs("wait %.1f s", "%.2f s warten, größer");
    EXPECT_EQ(message(text, 1.5), "1.50 s warten, größer");
}

TEST_F(MessageTest, ATranslationThatTakesOtherValuesIsPassedOver) {
    static constinit TranslatedText tooMany{u"%d tracks"};
    translateAs("%d tracks", "%d Spuren %d");
    EXPECT_EQ(message(tooMany, 2), "2 tracks");
    static constinit TranslatedText tooFew{u"%s at %s"};
    translateAs("%s at %s", "bei %s");
    EXPECT_EQ(message(tooFew, "a", "b"), "a at b");
    static constinit TranslatedText wide{u"%d bars"};
    translateAs("%d bars", "%999999999d Takte");
    EXPECT_EQ(message(wide, 4), "4 bars");
}

} // namespace
} // namespace tessera::host
