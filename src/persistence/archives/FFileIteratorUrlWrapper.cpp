#include "persistence/archives/FFileIteratorUrlWrapper.h"

namespace tessera {

FFileIteratorUrlWrapper::FFileIteratorUrlWrapper(const FStringRef& prefix, FFileIterator* inner)
    : prefix_(prefix), currentPath_(FRefPtr<FNPath>::adopt(new FNPath)), inner_(FRefPtr<FFileIterator>::adopt(inner)) {
    currentPath_->setPath(prefix_);
}

FFileIteratorUrlWrapper::~FFileIteratorUrlWrapper() = default;

FPath* FFileIteratorUrlWrapper::next() {
    if (first_ != 0) {
        first_ = 0;
        inner_->reset();
    }
    const FPath* entry = inner_->next();
    if (entry == nullptr) {
        return nullptr;
    }
    currentPath_->setName(entry->getName());
    currentPath_->setKind(entry->getKind());
    currentPath_->setVisible(entry->isVisible());
    currentPath_->setCachedSize(entry->getCachedSize());
    currentPath_->setFileType(FFileType());
    return currentPath_.get();
}

void FFileIteratorUrlWrapper::reset() {
    first_ = 1;
}

} // namespace tessera
