#include "persistence/files/FileCopy.h"

#include "persistence/files/IFileProgress.h"
#include "persistence/objects/PersistenceHooks.h"
#include "persistence/streams/FStream.h"

#include <algorithm>
#include <memory>

namespace tessera {

namespace {

constexpr std::int64_t kBlock = 0x10000;
constexpr std::int64_t kLargestCount = 0x7fffffff;

// begin and end in pairs, whatever happens between.
class ProgressScope {
public:
    ProgressScope(IFileProgress* progress, std::u16string_view name, std::int64_t size)
        : progress_(progress), unit_(progressUnit(size)) {
        if (progress_ != nullptr) {
            FString text = translateText("Copying File: ");
            text.append16(name.data(), static_cast<std::int32_t>(name.size()));
            progress_->begin(text, static_cast<std::int32_t>(size / unit_));
        }
    }
    ProgressScope(const ProgressScope&) = delete;
    ProgressScope& operator=(const ProgressScope&) = delete;
    ~ProgressScope() {
        if (progress_ != nullptr) {
            progress_->end();
        }
    }

    bool advance(std::int64_t done) {
        return progress_ == nullptr || progress_->advance(static_cast<std::int32_t>(done / unit_));
    }

private:
    IFileProgress* progress_;
    std::int64_t unit_;
};

// read gives the count, 0 at the end, less when it failed.
template <class Read>
bool copyBlocks(std::int64_t size, Read read, platform::File& target, std::u16string_view name, IFileProgress* progress,
                std::int32_t& error) {
    ProgressScope scope(progress, name, size);
    const auto block = std::make_unique<char[]>(kBlock);
    std::int64_t done = 0;
    for (;;) {
        const std::int64_t count = read(block.get());
        if (count <= 0) {
            return count == 0;
        }
        if (target.write(block.get(), count, error) != count) {
            return false;
        }
        done += count;
        // A file that grows while it is copied must not push the count over the total.
        if (!scope.advance(done < size ? done : size)) {
            error = 0;
            return false;
        }
    }
}

} // namespace

std::int64_t progressUnit(std::int64_t size) {
    return size > kLargestCount ? size / kLargestCount + 1 : 1;
}

bool copyBytes(platform::File& source, platform::File& target, std::u16string_view name, IFileProgress* progress,
               std::int32_t& error) {
    const std::int64_t size = source.size(error);
    if (size < 0) {
        return false;
    }
    const auto read = [&](char* block) {
        const std::int64_t count = source.read(block, kBlock, error);
        // A part that came before a failure isn't the end.
        return error != 0 ? std::int64_t(-1) : count;
    };
    return copyBlocks(size, read, target, name, progress, error);
}

bool copyBytes(FStream& source, std::int64_t size, platform::File& target, std::u16string_view name,
               IFileProgress* progress, std::int32_t& error) {
    std::int64_t left = size;
    const auto read = [&](char* block) -> std::int64_t {
        if (left == 0) {
            return 0;
        }
        const std::int64_t wanted = std::min(left, kBlock);
        const std::int64_t count = source.read(block, static_cast<std::int32_t>(wanted));
        if (count <= 0 || count > wanted) {
            return -1;
        }
        left -= count;
        return count;
    };
    return copyBlocks(size, read, target, name, progress, error);
}

} // namespace tessera
