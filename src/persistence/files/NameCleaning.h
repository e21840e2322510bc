// NameCleaning: makes texts fit for file names and paths. Both give whether anything changed.
#pragma once

namespace tessera {

class FString;

enum class ControlCharacters { keep, drop };

// At most 260 characters are kept. Each of \ * ? / : < > | " tab and line ends becomes the replacement, "_" for 0.
bool cleanName(FString& text, char16_t replacement, ControlCharacters controls);

// The first ":" stays, as that of a drive; further ones become the replacement, "_" for 0. Of the others each has its
// own stand-in unless there is a replacement.
bool cleanPath(FString& text, char16_t replacement);

} // namespace tessera
