// The module in a program that is built on the framework: found in a folder, remembered in the settings, started as a
// service by the reference host's context, and stopped.
#include "appservices/defaults/FGlobalDefaultPool.h"
#include "components/FServiceManager.h"
#include "components/HostContext.h"
#include "host/program/Application.h"
#include "persistence/paths/FNPath.h"
#include "platform/NativePath.h"
#include "support/ScratchFolder.h"
#include "support/SettingsFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

namespace tessera::acceptance {
namespace {

constexpr FUIDBytes kService = "{973C3773-AC41-4593-BDF4-89C768F4BF5A}"_uid;

// One run of the program, with the settings that the last one has saved.
class ProgramRun {
public:
    ProgramRun() {
        pool_->load();
        pool_->restore();
        registry_->setDefaults(pool_.get());
        registry_->acceptCategory("Service");
        services_.addCategory("Service", registry_.get());
        host::ApplicationSettings settings;
        settings.out = &output_;
        host_ = std::make_unique<host::Application>(settings);
        setHostContext(host_->context().unknown());
    }
    ~ProgramRun() { setHostContext(nullptr); }

    int scan(const testing_support::ScratchFolder& folder) {
        const auto text = platform::fromNativePath(folder.path().string());
        return registry_->scanFolder(FNPath(FStringRef(text->c_str()), PathKind::folder));
    }
    FModuleBase* module() { return registry_->getModule(0); }
    bool knowsService() { return registry_->getComponent(kService) != nullptr; }
    bool isAvailable() { return registry_->getComponent(kService)->isAvailable(); }
    int start() {
        host_->core()->watch->setLife(host::GuestLife::running);
        return services_.start();
    }
    void stop() {
        services_.stop();
        host_->core()->watch->setLife(host::GuestLife::terminated);
        host_->core()->watch->bury();
    }
    bool save() { return pool_->save(FGlobalDefaultPool::RunSavers::yes); }
    std::string commands() {
        output_.str("");
        host_->showCommands();
        return output_.str();
    }
    std::vector<std::string> misuses() { return host_->core()->watch->misuses(); }

private:
    std::ostringstream output_;
    FRefPtr<FGlobalDefaultPool> pool_ = FRefPtr<FGlobalDefaultPool>::adopt(new FGlobalDefaultPool);
    FRefPtr<FComponentRegistry> registry_ = FRefPtr<FComponentRegistry>::adopt(new FComponentRegistry);
    std::unique_ptr<host::Application> host_;
    FServiceManager services_;
};

class ModuleService : public testing::Test {
protected:
    ModuleService() { std::filesystem::copy_file(TESX_MODULE_FILE, folder_ / "TesseraExchange.shlb"); }
    testing_support::ScratchFolder folder_;
    test::SettingsFolder settings_;
};

TEST_F(ModuleService, IsFoundStartedAndStopped) {
    ProgramRun run;
    ASSERT_EQ(run.scan(folder_), 1);
    ASSERT_TRUE(run.knowsService());
    EXPECT_EQ(run.start(), 1);
    EXPECT_NE(run.commands().find("Edit in Tessera"), std::string::npos) << run.commands();
    run.stop();
    EXPECT_EQ(run.commands().find("Edit in Tessera"), std::string::npos);
    EXPECT_EQ(run.misuses(), std::vector<std::string>{});
}

TEST_F(ModuleService, IsNotLoadedByTheNextRunUntilItIsStarted) {
    {
        ProgramRun first;
        ASSERT_EQ(first.scan(folder_), 1);
        ASSERT_TRUE(first.save());
    }
    ProgramRun second;
    ASSERT_EQ(second.scan(folder_), 1);
    ASSERT_TRUE(second.knowsService());
    EXPECT_FALSE(second.module()->isLoaded());
    EXPECT_EQ(second.start(), 1);
    EXPECT_TRUE(second.module()->isLoaded());
    second.stop();
    EXPECT_EQ(second.misuses(), std::vector<std::string>{});
}

TEST_F(ModuleService, WithoutAHostItIsMarkedUnavailable) {
    ProgramRun run;
    ASSERT_EQ(run.scan(folder_), 1);
    setHostContext(nullptr);
    EXPECT_EQ(run.start(), 0);
    EXPECT_FALSE(run.isAvailable());
    run.stop();
}

} // namespace
} // namespace tessera::acceptance
