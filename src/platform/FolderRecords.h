// FolderRecords: the form in which one of the systems delivers changes, a buffer of chained records, taken apart.
//
// Compiled on every side, so that every side can test it. A record, little-endian, at any offset:
//
//   0  32 bits  offset of the next record
//   4  32 bits  action, see FolderChange
//   8  32 bits  length of the name in bytes
//   12          name, UTF-16
#pragma once

#include "platform/FolderChange.h"

#include <cstddef>
#include <span>
#include <vector>

namespace tessera::platform {

// The received bytes' records, in the order of the walk. An action over 5 ends it, what came before stays.
//
// The next-entry offset is taken from the start of the buffer and not added to the current position. That is on
// purpose: it is how these buffers have always been read here. Two records of a burst are both delivered; the third and
// later ones may be read from other places than the system meant, or the walk ends early. Nothing is ever read outside
// the buffer, and a walk in circles ends with as many records as could stand in it.
std::vector<FolderChange> parseFolderRecords(std::span<const std::byte> received);

} // namespace tessera::platform
