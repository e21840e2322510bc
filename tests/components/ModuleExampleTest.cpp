// The example of docs/file-formats.md is what is remembered of our own module.
#include "appservices/defaults/FGlobalDefaultPool.h"
#include "appservices/defaults/GroupFileName.h"
#include "components/ComponentDoubles.h"
#include "components/FModule.h"
#include "components/ModuleRecord.h"
#include "support/SettingsFolder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

namespace tessera {
namespace {

constexpr char kGroup[] = "Components\\Module Cache\\\\opt\\audio\\TesseraExchange.shlb";

// The block behind the mark, with the line ends of a document; empty without one.
std::string example() {
    std::ifstream file(FILE_FORMATS, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    const std::string start = "<!-- example: module -->\n```xml\n";
    const std::size_t found = text.find(start);
    if (found == std::string::npos) {
        return {};
    }
    const std::size_t from = found + start.size();
    std::string result;
    for (const char c : text.substr(from, text.find("```", from) - from)) {
        result += c == '\n' ? "\r\n" : std::string(1, c);
    }
    return result;
}

TEST(ModuleExample, IsWhatOurModuleSaysAndIsWrittenAsItStands) {
    const test::SettingsFolder settings;
    const std::string file = std::string("Defaults/") + groupFileName(kGroup).text8() + ".xml";
    settings.scratch().write(file, example());
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
    EXPECT_EQ(settings.scratch().read(file), example());
}

} // namespace
} // namespace tessera
