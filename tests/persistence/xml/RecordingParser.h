// A reader that notes what it is told: "<name a=v>" and "</name>" for tags, "<name/>" for empty ones, "[text]" for
// text, "{comment}" for a comment whose last piece it is, "{comment..}" for another.
#pragma once

#include "persistence/streams/FMemoryStream.h"
#include "persistence/xml/FXmlParser.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <string_view>

namespace tessera::test {

class RecordingParser : public FXmlParser {
public:
    using OnStart = std::function<bool(const std::string& name, bool isEmpty, void* context)>;
    using FXmlParser::FXmlParser;
    using FXmlParser::nextByte;
    using FXmlParser::peekByte;
    using FXmlParser::setErrorState;
    using FXmlParser::setRawText;
    using FXmlParser::unreadByte;

    std::string events;
    // After the event has been noted.
    OnStart onStart;
    std::function<bool(std::string_view text)> onCharacters;
    std::function<bool(const std::string& name, void* context)> onEnd;
    // The value of the attribute that came last.
    FString lastValue;

protected:
    bool startElement(const char* name, const FXmlAttributeList& attributes, bool isEmpty, void* context) override {
        events += "<" + std::string(name);
        for (const FXmlAttribute& attribute : attributes) {
            events += " " + std::string(attribute.getName().view8()) + "=" + std::string(attribute.getValue().view8());
            lastValue = attribute.getValue();
        }
        events += isEmpty ? "/>" : ">";
        return !onStart || onStart(name, isEmpty, context);
    }
    bool endElement(const char* name, void* context) override {
        events += "</" + std::string(name) + ">";
        return !onEnd || onEnd(name, context);
    }
    bool characters(const char* text, std::int32_t length, void*) override {
        EXPECT_EQ(text[length], '\0');
        events += "[" + std::string(text, static_cast<std::size_t>(length)) + "]";
        return !onCharacters || onCharacters({text, static_cast<std::size_t>(length)});
    }
    bool comment(const char* text, void*, bool isLast) override {
        events += "{" + std::string(text) + (isLast ? "}" : "..}");
        return true;
    }
};

// A reader over a text.
class TextParser : public RecordingParser {
public:
    explicit TextParser(std::string_view text, FXmlReadAhead readAhead = FXmlReadAhead::block)
        : RecordingParser(nullptr, readAhead),
          text_(text),
          stream_(static_cast<const void*>(text_.data()), static_cast<std::int32_t>(text_.size())) {
        setStream(&stream_);
    }
    // The stream goes before the parser does.
    ~TextParser() override { setStream(nullptr); }

private:
    std::string text_;
    FMemoryStream stream_;
};

} // namespace tessera::test
