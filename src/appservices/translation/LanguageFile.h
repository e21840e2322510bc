// The file "lang.cfg", by which a user chooses the language of the program: its first two bytes are the code.
#pragma once

#include "appservices/translation/LanguageCode.h"

namespace tessera {

class FStream;

// Empty when the file holds less than two bytes. What comes behind them is not looked at.
LanguageCode readLanguageFile(FStream& stream);

} // namespace tessera
