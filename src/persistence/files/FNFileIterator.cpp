#include "persistence/files/FNFileIterator.h"

#include "persistence/files/FFileSystem.h"
#include "persistence/files/PathText.h"
#include "platform/FileEntries.h"

namespace tessera {

namespace {

PathKind kindOf(const platform::FolderEntry& entry) {
    if (entry.isFolder) {
        return PathKind::folder;
    }
    return platform::hasLinkExtension(entry.name) ? PathKind::link : PathKind::file;
}

} // namespace

FNFileIterator::FNFileIterator(const FPath& folder, bool resolveLinks, bool fillFileTypes)
    : resolveLinks_(resolveLinks), fillFileTypes_(fillFileTypes) {
    const FNPath* native = cmCast<FNPath>(&folder);
    if (native == nullptr) {
        return;
    }
    folder_ = FRefPtr<FNPath>::adopt(new FNPath(*native));
    text_ = folder_->getFullPath();
    // All entries have the folder in common; it is set once.
    current_.setPath(text_);
    reset();
}

void FNFileIterator::reset() {
    if (find_.isOpen()) {
        find_.rewind();
    } else if (folder_) {
        std::int32_t ignored = 0;
        find_ = platform::Folder::open({text_.text16(), static_cast<std::size_t>(text_.length())}, ignored);
    }
    atEnd_ = !find_.isOpen();
}

FPath* FNFileIterator::next() {
    const platform::FolderEntry* entry = atEnd_ ? nullptr : find_.next();
    if (entry == nullptr) {
        atEnd_ = true;
        return nullptr;
    }
    current_.setName(FStringRef(entry->name.data(), static_cast<std::int32_t>(entry->name.size())));
    current_.setKind(kindOf(*entry));
    current_.setVisible(!entry->isHidden);
    current_.setCachedSize(static_cast<std::int32_t>(static_cast<std::uint32_t>(entry->size)));
    current_.setFileType(FFileType());
    if (resolveLinks_ && current_.isLink()) {
        if (FNPath* target = resolved()) {
            return target;
        }
    }
    if (fillFileTypes_) {
        current_.updateFileType(false);
    }
    return &current_;
}

// What the present link leads to; null when that isn't there.
FNPath* FNFileIterator::resolved() {
    FFileSystem* files = FFileSystem::getInstance();
    linkTarget_ = current_;
    if (files == nullptr || !files->resolveLink(linkTarget_)) {
        return nullptr;
    }
    linkTarget_.resolveKind();
    std::int32_t ignored = 0;
    const auto status = platform::fileStatus(PathText(linkTarget_), ignored);
    if (!status || linkTarget_.getKind() == PathKind::unknown) {
        return nullptr;
    }
    linkTarget_.setVisible(!status->isHidden);
    linkTarget_.setCachedSize(static_cast<std::int32_t>(static_cast<std::uint32_t>(status->size)));
    if (fillFileTypes_) {
        linkTarget_.updateFileType(false);
    }
    return &linkTarget_;
}

} // namespace tessera
