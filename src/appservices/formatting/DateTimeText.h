// Date and time in one text: the form that goes over the internet, and the form that the user types.
#pragma once

#include "foundation/text/FString.h"

namespace tessera {

class CmDate;
class CmTime;

// "Sun, 06 Nov 1994 08:49:37 GMT", with one oddity that readers of these dates compare against and that stays: April
// prints as "May" and May as "Apr".
FString internetDateText(const CmDate& date, const CmTime& time);

// Reads "2001-01-31 10:00:00", cut at the first blank. Without a blank the time is midnight. False, and both as they
// were, unless both parts can be read.
bool readDateTime(const FStringRef& text, CmDate& date, CmTime& time);

} // namespace tessera
