// FObjectFiles: object documents as files of the program, by a base name.
//
// A document "Name" is the file "Name.xml" in the folder of the user's own data; reading takes the one that ships with
// the program where the user has none. While a document is replaced, the old one waits beside it as "Name_old.xml":
//
//   1. an "_old" file that an earlier crash left is deleted, and the present file takes that name;
//   2. the new file is written, closed, and handed to the storage together with its folder's entries;
//   3. the "_old" file is deleted; or, after a failure, the new one is, and the "_old" file takes its name back.
//
// So whenever the process or the power ends, the old document or the new one is there as a whole: as "Name.xml", or,
// inside step 2, the old one as "Name_old.xml". Reading never looks at that; the next save deletes it when it succeeds,
// and gives it the name back when it fails. That holds for one crash: what stands as "Name.xml" counts as the document,
// even if a crash left but a part of it, and the next save puts that in the place of the whole one in "Name_old.xml".
//
// Every operation is false on failure, and for an empty name or without a folder for the user's data. Main thread.
#pragma once

#include "persistence/objects/FObjectDocument.h"

#include <functional>

namespace tessera {

class CmObject;
class FFileType;
class FStream;
class FStringRef;

class FObjectFiles {
public:
    // Whether a file that is there may be replaced: always, or when the user says so. Nobody to ask is a no.
    enum class Replacing { silently, afterAsking };

    using Content = std::function<bool(FStream& stream)>;

    static bool saveDocument(const FStringRef& name, const char* rootTag, const FObjectDocument& document,
                             Replacing replacing = Replacing::silently);
    static bool loadDocument(const FStringRef& name, const char* rootTag, FObjectDocument& document,
                             const FStringRef& onlyRoot = FStringRef(),
                             FXmlEntityColumn column = FXmlEntityColumn::ansi);
    static bool saveObject(const FStringRef& name, const char* rootTag, const CmObject& object,
                           Replacing replacing = Replacing::silently);
    static bool loadObject(const FStringRef& name, const char* rootTag, CmObject& object);

    // The same for any content: what stands above goes through these.
    static bool write(const FStringRef& name, Replacing replacing, const Content& content);
    static bool read(const FStringRef& name, const Content& content);

    // To "Name.xml.backup", which an earlier backup gives way to.
    static bool backupDocument(const FStringRef& name);
    // The backup takes the place of the document. It is gone when that is on the storage, and stays when this is false.
    static bool restoreDocument(const FStringRef& name);
    static bool deleteDocument(const FStringRef& name);
    // In the folder of the user's data.
    static bool documentExists(const FStringRef& name);

    // "Marlgrove XML File" and "Marlgrove XML File (Backup)"; shared, not to be changed.
    static const FFileType& documentType();
    static const FFileType& backupType();
};

} // namespace tessera
