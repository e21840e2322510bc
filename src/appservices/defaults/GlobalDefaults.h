// GlobalDefaults: the settings of the process, as functions. Each goes to the process's FGlobalDefaultPool, which is
// made on first use and tells what they do; at the end of the process, when it has gone, they do nothing and are false.
// Main thread.
#pragma once

#include "appservices/defaults/FGlobalDefaultPool.h"

namespace tessera::GlobalDefaults {

using Callback = FGlobalDefaultPool::Callback;
using Gate = FGlobalDefaultPool::Gate;
using RunSavers = FGlobalDefaultPool::RunSavers;

bool load();
bool save(RunSavers runSavers);
void restore();
bool trash();
bool backup();
bool restoreBackup();
// The end: see FDefaultPool::close.
void close();

void addRestoreCallback(Callback callback);
void addSaveCallback(Callback callback);
void setLoadGate(Gate gate);
void setSaveGate(Gate gate);

} // namespace tessera::GlobalDefaults
