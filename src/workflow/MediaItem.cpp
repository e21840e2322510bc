#include "workflow/MediaItem.h"

#include "foundation/object/FRefPtr.h"
#include "foundation/text/FNumberScan.h"
#include "shell/hostapi/AttributeValue.h"
#include "shell/hostapi/IMediaAttributes.h"
#include "shell/hostapi/IMediaItemList.h"
#include "shell/hostapi/IMediaObject.h"
#include "shell/hostapi/IProjectTimeline.h"
#include "workflow/ProjectTracker.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace tessera {

namespace {

constexpr std::int32_t kNoTrack = -1;

// A number that a track can't have is none.
std::int32_t readTrack(const std::u16string& text) {
    std::int64_t track = kNoTrack;
    FNumberScan::signedDecimal(text.data(), text.data() + text.size(), track);
    return std::in_range<std::int32_t>(track) ? static_cast<std::int32_t>(track) : kNoTrack;
}

} // namespace

std::int32_t MediaItem::targetTrack() const {
    // Misspelled, as the hosts' data has it.
    return readTrack(attribute("User:STR_MATragetTrack"));
}

std::u16string MediaItem::takeNumber() const {
    return attribute("User:STR_MATakeNo");
}

std::u16string MediaItem::character() const {
    return attribute("User:STR_MACharacter");
}

std::u16string MediaItem::dialog() const {
    return attribute("User:STR_MADialog");
}

bool MediaItem::itemRange(IProjectTimeline& timeline, double& start, double& end) const {
    const auto attributes = queryFor<IMediaAttributes>(&object_);
    if (!attributes) {
        return false;
    }
    if (object_.hasProperty("range")) {
        timeline.itemRange(attributes->itemId(), &start, &end);
    } else {
        timeline.itemStart(attributes->itemId(), &start);
        end = start;
    }
    return true;
}

bool MediaItem::selectionRange(const ProjectTracker& tracker, IMediaItemList& items, double& start, double& end) {
    start = std::numeric_limits<double>::max();
    end = std::numeric_limits<double>::lowest();
    IProjectTimeline* timeline = tracker.activeProject() == nullptr ? nullptr : tracker.activeProject()->root();
    if (timeline == nullptr) {
        return false;
    }
    bool found = false;
    for (std::int32_t index = 0; index < items.count(); ++index) {
        IMediaObject* object = items.isSelected(index) ? items.item(index) : nullptr;
        double itemStart = 0;
        double itemEnd = 0;
        if (object != nullptr && MediaItem(*object).itemRange(*timeline, itemStart, itemEnd)) {
            start = std::min(start, itemStart);
            end = std::max(end, itemEnd);
            found = true;
        }
    }
    return found;
}

std::u16string MediaItem::attribute(const char* key) const {
    AttributeValue value;
    if (object_.attribute(key, &value) != kResultOk || (value.flags & AttributeValue::kText16) == 0 ||
        value.text16 == nullptr) {
        return {};
    }
    return value.text16;
}

} // namespace tessera
