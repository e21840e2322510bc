// What gives the layers below this one their texts in the user's language.
#pragma once

namespace tessera {

// From now on persistence looks its fixed texts up in the process's TranslationTable. A program calls it during
// start-up on the main thread, and loads the table; the plug-in module doesn't, and its texts stay English.
void installTranslation();

} // namespace tessera
