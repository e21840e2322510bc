#include "persistence/archives/FPluginFileIterator.h"

#include "persistence/archives/VirtualPath.h"
#include "persistence/paths/PathText.h"

#include <iterator>
#include <string>
#include <utility>

namespace tessera {

namespace {

// The text in front of the entries' names: behind the archive itself stands a double separator.
std::u16string folderText(const FPath& folder) {
    std::u16string text = virtualTextOf(folder);
    while (pathtext::endsInSeparator(text)) {
        text.pop_back();
    }
    return text + (innerPath(virtualTextOf(folder)).empty() ? u"\\\\" : u"\\");
}

} // namespace

FPluginFileIterator::FPluginFileIterator(const FPath& folder, OpenedArchive& archive, FRefPtr<IVirtualIterator> entries)
    : archive_(&archive), entries_(std::move(entries)) {
    current_.setPath(pathtext::stringOf(folderText(folder)));
}

FPluginFileIterator::~FPluginFileIterator() = default;

FPath* FPluginFileIterator::next() {
    VirtualEntry entry{};
    if (entries_->next(&entry) != kResultOk) {
        return nullptr;
    }
    entry.name[std::size(entry.name) - 1] = 0; // the component's memory isn't ours to trust
    current_.setName(FStringRef(entry.name));
    current_.setKind(entry.kind == static_cast<std::int16_t>(PathKind::folder) ? PathKind::folder : PathKind::file);
    current_.setCachedSize(static_cast<std::int32_t>(static_cast<std::uint32_t>(entry.size)));
    current_.setFileType(FFileType());
    return &current_;
}

void FPluginFileIterator::reset() {
    entries_->reset();
}

} // namespace tessera
