// The host interface layer: all interfaces and records that cross between the module and a host, one to a header.
//
// - An interface is a structure of pure virtual operations without a destructor. The number of an operation is its
// place
//   in the table, slots 0 to 2 being those of IBaseUnknown; numbers that nobody uses are held by reserved operations,
//   which nobody calls.
// - Everything is called on the host's main thread, between initialize and terminate of the module's object, unless a
//   slot says otherwise. No exception crosses.
// - References: what comes through an out pointer, and what duplicate and create return, belongs to the caller. Every
//   other returned pointer stays the property of the object that gave it; who keeps it adds a reference. Arguments stay
//   the caller's; who keeps one adds a reference, or says that it holds none.
// - Text is zero-terminated: 16-bit in the platform's byte order, 8-bit as UTF-8.
// - Words called unused are 0 at every call; they are 64 bits wide so that no half of a register is left to chance.
#pragma once

#include "shell/hostapi/AttributeValue.h"
#include "shell/hostapi/ClassInfo.h"
#include "shell/hostapi/ClassInfoEx.h"
#include "shell/hostapi/ClassInfoWide.h"
#include "shell/hostapi/FactoryInfo.h"
#include "shell/hostapi/IAlertHost.h"
#include "shell/hostapi/IAttributeList.h"
#include "shell/hostapi/IAudioClip.h"
#include "shell/hostapi/IAudioClipAccess.h"
#include "shell/hostapi/IAudioClipFactory.h"
#include "shell/hostapi/IAudioEvent.h"
#include "shell/hostapi/IAudioPart.h"
#include "shell/hostapi/IAudioStream.h"
#include "shell/hostapi/IAudioWriterFactory.h"
#include "shell/hostapi/ICommandHandler.h"
#include "shell/hostapi/ICommandTable.h"
#include "shell/hostapi/ICommandTarget.h"
#include "shell/hostapi/IDriverArbiter.h"
#include "shell/hostapi/IDriverClient.h"
#include "shell/hostapi/IEventOwner.h"
#include "shell/hostapi/IEventRestrictions.h"
#include "shell/hostapi/IEventTrack.h"
#include "shell/hostapi/IExportHost.h"
#include "shell/hostapi/IExportListener.h"
#include "shell/hostapi/IFolderNode.h"
#include "shell/hostapi/IHostApplicationInfo.h"
#include "shell/hostapi/IHostFile.h"
#include "shell/hostapi/IHostServices.h"
#include "shell/hostapi/IIdleClient.h"
#include "shell/hostapi/IIdleHost.h"
#include "shell/hostapi/IMediaAttributes.h"
#include "shell/hostapi/IMediaItemList.h"
#include "shell/hostapi/IMediaObject.h"
#include "shell/hostapi/IModuleFactory.h"
#include "shell/hostapi/IModuleFactory2.h"
#include "shell/hostapi/IModuleFactory3.h"
#include "shell/hostapi/IObjectObserver.h"
#include "shell/hostapi/IObjectRegistry.h"
#include "shell/hostapi/IObjectTest.h"
#include "shell/hostapi/IPlugin.h"
#include "shell/hostapi/IPool.h"
#include "shell/hostapi/IProject.h"
#include "shell/hostapi/IProjectList.h"
#include "shell/hostapi/IProjectListListener.h"
#include "shell/hostapi/IProjectListener.h"
#include "shell/hostapi/IProjectObject.h"
#include "shell/hostapi/IProjectOpener.h"
#include "shell/hostapi/IProjectTimeline.h"
#include "shell/hostapi/ISelection.h"
#include "shell/hostapi/IStreamEditTarget.h"
#include "shell/hostapi/ITimeValue.h"
#include "shell/hostapi/ITransport.h"
#include "shell/hostapi/IUndoStack.h"
#include "shell/hostapi/IUndoStep.h"
#include "shell/hostapi/IUndoTarget.h"
#include "shell/hostapi/IUrlFactory.h"
#include "shell/hostapi/ModuleExports.h"
