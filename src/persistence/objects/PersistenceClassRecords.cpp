// The class records of this layer, in one place so that their order is fixed.
#include "persistence/archives/ArchiveEntry.h"
#include "persistence/archives/FArchiveManager.h"
#include "persistence/archives/FFileIteratorUrlWrapper.h"
#include "persistence/archives/FPluginFileIterator.h"
#include "persistence/archives/FPluginFileSystem.h"
#include "persistence/attributes/FAttrBuffer.h"
#include "persistence/attributes/FAttributes.h"
#include "persistence/attributes/FFloatList.h"
#include "persistence/attributes/FIntList.h"
#include "persistence/attributes/FSubList.h"
#include "persistence/attributes/FXmlInstance.h"
#include "persistence/attributes/FXmlReference.h"
#include "persistence/files/FNFileIterator.h"
#include "persistence/files/FNFileSystem.h"
#include "persistence/files/FileChangeHub.h"
#include "persistence/paths/FNPath.h"
#include "persistence/registry/FRegistryBackup.h"
#include "persistence/streams/FBufferStream.h"
#include "persistence/streams/FFileStream.h"
#include "persistence/streams/FIBStream.h"
#include "persistence/streams/FMemoryStream.h"
#include "persistence/urls/FUrl.h"
#include "persistence/urls/FUrlFileHandler.h"
#include "persistence/urls/UrlMetaHandler.h"
#include "persistence/xml/FXmlAttribute.h"
#include "persistence/xml/FXmlWriter.h"

namespace tessera {

FMetaClass FFileType::metaClass("FFileType", &CmObject::metaClass, createCmObject<FFileType>);
FMetaClass FPath::metaClass("FPath", &CmObject::metaClass, createCmObject<FPath>);
FMetaClass FNPath::metaClass("FNPath", &FPath::metaClass, createCmObject<FNPath>);

FMetaClass FRegistryEntry::metaClass("FRegistryEntry", &CmObject::metaClass, createCmObject<FRegistryEntry>);
FMetaClass FRegistryBackup::metaClass("FRegistryBackup", &CmObject::metaClass, createCmObject<FRegistryBackup>);

FMetaClass FStream::metaClass("FStream", &CmObject::metaClass, nullptr);
FMetaClass FMemoryStream::metaClass("FMemoryStream", &FStream::metaClass, createCmObject<FMemoryStream>);
FMetaClass FFileStream::metaClass("FFileStream", &FStream::metaClass, createCmObject<FFileStream>);
// Made over something that exists already: known by name, and not created by it.
FMetaClass FBufferStream::metaClass("FBufferStream", &FStream::metaClass, nullptr);
FMetaClass FIBStream::metaClass("FIBStream", &FStream::metaClass, nullptr);

// Known by name, and not created by it: there is one file system and one hub, and an iterator needs its folder.
FMetaClass FFileSystem::metaClass("FFileSystem", &CmObject::metaClass, nullptr);
FMetaClass FNFileSystem::metaClass("FNFileSystem", &FFileSystem::metaClass, nullptr);
FMetaClass FFileIterator::metaClass("FFileIterator", &CmObject::metaClass, nullptr);
FMetaClass FNFileIterator::metaClass("FNFileIterator", &FFileIterator::metaClass, nullptr);
FMetaClass FileChangeHub::metaClass("FileChangeHub", &CmObject::metaClass, nullptr);

// Trees are found under both names and written under the second.
FMetaClass FAttributes::metaClass("FAttributes", &CmObject::metaClass, createCmObject<FAttributes>);
namespace {
const FMetaClass attributesAlias("Attributes", FAttributes::metaClass);
} // namespace

// Values inside of trees: known by name, and not created by it.
FMetaClass FAttrBuffer::metaClass("FAttrBuffer", &CmObject::metaClass, nullptr);
FMetaClass FAttrList::metaClass("FAttrList", &CmObject::metaClass, nullptr);
FMetaClass FIntList::metaClass("FIntList", &FAttrList::metaClass, nullptr);
FMetaClass FFloatList::metaClass("FFloatList", &FAttrList::metaClass, nullptr);
FMetaClass FStringList::metaClass("FStringList", &FAttrList::metaClass, nullptr);
FMetaClass FObjectList::metaClass("FObjectList", &FAttrList::metaClass, nullptr);
FMetaClass FSubList::metaClass("FSubList", &FAttrList::metaClass, nullptr);
FMetaClass FXmlObject::metaClass("FXmlObject", &CmObject::metaClass, nullptr);
FMetaClass FXmlInstance::metaClass("FXmlInstance", &FXmlObject::metaClass, nullptr);
FMetaClass FXmlReference::metaClass("FXmlReference", &FXmlObject::metaClass, nullptr);

// Known by name, and not created by it: one is a part of a tag, the other needs its stream.
FMetaClass FXmlAttribute::metaClass("FXmlAttribute", &CmObject::metaClass, nullptr);
FMetaClass FXmlWriter::metaClass("FXmlWriter", &CmObject::metaClass, nullptr);

FMetaClass FUrl::metaClass("FUrl", &FPath::metaClass, createCmObject<FUrl>);
FMetaClass FUrlHandler::metaClass("FUrlHandler", &CmObject::metaClass, nullptr);
FMetaClass FUrlFileHandler::metaClass("FUrlFileHandler", &FUrlHandler::metaClass, nullptr);
FMetaClass UrlMetaHandler::metaClass("UrlMetaHandler", &FUrlHandler::metaClass, nullptr);

// There is one manager, and the others stand for what it has mounted.
FMetaClass FArchiveManager::metaClass("FArchiveManager", &CmObject::metaClass, nullptr);
FMetaClass ArchiveEntry::metaClass("ArchiveEntry", &CmObject::metaClass, nullptr);
FMetaClass FRemovableFileSystem::metaClass("FRemovableFileSystem", &FFileSystem::metaClass, nullptr);
FMetaClass FPluginFileIterator::metaClass("FPluginFileIterator", &FFileIterator::metaClass, nullptr);
FMetaClass FFileIteratorUrlWrapper::metaClass("FFileIteratorUrlWrapper", &FFileIterator::metaClass, nullptr);

} // namespace tessera
