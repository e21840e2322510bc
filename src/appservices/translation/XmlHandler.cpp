#include "appservices/translation/XmlHandler.h"

#include "appservices/translation/ITranslationListener.h"
#include "persistence/xml/IXmlParser.h"

#include <algorithm>
#include <limits>

namespace tessera {
namespace {

// The parser has made sure that it is UTF-8.
FString widened(std::string_view utf8) {
    FString text;
    text.assignUtf8(utf8.data(), static_cast<std::int32_t>(utf8.size()));
    return text;
}

std::int32_t lineOf(const IXmlParser& parser) {
    return static_cast<std::int32_t>(
        std::min<std::int64_t>(parser.lineNumber(), std::numeric_limits<std::int32_t>::max()));
}

} // namespace

void XmlHandler::startElement(IXmlParser& parser, const char* name, const char* const* attributes) {
    if (!stopped_ && !open(name, attributes)) {
        stop(parser);
    }
}

bool XmlHandler::open(std::string_view name, const char* const* attributes) {
    switch (state_) {
    case State::outside:
        return openOutside(name);
    case State::languageTable:
        return openLanguage(name, attributes);
    case State::language:
        return false;
    case State::stringTable:
        return openString(name, attributes);
    case State::string:
        return openText(name);
    }
    return false;
}

bool XmlHandler::openOutside(std::string_view name) {
    if (!inRoot_) {
        inRoot_ = name == "Translation";
        return inRoot_;
    }
    if (name == "LanguageTable") {
        state_ = State::languageTable;
    } else if (name == "StringTable") {
        state_ = State::stringTable;
    }
    return state_ != State::outside;
}

bool XmlHandler::openLanguage(std::string_view name, const char* const* attributes) {
    const bool hasKey = attributes[0] != nullptr && attributes[0] == std::string_view("key");
    if (name != "language" || !hasKey || attributes[2] != nullptr) {
        return false;
    }
    code_ = attributes[1];
    text_.clear();
    state_ = State::language;
    return true;
}

bool XmlHandler::openString(std::string_view name, const char* const* attributes) {
    if (name != "String") {
        return false;
    }
    for (; attributes[0] != nullptr; attributes += 2) {
        const std::string_view attribute = attributes[0];
        if (attribute == "key" || attribute == "Key") {
            key_ = widened(attributes[1]);
            state_ = State::string;
            return true;
        }
    }
    return false;
}

bool XmlHandler::openText(std::string_view name) {
    if (inText_) {
        return false;
    }
    code_ = name;
    text_.clear();
    inText_ = true;
    return true;
}

void XmlHandler::endElement(IXmlParser& parser, const char*) {
    if (stopped_) {
        return;
    }
    switch (state_) {
    case State::outside:
        inRoot_ = false;
        break;
    case State::language:
        listener_.addLanguage(code_, widened(text_).view16());
        state_ = State::languageTable;
        break;
    case State::string:
        if (!inText_) {
            state_ = State::stringTable;
        } else if (!closeText(parser)) {
            stop(parser);
        }
        break;
    case State::languageTable:
    case State::stringTable:
        state_ = State::outside;
        break;
    }
}

bool XmlHandler::closeText(IXmlParser& parser) {
    inText_ = false;
    ++stringCount_;
    if (!listener_.wants(code_)) {
        return true;
    }
    return listener_.addTranslation(key_.view16(), code_, widened(text_).view16(), lineOf(parser), errorMessage_) !=
           kResultFailure;
}

void XmlHandler::characters(IXmlParser&, const char* text, std::int32_t length) {
    if (inText_ || state_ == State::language) {
        text_.append(text, static_cast<std::size_t>(length));
    }
}

// The parser may make one more call after it was stopped.
void XmlHandler::stop(IXmlParser& parser) {
    stopped_ = true;
    parser.stop(false);
}

void XmlHandler::comment(IXmlParser&, const char*) {}

} // namespace tessera
