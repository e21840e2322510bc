// The example of docs/file-formats.md is what is remembered of our own module.
#include "appservices/defaults/FGlobalDefaultPool.h"
#include "appservices/defaults/GroupFileName.h"
#include "components/ComponentDoubles.h"
#include "components/FModule.h"
#include "components/ModuleRecord.h"
#include "support/PageExample.h"
#include "support/SettingsFolder.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

using testing_support::pageDocument;

constexpr char kGroup[] = "Components\\Module Cache\\\\opt\\audio\\TesseraExchange.shlb";

TEST(ModuleExample, IsWhatOurModuleSaysAndIsWrittenAsItStands) {
    const test::SettingsFolder settings;
    const std::string file = std::string("Defaults/") + groupFileName(kGroup).text8() + ".xml";
    settings.scratch().write(file, pageDocument("module"));
    const auto pool = FRefPtr<FGlobalDefaultPool>::adopt(new FGlobalDefaultPool);
    pool->setFiles(FGlobalDefaultPool::Files::split);
    pool->load();
    pool->restore();
    FDefaults* group = pool->getGroup(kGroup, FDefaults::kNoVersion, IDefaultPool::Missing::left);
    ASSERT_NE(group, nullptr);

    const auto path = test::nativePath(TESX_MODULE);
    FModule module(path.get());
    IModuleFactory* factory = module.getFactory(true);
    ASSERT_NE(factory, nullptr);
    ModuleRecord told;
    ModuleRecord remembered;
    ASSERT_TRUE(describeModule(*factory, told));
    ASSERT_TRUE(readModuleRecord(*group, remembered));
    ASSERT_EQ(told.classes.size(), 1u);
    ASSERT_EQ(remembered.classes.size(), 1u);
    EXPECT_EQ(std::memcmp(&told.info, &remembered.info, sizeof told.info), 0)
        << told.info.url << " " << told.info.email;
    EXPECT_EQ(std::memcmp(&told.classes[0], &remembered.classes[0], sizeof(ClassInfoWide)), 0);

    ASSERT_TRUE(writeModuleRecord(*group, told));
    EXPECT_TRUE(pool->save(FGlobalDefaultPool::RunSavers::no));
    EXPECT_EQ(settings.scratch().read(file), pageDocument("module"));
}

} // namespace
} // namespace tessera
