#include "platform/Languages.h"
#include "support/ScopedEnvironment.h"
#include "support/ScopedLocale.h"

#include <gtest/gtest.h>

namespace tessera::platform {
namespace {

using testing_support::ScopedEnvironment;

class LanguagesTest : public testing::Test {
protected:
    ScopedEnvironment all_{"LC_ALL", ""};
    ScopedEnvironment messages_{"LC_MESSAGES", ""};
    ScopedEnvironment measures_{"LC_MEASUREMENT", ""};
    ScopedEnvironment lang_{"LANG", ""};
};

TEST_F(LanguagesTest, TheSystemSpeaksWhatLangSays) {
    const ScopedEnvironment all("LC_ALL", "fr_FR.UTF-8");
    const ScopedEnvironment lang("LANG", "de_DE.UTF-8");
    EXPECT_EQ(systemLanguage(), 0x07);
}

TEST_F(LanguagesTest, TheUserReadsTheFirstOfThreeThatSaysSomething) {
    EXPECT_EQ(userLanguage(), 0);
    const ScopedEnvironment lang("LANG", "de_DE.UTF-8");
    EXPECT_EQ(userLanguage(), 0x07);
    const ScopedEnvironment messages("LC_MESSAGES", "it_IT");
    EXPECT_EQ(userLanguage(), 0x10);
    const ScopedEnvironment all("LC_ALL", "fr");
    EXPECT_EQ(userLanguage(), 0x0C);
    EXPECT_EQ(systemLanguage(), 0x07);
}

struct NamedLocale {
    const char* locale;
    std::uint16_t number;
};

TEST_F(LanguagesTest, TheFirstTwoLettersName) {
    constexpr NamedLocale kLocales[] = {
        {"en_GB.UTF-8", 0x09}, {"ja_JP.eucJP", 0x11}, {"nb_NO", 0x14}, {"nn_NO", 0x14},       {"no", 0x14},
        {"sr_RS@latin", 0x1A}, {"hr_HR", 0x1A},       {"pt_PT", 0x16}, {"pt_BR.UTF-8", 0x16}, {"zh_TW", 0x04},
        {"ko.UTF-8", 0x12},    {"de@euro", 0x07},     {"C", 0},        {"POSIX", 0},          {"C.UTF-8", 0},
        {"xx_XX", 0},          {"arn_CL", 0},         {"d", 0},        {"DE_DE", 0},          {"_de", 0}};
    for (const NamedLocale& row : kLocales) {
        const ScopedEnvironment lang("LANG", row.locale);
        EXPECT_EQ(systemLanguage(), row.number) << row.locale;
        EXPECT_EQ(userLanguage(), row.number) << row.locale;
    }
}

TEST_F(LanguagesTest, ALocaleThatIsNotInstalledHasNoMeasures) {
    const ScopedEnvironment all("LC_ALL", "xx_XX.UTF-8");
    EXPECT_EQ(usualMeasures(), Measures::unknown);
}

TEST_F(LanguagesTest, WithoutALocaleMeasuresAreMetric) {
    const ScopedEnvironment all("LC_ALL", "C");
    EXPECT_EQ(usualMeasures(), Measures::metric);
}

// Made here, since a machine need not have any locale but "C".
TEST_F(LanguagesTest, MeasuresAreThoseOfTheLocale) {
    const test::ScopedLocale locale("en_US", "UTF-8");
    if (!locale.isUsable()) {
        GTEST_SKIP() << "the sources of locales aren't installed";
    }
    const ScopedEnvironment measures("LC_MEASUREMENT", locale.name());
    EXPECT_EQ(usualMeasures(), Measures::american);
}

} // namespace
} // namespace tessera::platform
