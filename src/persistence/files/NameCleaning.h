// NameCleaning: makes texts fit for file names and paths, which gives whether anything changed, and volumes' labels for
// showing.
#pragma once

namespace tessera {

class FString;

enum class ControlCharacters { keep, drop };

// At most 260 characters are kept. Each of \ * ? / : < > | " tab and line ends becomes the replacement, "_" for 0.
bool cleanName(FString& text, char16_t replacement, ControlCharacters controls);

// The first ":" stays, as that of a drive; further ones become the replacement, "_" for 0. Of the others each has its
// own stand-in unless there is a replacement.
bool cleanPath(FString& text, char16_t replacement);

// Small letters but for the first character: labels are often kept in capitals.
void foldLabel(FString& label);

} // namespace tessera
