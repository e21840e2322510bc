// Every operation stands in the slot that hosts call it by.

#include "shell/hostapi/HostApi.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace tessera {
namespace {

// The common table layout of our platforms keeps, in a pointer to a virtual operation, where in the table it stands:
// the offset of its entry plus one.
template <class Operation>
std::size_t slotOf(Operation operation) {
    std::ptrdiff_t words[2] = {};
    static_assert(sizeof operation == sizeof words);
    std::memcpy(words, &operation, sizeof words);
    return static_cast<std::size_t>(words[0] - 1) / sizeof(void*);
}

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

struct IdentifierRow {
    const char* name;
    const FUIDBytes& iid;
    std::uint8_t first[4];
};

// In memory an identifier starts with its first group, lowest byte first.
TEST(HostApi, IdentifiersStandInMemoryLowestByteFirst) {
    const IdentifierRow rows[] = {
        {"IModuleFactory", IModuleFactory::iid, {0x1C, 0x81, 0x4D, 0x7A}},
        {"IModuleFactory2", IModuleFactory2::iid, {0x50, 0xB6, 0x07, 0x00}},
        {"IModuleFactory3", IModuleFactory3::iid, {0xAB, 0xA2, 0x55, 0x45}},
        {"ICommandHandler", ICommandHandler::iid, {0xEB, 0x7B, 0xC1, 0x9F}},
        {"IDriverClient", IDriverClient::iid, {0x1D, 0xCB, 0xB9, 0x19}},
        {"IIdleClient", IIdleClient::iid, {0x58, 0xBB, 0x0B, 0xD7}},
        {"IUndoStep", IUndoStep::iid, {0xC3, 0x23, 0x40, 0xAC}},
        {"IHostServices", IHostServices::iid, {0x83, 0x96, 0xC8, 0xEE}},
        {"IHostApplicationInfo", IHostApplicationInfo::iid, {0x2A, 0xA5, 0xE1, 0xA8}},
        {"ICommandTable", ICommandTable::iid, {0x19, 0x91, 0x2A, 0xA4}},
        {"ICommandTarget", ICommandTarget::iid, {0x61, 0x3F, 0x2F, 0x76}},
        {"IDriverArbiter", IDriverArbiter::iid, {0x97, 0x28, 0x48, 0xCE}},
        {"IExportHost", IExportHost::iid, {0x2D, 0x7C, 0xC7, 0x3A}},
        {"IAlertHost", IAlertHost::iid, {0xA1, 0xB6, 0xBD, 0x37}},
        {"IIdleHost", IIdleHost::iid, {0x47, 0x18, 0x87, 0x9E}},
        {"IProjectOpener", IProjectOpener::iid, {0xC1, 0x3C, 0xB1, 0x43}},
        {"ITransport", ITransport::iid, {0x0C, 0x89, 0x64, 0x7E}},
        {"ITimeValue", ITimeValue::iid, {0x58, 0xFD, 0x8C, 0x93}},
        {"IUrlFactory", IUrlFactory::iid, {0xA1, 0x8E, 0xF3, 0x0A}},
        {"IAudioClip", IAudioClip::iid, {0x1B, 0xDA, 0x51, 0x02}},
        {"IAudioClipAccess", IAudioClipAccess::iid, {0x42, 0xBB, 0xEC, 0x98}},
        {"IAudioClipFactory", IAudioClipFactory::iid, {0x90, 0xE9, 0x1E, 0xCB}},
        {"IAudioWriterFactory", IAudioWriterFactory::iid, {0x81, 0xBE, 0x3C, 0xA0}},
        {"IProjectObject", IProjectObject::iid, {0x9F, 0x99, 0x6F, 0x7A}},
        {"IAudioEvent", IAudioEvent::iid, {0x52, 0xE4, 0xFF, 0x21}},
        {"IEventRestrictions", IEventRestrictions::iid, {0x2F, 0x48, 0xE6, 0xE5}},
        {"ISelection", ISelection::iid, {0x66, 0x15, 0xB2, 0x05}},
        {"IProjectList", IProjectList::iid, {0x13, 0x28, 0x7C, 0x3D}},
        {"IFolderNode", IFolderNode::iid, {0xB4, 0x31, 0x4A, 0xE3}},
        {"IEventTrack", IEventTrack::iid, {0x5E, 0x5B, 0x3A, 0x1A}},
        {"IEventOwner", IEventOwner::iid, {0xAC, 0xD6, 0x54, 0x53}},
        {"IObjectRegistry", IObjectRegistry::iid, {0x56, 0x6D, 0x24, 0xF5}},
        {"IObjectTest", IObjectTest::iid, {0x04, 0xEB, 0x07, 0x04}},
        {"IUndoStack", IUndoStack::iid, {0x18, 0x25, 0x32, 0x3F}},
        {"IUndoTarget", IUndoTarget::iid, {0x3A, 0xC8, 0x99, 0x71}},
        {"IMediaAttributes", IMediaAttributes::iid, {0x46, 0xAB, 0x99, 0x04}},
    };
    for (const IdentifierRow& row : rows) {
        EXPECT_EQ(std::memcmp(row.iid.bytes, row.first, 4), 0) << row.name;
    }
}

} // namespace
} // namespace tessera
