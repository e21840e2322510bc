// VolumeWatch: news of volumes that come and go.
//
// The function is called on the thread that started the watch, from its message loop. At most one watch at a time.
#pragma once

#include <string_view>

namespace tessera::platform {

enum class VolumeChange { arrived, removed };

// The root as 16-bit text with backslashes.
using VolumeChangeFunction = void (*)(VolumeChange change, std::u16string_view root);

// False where the system sends no such news.
bool startVolumeWatch(VolumeChangeFunction function);
void stopVolumeWatch();

} // namespace tessera::platform
