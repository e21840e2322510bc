// FGlobalDefaultPool: the settings of the process, and their files.
//
// They lie in the folder of the user's own data under a base name, "Defaults" unless somebody changes it:
//
//   one file   "Defaults.xml": all groups and the state of the auto-savers. A save that breaks off, be it by a crash,
//              leaves the old file or the new one whole (see FObjectFiles).
//   split      a folder "Defaults" with a file for each group, named by the digest of the group's name, read when the
//              group is first asked for, and "AutoSaver.xml". Each file is written in place: after a save that breaks
//              off, one of them may be damaged, and its group is empty then. Where there is the one file alone, the
//              first save makes the folder whole beside it, as "Defaults (New)", or leaves the file as it is.
//
// The life of the settings: load(), then register auto-savers, then restore(), which hands out what was loaded; from
// then on save() works. Where the files are found damaged, or a program didn't get through its start, its owner may
// fetch the backup() that it made earlier with restoreBackup(), or put the files aside with trash(), before it loads.
//
// Pools beside the process's own one are possible; they share the base name. Main thread.
#pragma once

#include "appservices/defaults/FDefaultPool.h"

#include <string>
#include <unordered_set>
#include <vector>

namespace tessera {

class FNPath;

class FGlobalDefaultPool : public CmClass<FGlobalDefaultPool, FDefaultPool> {
public:
    static FMetaClass metaClass;

    using Callback = void (*)();
    // False is a veto.
    using Gate = bool (*)();
    enum class Files : bool { one, split };
    enum class RunSavers : bool { no, yes };

    FGlobalDefaultPool() = default;

    // Borrowed. Null when there is none and none is to be made, and at the end of the process.
    static FGlobalDefaultPool* getInstance(bool create = true);

    static const FString& getBaseName();
    static void setBaseName(const FStringRef& name);

    // Chosen before load.
    void setFiles(Files files) { splitFiles_ = files == Files::split; }
    bool hasSplitFiles() const { return splitFiles_; }

    // Begins afresh with what the files hold. False when they can't be read, or aren't there, and what is in memory
    // stays where there is one file or none. The load gate's no is false as well: nothing is read then, and no group
    // will be until a later load. In one file the group "FGlobalDefaultPool" gets the key "Preferences extraced" with
    // the value 1, also after a failure.
    bool load();
    // Hands the auto-savers what was loaded for them, and runs the restore callbacks.
    void restore();
    // Nothing, and false, before restore(). With yes the save callbacks run first. The save gate's no is true, and
    // nothing is written. False when something can't be written; what can be is, unless that was the one file or its
    // move to the folder.
    bool save(RunSavers runSavers);

    // Whether restore() has been called.
    bool isRestored() const { return restored_; }
    // Whether what was loaded comes from a program that kept further settings elsewhere, which want to be brought over:
    // it hasn't that key.
    bool needsExtraction() const { return needsExtraction_; }

    // Copies the file to "Defaults.xml.backup", respectively the folder to "Defaults (Backup)". False without files.
    bool backup();
    // The backup takes the place of the files, and is gone then. False, and nothing changed, without one.
    bool restoreBackup();
    // Renames the file to "Defaults (Trashed).xml", in place of an earlier one, respectively deletes the folder.
    bool trash();

    // Each runs in the order in which they came.
    void addRestoreCallback(Callback callback) { restoreCallbacks_.push_back(callback); }
    void addSaveCallback(Callback callback) { saveCallbacks_.push_back(callback); }
    // Null, as at first, lets everything pass.
    void setLoadGate(Gate gate) { loadGate_ = gate; }
    void setSaveGate(Gate gate) { saveGate_ = gate; }

    FDefaults* loadGroup(const char* name) override;
    void removeGroup(const char* name) override;

private:
    bool hasExtractedKey();
    bool loadOneFile();
    bool loadSplitFiles();
    bool saveOneFile();
    bool saveSplitFiles();
    bool moveToFolder(const FNPath& folder);
    bool saveFolder(const FNPath& folder);
    bool saveGroups(const FNPath& folder);
    bool saveGroup(const FNPath& folder, std::string_view name, const FDefaults& group);
    void deleteRemovedGroups(const FNPath& folder);
    bool saveAutoSaverFile(const FNPath& folder);
    static bool backupFolder();
    static bool restoreFolder();
    static bool deleteFolder();
    static bool putFileAside();
    bool noteResult(bool done);

    std::vector<Callback> restoreCallbacks_;
    std::vector<Callback> saveCallbacks_;
    // Names of groups whose file is this pool's to delete: it was read or written here, or its group was removed. A
    // file that couldn't be read may be well again by the time of the next save.
    std::unordered_set<std::string> ownFiles_;
    Gate loadGate_ = nullptr;
    Gate saveGate_ = nullptr;
    bool splitFiles_ = false;
    bool restored_ = false;
    bool needsExtraction_ = false;
};

} // namespace tessera
