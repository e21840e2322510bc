#include "persistence/xml/FXmlError.h"

namespace tessera {

const char* xmlErrorText(FXmlError error) {
    switch (error) {
    case FXmlError::malformed:
        return "Xml data malformed!";
    case FXmlError::unexpectedTag:
        return "Unexpected tag or invalid attributes!";
    case FXmlError::endOfFile:
        return "Unexpected end of file!";
    case FXmlError::missingAttributes:
        return "Not enough actual attributes in tag!";
    case FXmlError::tagOutOfPlace:
        return "Unexpected Tag!";
    case FXmlError::none:
        break;
    }
    return "";
}

} // namespace tessera
