// A text on a stream in the form of FString::writeString, without a string having to be made of it.
#pragma once

namespace tessera {

class FStream;
class FStringRef;

bool writeStreamText(FStream& stream, const FStringRef& text);

} // namespace tessera
