// Lists of stored objects as attributes. In a list that comes from a document, null stands for what is no such object.
#pragma once

#include "persistence/attributes/FAttributes.h"

#include <vector>

namespace tessera::host {

template <class T>
bool storeList(FAttributes& attributes, const char* key, const std::vector<FRefPtr<T>>& list) {
    for (const FRefPtr<T>& entry : list) {
        if (!attributes.appendObject(key, entry.get())) {
            return false;
        }
    }
    return true;
}

template <class T>
std::vector<FRefPtr<T>> restoreList(FAttributes& attributes, const char* key) {
    std::vector<FRefPtr<T>> list;
    CmObject* entry = nullptr;
    for (attributes.resetList(key); attributes.nextObject(key, entry);) {
        list.emplace_back(cmCast<T>(entry));
    }
    return list;
}

} // namespace tessera::host
