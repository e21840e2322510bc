#include "persistence/files/FFileIterator.h"

namespace tessera {

FPath* FFileIterator::next() {
    return nullptr;
}

void FFileIterator::reset() {}

} // namespace tessera
