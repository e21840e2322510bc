// IAudioClipFactory: a new, empty audio part at each queryService.
#pragma once

#include "shell/hostapi/IAudioPart.h"

namespace tessera {

struct IAudioClipFactory : IAudioPart {
    static constexpr FUIDBytes iid = "{CB1EE990-BC4F-40C7-A0E0-1D1EE7551F55}"_uid;

protected:
    ~IAudioClipFactory() = default;
};

} // namespace tessera
