// Percent coding: bytes of a text spelled as "%" and two hexadecimal digits, as URLs have them.
#pragma once

namespace tessera {

class FString;

// Each "%" with two hexadecimal digits behind it becomes that byte; any other "%" stays. A 16-bit text goes through
// UTF-8 and back; when the bytes are none it stays as 8-bit text, and the answer is false.
bool decodePercent(FString& text);

// The reverse, for a 16-bit text in its UTF-8 form. Letters and digits of ASCII and "-._~/" stand for themselves.
void encodePercent(FString& text);

} // namespace tessera
