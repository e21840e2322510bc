#include "appservices/defaults/GlobalDefaults.h"

namespace tessera::GlobalDefaults {

namespace {

FGlobalDefaultPool* pool() {
    return FGlobalDefaultPool::getInstance();
}

} // namespace

bool load() {
    return pool() != nullptr && pool()->load();
}

bool save(RunSavers runSavers) {
    return pool() != nullptr && pool()->save(runSavers);
}

void restore() {
    if (pool() != nullptr) {
        pool()->restore();
    }
}

bool trash() {
    return pool() != nullptr && pool()->trash();
}

bool backup() {
    return pool() != nullptr && pool()->backup();
}

bool restoreBackup() {
    return pool() != nullptr && pool()->restoreBackup();
}

void close() {
    if (pool() != nullptr) {
        pool()->close();
    }
}

void addRestoreCallback(Callback callback) {
    if (pool() != nullptr) {
        pool()->addRestoreCallback(callback);
    }
}

void addSaveCallback(Callback callback) {
    if (pool() != nullptr) {
        pool()->addSaveCallback(callback);
    }
}

void setLoadGate(Gate gate) {
    if (pool() != nullptr) {
        pool()->setLoadGate(gate);
    }
}

void setSaveGate(Gate gate) {
    if (pool() != nullptr) {
        pool()->setSaveGate(gate);
    }
}

} // namespace tessera::GlobalDefaults
