// The module as a file: what it exports, how it describes itself, whom it works for, and that it comes and goes.
#include "acceptance/ExportedNames.h"
#include "acceptance/ModuleFixture.h"

#include "foundation/object/FRefPtr.h"
#include "platform/DynamicLibrary.h"
#include "shell/hostapi/ClassInfo.h"
#include "shell/hostapi/ClassInfoEx.h"
#include "shell/hostapi/ClassInfoWide.h"
#include "shell/hostapi/FactoryInfo.h"
#include "shell/hostapi/IModuleFactory3.h"
#include "shell/hostapi/ModuleExports.h"

#include <algorithm>
#include <cstring>
#include <set>

namespace tessera::acceptance {
namespace {

class Module : public ModuleFixture {
protected:
    IModuleFactory* factory() {
        if (!library_) {
            std::string error;
            library_ = platform::DynamicLibrary::load(TESX_MODULE_FILE, &error);
            EXPECT_TRUE(library_) << error;
        }
        return reinterpret_cast<GetPluginFactoryFunction>(library_->symbol(kGetPluginFactoryName))();
    }

    std::optional<platform::DynamicLibrary> library_;
};

TEST_F(Module, ExportsItsThreeFunctionsAndNothingElse) {
    EXPECT_EQ(exportedNames(TESX_MODULE_FILE), (std::set<std::string>{"ExitDll", "GetPluginFactory", "InitDll"}));
}

TEST_F(Module, EveryCallForTheFactoryGivesItOneMoreReference) {
    IModuleFactory* const first = factory();
    IModuleFactory* const second = factory();
    EXPECT_EQ(first, second);
    EXPECT_EQ(first->addRef(), 3U);
    EXPECT_EQ(first->release(), 2U);
    EXPECT_EQ(first->release(), 1U);
    EXPECT_EQ(first->release(), 0U);
    EXPECT_TRUE(reinterpret_cast<InitDllFunction>(library_->symbol(kInitDllName))());
    EXPECT_TRUE(reinterpret_cast<ExitDllFunction>(library_->symbol(kExitDllName))());
}

TEST_F(Module, DescribesItselfInRecords) {
    const auto offered = FRefPtr<IModuleFactory>::adopt(factory());
    FactoryInfo info;
    EXPECT_EQ(offered->describeFactory(&info), kResultOk);
    EXPECT_STREQ(info.vendor, "Marlgrove Audio Works GmbH");
    EXPECT_EQ(info.flags, 0x10);
    EXPECT_EQ(std::string(info.email).rfind("mailto:", 0), 0U);
    EXPECT_EQ(offered->classCount(), 1);

    const std::uint8_t classId[16] = {0x73, 0x37, 0x3C, 0x97, 0x41, 0xAC, 0x93, 0x45,
                                      0xBD, 0xF4, 0x89, 0xC7, 0x68, 0xF4, 0xBF, 0x5A};
    ClassInfo plain;
    EXPECT_EQ(offered->describeClass(0, &plain), kResultOk);
    EXPECT_EQ(std::memcmp(plain.classId.bytes, classId, 16), 0);
    EXPECT_EQ(plain.cardinality, 1);
    EXPECT_STREQ(plain.category, "Service");
    EXPECT_STREQ(plain.name, "Tessera Exchange");
    EXPECT_EQ(offered->describeClass(-1, &plain), kInvalidArgument);
    EXPECT_EQ(offered->describeClass(1, &plain), kInvalidArgument);
    EXPECT_EQ(offered->describeClass(0, nullptr), kInvalidArgument);

    const FRefPtr<IModuleFactory3> wide = queryFor<IModuleFactory3>(offered.get());
    ASSERT_TRUE(wide);
    ClassInfoEx longer;
    EXPECT_EQ(wide->describeClassEx(0, &longer), kResultOk);
    EXPECT_STREQ(longer.version, "1.5.10.6");
    EXPECT_EQ(longer.classFlags, 0U);
    EXPECT_STREQ(longer.vendor, "");
    ClassInfoWide text16;
    EXPECT_EQ(wide->describeClassWide(0, &text16), kResultOk);
    EXPECT_EQ(std::u16string(text16.name), u"Tessera Exchange");
    EXPECT_EQ(std::u16string(text16.version), u"1.5.10.6");
    EXPECT_EQ(wide->attachHost(nullptr), kResultOk);
    EXPECT_EQ(wide->classCount(), 1);
}

TEST_F(Module, AnUnknownClassOrInterfaceGivesNothing) {
    const auto offered = FRefPtr<IModuleFactory>::adopt(factory());
    ClassInfo info;
    offered->describeClass(0, &info);
    void* object = this;
    EXPECT_EQ(offered->createObject(IModuleFactory::iid, IBaseUnknown::iid, &object), kNoInterface);
    EXPECT_EQ(object, nullptr);
    object = this;
    EXPECT_EQ(offered->createObject(info.classId, "{01234567-89AB-CDEF-0123-456789ABCDEF}"_uid, &object), kNoInterface);
    EXPECT_EQ(object, nullptr);
}

struct AdmissionRow {
    const char* name;
    const char* version;
    bool isAdmitted;
};

TEST_F(Module, WorksForTheHostsThatItKnows) {
    const AdmissionRow rows[] = {
        {"Harrow", "8.5.9", false},
        {"Harrow", "8.5.10", true},
        {"Harrow Lite", "8.5.10.1", true},
        {"Harrow Mid", "9.0.0.0", true},
        {"harrow", "9.0.0", false},
        {"Ostrey", "7.1.20", true},
        {"Ostrey", "7.1.19", false},
        {"Tessera Lite", "8.9.9", false},
        {"Tessera Max", "Version 9.0.0 x64", true},
        {"Harrow", "none", false},
        {"", "9.0.0", false},
    };
    for (const AdmissionRow& row : rows) {
        SCOPED_TRACE(std::string(row.name) + " " + row.version);
        const auto application = makeHost(row.name, row.version);
        const host::Complaint complaint = application->loadModule(TESX_MODULE_FILE);
        EXPECT_EQ(complaint.empty(), row.isAdmitted) << complaint;
        EXPECT_EQ(application->commands().commands().size(), row.isAdmitted ? 1U : 0U);
        EXPECT_EQ(application->core()->watch->misuses(), std::vector<std::string>{});
    }
}

TEST_F(Module, EntersItsCommandAndTakesEverythingOutAgain) {
    startModule();
    ASSERT_EQ(host().commands().commands().size(), 1U);
    const host::HostCommand& command = host().commands().commands().front();
    EXPECT_EQ(command.group, "Audio");
    EXPECT_EQ(command.title, "Edit in Tessera");
    EXPECT_EQ(command.category, "Tessera Exchange");
    EXPECT_EQ(command.name, "Edit in Tessera");
    EXPECT_TRUE(command.enabled);
    EXPECT_EQ(host().commandTarget().handlerCount(), 1U);
    EXPECT_EQ(host().driver().clientCount(), 1U);
    EXPECT_EQ(host().exports().listenerCount(), 1U);
    EXPECT_GE(host().idle().clientCount(), 1U);

    ASSERT_EQ(host().stopModule(), "");
    EXPECT_TRUE(host().commands().commands().empty());
    EXPECT_EQ(host().commandTarget().handlerCount(), 0U);
    EXPECT_EQ(host().driver().clientCount(), 0U);
    EXPECT_EQ(host().exports().listenerCount(), 0U);
    EXPECT_EQ(host().idle().clientCount(), 0U);
    EXPECT_EQ(host().registry().observerCount(), 0U);
}

TEST_F(Module, StartsAndStopsAnyNumberOfTimes) {
    startModule();
    for (int round = 0; round < 5; ++round) {
        ASSERT_EQ(host().stopModule(), "");
        EXPECT_EQ(host().idle().clientCount(), 0U);
        ASSERT_EQ(host().startModule(), "");
        EXPECT_EQ(host().commands().commands().size(), 1U);
        host().turn();
    }
}

TEST_F(Module, LeavesItsRecordForThePeerWhileItRuns) {
    const std::filesystem::path record =
        std::filesystem::temp_directory_path() / "Marlgrove/ServiceDiscovery/com.marlgrove.tesx";
    startModule();
    EXPECT_TRUE(std::filesystem::exists(record));
    ASSERT_EQ(host().stopModule(), "");
    EXPECT_FALSE(std::filesystem::exists(record));
}

struct ServiceRow {
    const char* name;
    const FUIDBytes& uid;
};

// A host that lacks a service is poorer, not broken.
TEST_F(Module, WorksWithoutAnyOneOfTheHostsServices) {
    const ServiceRow rows[] = {
        {"ISelection", ISelection::iid},
        {"IUndoStack", IUndoStack::iid},
        {"ITransport", ITransport::iid},
        {"ICommandTable", ICommandTable::iid},
        {"ICommandTarget", ICommandTarget::iid},
        {"IDriverArbiter", IDriverArbiter::iid},
        {"IIdleHost", IIdleHost::iid},
        {"IAlertHost", IAlertHost::iid},
        {"IExportHost", IExportHost::iid},
        {"IProjectList", IProjectList::iid},
        {"IObjectRegistry", IObjectRegistry::iid},
    };
    for (const ServiceRow& row : rows) {
        SCOPED_TRACE(row.name);
        const auto application = makeHost();
        application->context().removeService(row.uid);
        EXPECT_EQ(application->loadModule(TESX_MODULE_FILE), "");
        EXPECT_EQ(application->newProject(path("project"), {}), "");
        application->edit();
        application->run(0.02);
        EXPECT_EQ(application->closeProject(), "");
        EXPECT_EQ(application->stopModule(), "");
        EXPECT_EQ(application->core()->watch->misuses(), std::vector<std::string>{});
    }
}

} // namespace
} // namespace tessera::acceptance
