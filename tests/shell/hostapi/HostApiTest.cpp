// Every operation stands in the slot that hosts call it by, under the identifier that they ask for.

#include "shell/hostapi/HostApi.h"
#include "support/SlotOf.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <iterator>

namespace tessera {
namespace {

using test::slotOf;

struct SlotRow {
    const char* operation;
    std::size_t slot;
    std::size_t expected;
};

TEST(HostApi, EveryOperationStandsInItsSlot) {
    const SlotRow rows[] = {
        {"IBaseUnknown.queryInterface", slotOf(&IBaseUnknown::queryInterface), 0},
        {"IBaseUnknown.addRef", slotOf(&IBaseUnknown::addRef), 1},
        {"IBaseUnknown.release", slotOf(&IBaseUnknown::release), 2},
        {"IModuleFactory.describeFactory", slotOf(&IModuleFactory::describeFactory), 3},
        {"IModuleFactory.classCount", slotOf(&IModuleFactory::classCount), 4},
        {"IModuleFactory.describeClass", slotOf(&IModuleFactory::describeClass), 5},
        {"IModuleFactory.createObject", slotOf(&IModuleFactory::createObject), 6},
        {"IModuleFactory2.describeClassEx", slotOf(&IModuleFactory2::describeClassEx), 7},
        {"IModuleFactory3.describeClassWide", slotOf(&IModuleFactory3::describeClassWide), 8},
        {"IModuleFactory3.attachHost", slotOf(&IModuleFactory3::attachHost), 9},
        {"IPlugin.initialize", slotOf(&IPlugin::initialize), 3},
        {"IPlugin.terminate", slotOf(&IPlugin::terminate), 4},
        {"ICommandHandler.checkOrExecute", slotOf(&ICommandHandler::checkOrExecute), 3},
        {"IExportListener.prepareExport", slotOf(&IExportListener::prepareExport), 3},
        {"IExportListener.exportFinished", slotOf(&IExportListener::exportFinished), 4},
        {"IDriverClient.suspend", slotOf(&IDriverClient::suspend), 3},
        {"IDriverClient.reserved4", slotOf(&IDriverClient::reserved4), 4},
        {"IIdleClient.onIdle", slotOf(&IIdleClient::onIdle), 3},
        {"IUndoStep.perform", slotOf(&IUndoStep::perform), 3},
        {"IUndoStep.undo", slotOf(&IUndoStep::undo), 4},
        {"IUndoStep.redo", slotOf(&IUndoStep::redo), 5},
        {"IObjectObserver.update", slotOf(&IObjectObserver::update), 3},
        {"IProjectListListener.activated", slotOf(&IProjectListListener::activated), 3},
        {"IProjectListListener.deactivated", slotOf(&IProjectListListener::deactivated), 4},
        {"IProjectListListener.projectDeactivated", slotOf(&IProjectListListener::projectDeactivated), 5},
        {"IProjectListener.projectChanged", slotOf(&IProjectListener::projectChanged), 3},
        {"IHostServices.queryService", slotOf(&IHostServices::queryService), 3},
        {"IHostApplicationInfo.name", slotOf(&IHostApplicationInfo::name), 3},
        {"IHostApplicationInfo.version", slotOf(&IHostApplicationInfo::version), 4},
        {"ICommandTable.addCommand", slotOf(&ICommandTable::addCommand), 3},
        {"ICommandTable.removeCommands", slotOf(&ICommandTable::removeCommands), 4},
        {"ICommandTarget.enableCommand", slotOf(&ICommandTarget::enableCommand), 3},
        {"ICommandTarget.addHandler", slotOf(&ICommandTarget::addHandler), 5},
        {"ICommandTarget.removeHandler", slotOf(&ICommandTarget::removeHandler), 6},
        {"IDriverArbiter.addClient", slotOf(&IDriverArbiter::addClient), 3},
        {"IDriverArbiter.removeClient", slotOf(&IDriverArbiter::removeClient), 4},
        {"IDriverArbiter.requestRelease", slotOf(&IDriverArbiter::requestRelease), 5},
        {"IExportHost.addListener", slotOf(&IExportHost::addListener), 3},
        {"IExportHost.removeListener", slotOf(&IExportHost::removeListener), 4},
        {"IAlertHost.show", slotOf(&IAlertHost::show), 3},
        {"IIdleHost.addClient", slotOf(&IIdleHost::addClient), 4},
        {"IIdleHost.removeClient", slotOf(&IIdleHost::removeClient), 5},
        {"IProjectOpener.open", slotOf(&IProjectOpener::open), 3},
        {"ITransport.locate", slotOf(&ITransport::locate), 9},
        {"ITransport.parameter", slotOf(&ITransport::parameter), 31},
        {"ITimeValue.setValue", slotOf(&ITimeValue::setValue), 3},
        {"IHostFile.path", slotOf(&IHostFile::path), 3},
        {"IHostFile.setPath", slotOf(&IHostFile::setPath), 4},
        {"IHostFile.name", slotOf(&IHostFile::name), 6},
        {"IHostFile.append", slotOf(&IHostFile::append), 9},
        {"IHostFile.makeUnique", slotOf(&IHostFile::makeUnique), 13},
        {"IHostFile.clone", slotOf(&IHostFile::clone), 14},
        {"IAudioStream.open", slotOf(&IAudioStream::open), 3},
        {"IAudioStream.attach", slotOf(&IAudioStream::attach), 5},
        {"IAudioStream.frames", slotOf(&IAudioStream::frames), 7},
        {"IAudioStream.sampleRate", slotOf(&IAudioStream::sampleRate), 8},
        {"IAudioStream.bytesPerFrame", slotOf(&IAudioStream::bytesPerFrame), 12},
        {"IAudioStream.bitsPerSample", slotOf(&IAudioStream::bitsPerSample), 14},
        {"IAudioStream.channels", slotOf(&IAudioStream::channels), 18},
        {"IAudioStream.read", slotOf(&IAudioStream::read), 24},
        {"IAudioStream.write", slotOf(&IAudioStream::write), 25},
        {"IAudioStream.seek", slotOf(&IAudioStream::seek), 26},
        {"IAudioClip.file", slotOf(&IAudioClip::file), 3},
        {"IAudioClip.channels", slotOf(&IAudioClip::channels), 7},
        {"IAudioClip.sampleRate", slotOf(&IAudioClip::sampleRate), 8},
        {"IAudioClip.frames", slotOf(&IAudioClip::frames), 9},
        {"IAudioClip.bitsPerSample", slotOf(&IAudioClip::bitsPerSample), 11},
        {"IAudioClip.stream", slotOf(&IAudioClip::stream), 13},
        {"IAudioClipAccess.bind", slotOf(&IAudioClipAccess::bind), 3},
        {"IAudioClipAccess.failed", slotOf(&IAudioClipAccess::failed), 4},
        {"IAudioPart.clip", slotOf(&IAudioPart::clip), 3},
        {"IAudioPart.bind", slotOf(&IAudioPart::bind), 4},
        {"IAudioWriterFactory.setFile", slotOf(&IAudioWriterFactory::setFile), 5},
        {"IAudioWriterFactory.setSampleKind", slotOf(&IAudioWriterFactory::setSampleKind), 6},
        {"IAudioWriterFactory.setChannels", slotOf(&IAudioWriterFactory::setChannels), 7},
        {"IAudioWriterFactory.setSampleRate", slotOf(&IAudioWriterFactory::setSampleRate), 8},
        {"IAudioWriterFactory.setBitsPerSample", slotOf(&IAudioWriterFactory::setBitsPerSample), 9},
        {"IAudioWriterFactory.create", slotOf(&IAudioWriterFactory::create), 10},
        {"IProjectObject.state", slotOf(&IProjectObject::state), 4},
        {"IProjectObject.duplicate", slotOf(&IProjectObject::duplicate), 5},
        {"IProjectObject.timelineStart", slotOf(&IProjectObject::timelineStart), 20},
        {"IProjectObject.place", slotOf(&IProjectObject::place), 23},
        {"IProjectObject.timelineEnd", slotOf(&IProjectObject::timelineEnd), 24},
        {"IProjectObject.clipOffset", slotOf(&IProjectObject::clipOffset), 26},
        {"IProjectObject.parent", slotOf(&IProjectObject::parent), 29},
        {"IAudioEvent.audioPart", slotOf(&IAudioEvent::audioPart), 3},
        {"IAudioEvent.setAudioPart", slotOf(&IAudioEvent::setAudioPart), 4},
        {"IEventRestrictions.restriction3", slotOf(&IEventRestrictions::restriction3), 3},
        {"IEventRestrictions.restriction4", slotOf(&IEventRestrictions::restriction4), 4},
        {"IEventRestrictions.restriction5", slotOf(&IEventRestrictions::restriction5), 5},
        {"IEventRestrictions.restriction8", slotOf(&IEventRestrictions::restriction8), 8},
        {"ISelection.currentScope", slotOf(&ISelection::currentScope), 3},
        {"ISelection.selectKind", slotOf(&ISelection::selectKind), 5},
        {"ISelection.count", slotOf(&ISelection::count), 6},
        {"ISelection.item", slotOf(&ISelection::item), 7},
        {"IProjectList.addListener", slotOf(&IProjectList::addListener), 6},
        {"IProjectList.removeListener", slotOf(&IProjectList::removeListener), 7},
        {"IProject.folder", slotOf(&IProject::folder), 9},
        {"IProject.file", slotOf(&IProject::file), 10},
        {"IProject.pool", slotOf(&IProject::pool), 11},
        {"IProject.root", slotOf(&IProject::root), 12},
        {"IProject.positionOf", slotOf(&IProject::positionOf), 16},
        {"IProject.addProjectListener", slotOf(&IProject::addProjectListener), 19},
        {"IProject.removeProjectListener", slotOf(&IProject::removeProjectListener), 20},
        {"IProjectTimeline.itemStart", slotOf(&IProjectTimeline::itemStart), 5},
        {"IProjectTimeline.itemRange", slotOf(&IProjectTimeline::itemRange), 9},
        {"IPool.add", slotOf(&IPool::add), 7},
        {"IEventOwner.trackOf", slotOf(&IEventOwner::trackOf), 16},
        {"IObjectRegistry.addObserver", slotOf(&IObjectRegistry::addObserver), 3},
        {"IObjectRegistry.removeObserver", slotOf(&IObjectRegistry::removeObserver), 4},
        {"IObjectTest.compare", slotOf(&IObjectTest::compare), 3},
        {"IUndoStack.commit", slotOf(&IUndoStack::commit), 4},
        {"IUndoStack.addEvent", slotOf(&IUndoStack::addEvent), 5},
        {"IUndoStack.removeEvent", slotOf(&IUndoStack::removeEvent), 6},
        {"IUndoTarget.addStep", slotOf(&IUndoTarget::addStep), 13},
        {"IAttributeList.set", slotOf(&IAttributeList::set), 5},
        {"IMediaObject.hasProperty", slotOf(&IMediaObject::hasProperty), 3},
        {"IMediaObject.attribute", slotOf(&IMediaObject::attribute), 7},
        {"IMediaAttributes.itemId", slotOf(&IMediaAttributes::itemId), 3},
        {"IMediaItemList.count", slotOf(&IMediaItemList::count), 5},
        {"IMediaItemList.item", slotOf(&IMediaItemList::item), 6},
        {"IMediaItemList.isSelected", slotOf(&IMediaItemList::isSelected), 7},
        {"IStreamEditTarget.replaceFrames", slotOf(&IStreamEditTarget::replaceFrames), 10},
    };
    for (const SlotRow& row : rows) {
        EXPECT_EQ(row.slot, row.expected) << row.operation;
    }
}

// In memory the first three groups stand lowest byte first, the other eight bytes as they are written.
std::array<std::uint8_t, 16> bytesOf(const char* braces) {
    unsigned first = 0;
    unsigned groups[2] = {};
    unsigned rest[8] = {};
    EXPECT_EQ(std::sscanf(braces, "{%8X-%4X-%4X-%2X%2X-%2X%2X%2X%2X%2X%2X}", &first, &groups[0], &groups[1], &rest[0],
                          &rest[1], &rest[2], &rest[3], &rest[4], &rest[5], &rest[6], &rest[7]),
              11)
        << braces;
    std::array<std::uint8_t, 16> bytes = {};
    for (std::size_t i = 0; i < 4; ++i) {
        bytes[i] = static_cast<std::uint8_t>(first >> (8 * i));
        bytes[4 + i] = static_cast<std::uint8_t>(groups[i / 2] >> (8 * (i % 2)));
    }
    std::copy(std::begin(rest), std::end(rest), bytes.begin() + 8);
    return bytes;
}

struct IdentifierRow {
    const char* name;
    const FUIDBytes& iid;
    const char* braces;
};

TEST(HostApi, IdentifiersStandInMemoryAsHostsCompareThem) {
    const IdentifierRow rows[] = {
        {"IBaseUnknown", IBaseUnknown::iid, "{00000000-0000-0000-C000-000000000046}"},
        {"IModuleFactory", IModuleFactory::iid, "{7A4D811C-5211-4A1F-AED9-D2EE0B43BF9F}"},
        {"IModuleFactory2", IModuleFactory2::iid, "{0007B650-F24B-4C0B-A464-EDB9F00B2ABB}"},
        {"IModuleFactory3", IModuleFactory3::iid, "{4555A2AB-C123-4E57-9B12-291036878931}"},
        {"ICommandHandler", ICommandHandler::iid, "{9FC17BEB-3A51-4077-A25A-7726D3D3D711}"},
        {"IDriverClient", IDriverClient::iid, "{19B9CB1D-A2B9-AD43-86C0-874BA552D944}"},
        {"IIdleClient", IIdleClient::iid, "{D70BBB58-C805-45B8-AB82-64180B673A84}"},
        {"IUndoStep", IUndoStep::iid, "{AC4023C3-7575-4B3C-BF81-70138CBD8C05}"},
        {"IHostServices", IHostServices::iid, "{EEC89683-80DB-4336-9177-273E138A763B}"},
        {"IHostApplicationInfo", IHostApplicationInfo::iid, "{A8E1A52A-8E24-416A-B959-21742443FB74}"},
        {"ICommandTable", ICommandTable::iid, "{A42A9119-161E-4547-98A2-6FB769140E24}"},
        {"ICommandTarget", ICommandTarget::iid, "{762F3F61-11D1-4115-92F9-7AC6F239460F}"},
        {"IDriverArbiter", IDriverArbiter::iid, "{CE482897-5CAD-5C40-844F-186F9830343F}"},
        {"IExportHost", IExportHost::iid, "{3AC77C2D-00C5-4B36-85A8-A395DA577AF3}"},
        {"IAlertHost", IAlertHost::iid, "{37BDB6A1-65FB-4994-9886-04549461A2BB}"},
        {"IIdleHost", IIdleHost::iid, "{9E871847-F1AB-4776-A06C-6F945D7FDD4D}"},
        {"IProjectOpener", IProjectOpener::iid, "{43B13CC1-1B75-4432-A09C-D9527C1DD0AC}"},
        {"ITransport", ITransport::iid, "{7E64890C-FA5C-4ECB-B37A-D80665A86C99}"},
        {"ITimeValue", ITimeValue::iid, "{938CFD58-0866-4BEB-AA58-09F39B4D4596}"},
        {"IUrlFactory", IUrlFactory::iid, "{0AF38EA1-40F2-4B14-965B-F97CA4FF94D1}"},
        {"IAudioClip", IAudioClip::iid, "{0251DA1B-82F7-43B1-9017-504B587B0623}"},
        {"IAudioClipAccess", IAudioClipAccess::iid, "{98ECBB42-93A1-4849-98FE-6F8C40EC22D3}"},
        {"IAudioClipFactory", IAudioClipFactory::iid, "{CB1EE990-BC4F-40C7-A0E0-1D1EE7551F55}"},
        {"IAudioWriterFactory", IAudioWriterFactory::iid, "{A03CBE81-E5DB-473E-A908-23686A34D4BF}"},
        {"IProjectObject", IProjectObject::iid, "{7A6F999F-BDBC-4BCC-AC40-3DABACE8A171}"},
        {"IAudioEvent", IAudioEvent::iid, "{21FFE452-D832-40D6-AE8B-6DB6AE400165}"},
        {"IEventRestrictions", IEventRestrictions::iid, "{E5E6482F-701F-964D-AF5E-795762CDFEE4}"},
        {"ISelection", ISelection::iid, "{05B21566-9B33-4363-AF1E-7C4B52D99238}"},
        {"IProjectList", IProjectList::iid, "{3D7C2813-8ABF-4AAE-A23A-11BF37214C36}"},
        {"IFolderNode", IFolderNode::iid, "{E34A31B4-ADCB-40BC-BCE6-4393CFBF48BF}"},
        {"IEventTrack", IEventTrack::iid, "{1A3A5B5E-AC16-424B-8AA2-2069FFE3F0A9}"},
        {"IEventOwner", IEventOwner::iid, "{5354D6AC-C0D4-4532-B1BD-A33E229B9F3D}"},
        {"IObjectRegistry", IObjectRegistry::iid, "{F5246D56-8654-4D60-B026-AFB57B697B37}"},
        {"IObjectTest", IObjectTest::iid, "{0407EB04-3713-4E28-9A82-34AB4877B109}"},
        {"IUndoStack", IUndoStack::iid, "{3F322518-90F4-462A-B9E9-535C454C265E}"},
        {"IUndoTarget", IUndoTarget::iid, "{7199C83A-68C9-40BF-9F14-2DCDFF1A1CB3}"},
        {"IMediaAttributes", IMediaAttributes::iid, "{0499AB46-4C5F-463D-9BAF-00E704B52D35}"},
    };
    for (const IdentifierRow& row : rows) {
        EXPECT_EQ(std::memcmp(row.iid.bytes, bytesOf(row.braces).data(), 16), 0) << row.name;
    }
}

} // namespace
} // namespace tessera
