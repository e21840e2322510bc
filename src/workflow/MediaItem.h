// MediaItem: a reader for the media attributes of one object of the host, and for where the object stands on the
// timeline. The object and the timeline stay the host's and outlive the reader. Main thread.
#pragma once

#include <cstdint>
#include <string>

namespace tessera {

class ProjectTracker;
struct IMediaItemList;
struct IMediaObject;
struct IProjectTimeline;

class MediaItem {
public:
    // The object offers IMediaAttributes; one that doesn't has no range.
    explicit MediaItem(IMediaObject& object) : object_(object) {}

    // -1 if the attribute is missing or doesn't begin with a number.
    std::int32_t targetTrack() const;
    // Empty if the attribute is missing or no 16-bit text.
    std::u16string takeNumber() const;
    std::u16string character() const;
    std::u16string dialog() const;

    // Seconds. An item without the property "range" is a point: its end is its start. False, and nothing written, for
    // an object that isn't a media item.
    bool itemRange(IProjectTimeline& timeline, double& start, double& end) const;

    // From the start of the first to the end of the last selected item of the list, on the active project's timeline.
    // False if nothing is selected or no project is active; start and end then hold the largest number and the smallest
    // one.
    static bool selectionRange(const ProjectTracker& tracker, IMediaItemList& items, double& start, double& end);

private:
    std::u16string attribute(const char* key) const;

    IMediaObject& object_;
};

} // namespace tessera
