// The clip that an event plays.
#pragma once

namespace tessera {

struct IAudioClip;
struct IProjectObject;

// It stays the host's. Null for an event without audio.
IAudioClip* clipOf(IProjectObject& event);

} // namespace tessera
