// The examples of docs/file-formats.md are what the settings write and read.
#include "AutoSaverDouble.h"
#include "DefaultsFixture.h"
#include "appservices/defaults/GroupFileName.h"
#include "support/PageExample.h"

#include <string>

namespace tessera::test {
namespace {

using testing_support::pageDocument;

class Browser : public AutoSaverDouble {
public:
    Browser() : AutoSaverDouble("Browser") {}

    bool storeAttributes(FAttributes& attributes) const override { return attributes.setInt("width", width); }
    bool restoreAttributes(FAttributes& attributes) override { return attributes.getInt("width", width); }

    std::int64_t width = 0;
};

class SettingsExamples : public DefaultsFixture {
protected:
    static void expectMixer(FGlobalDefaultPool& pool) {
        const FDefaults* mixer = pool.getGroup("Mixer", 2, kLeft);
        ASSERT_NE(mixer, nullptr);
        std::int64_t channels = 0;
        double zoom = 0;
        EXPECT_TRUE(mixer->getInt("channels", channels) && channels == 24);
        EXPECT_TRUE(mixer->getFloat("zoom", zoom) && zoom == 0.75);
    }

    Browser browser_;
};

TEST_F(SettingsExamples, TheOneFileIsReadAndWrittenAsItStands) {
    const std::string text = pageDocument("Defaults.xml");
    user_.write("Defaults.xml", text);
    const auto pool = newPool(Files::one);
    pool->registerAutoSaver(&browser_);
    ASSERT_TRUE(pool->load());
    EXPECT_FALSE(pool->needsExtraction());
    pool->restore();
    expectMixer(*pool);
    EXPECT_EQ(browser_.width, 320);
    FString path;
    EXPECT_TRUE(pool->getString("Default Paths", "Audio", path));
    EXPECT_TRUE(path == u"C:\\Music\\take 1.wav");
    EXPECT_TRUE(pool->save(RunSavers::no));
    EXPECT_EQ(user_.read("Defaults.xml"), text);
}

TEST_F(SettingsExamples, TheFilesOfOneGroupEachAreReadAndWrittenAsTheyStand) {
    const std::string file = std::string("Defaults/") + groupFileName("Mixer").text8() + ".xml";
    EXPECT_EQ(file, "Defaults/709F0E10529E0ED7B4840B3BFEB5B58E.xml");
    user_.write(file, pageDocument("group"));
    user_.write("Defaults/AutoSaver.xml", pageDocument("AutoSaver.xml"));
    const auto pool = newPool(Files::split);
    pool->registerAutoSaver(&browser_);
    ASSERT_TRUE(pool->load());
    pool->restore();
    expectMixer(*pool);
    EXPECT_EQ(browser_.width, 320);
    EXPECT_TRUE(pool->save(RunSavers::no));
    EXPECT_EQ(user_.read(file), pageDocument("group"));
    EXPECT_EQ(user_.read("Defaults/AutoSaver.xml"), pageDocument("AutoSaver.xml"));
}

} // namespace
} // namespace tessera::test
