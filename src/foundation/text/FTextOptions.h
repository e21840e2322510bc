// The choices that the operations of strings take.
#pragma once

#include "platform/CodePages.h"

#include <cstdint>

namespace tessera {

enum class FTextWidth : bool { narrow, wide };

enum class FCase : bool { exact, ignore };

// Whether a NUL in front of the given length belongs to the text or ends it.
enum class FNul : bool { kept, ends };

// Where a number has to stand: at the index itself, or anywhere behind it.
enum class FNumberSearch : bool { atIndex, ahead };

enum class FOccurrences : bool { first, all };

// What trim takes from the ends and removeAll takes everywhere.
enum class FTrimMode : std::int32_t { whiteSpace = 0, allButLettersAndDigits = 1, allButLetters = 2 };

// What becomes of the pieces when a text is split, and of the piece behind the last separator when it is empty.
enum class FItemForm : bool { asTheyAre, trimmed };
enum class FEmptyLastItem : bool { kept, dropped };

enum class FNormalForm : std::int32_t { composed = 0 };

} // namespace tessera
