// A listener that notes what it is told, in the form of RecordingParser. The notes outlive it.
#pragma once

#include "persistence/xml/IXmlListener.h"
#include "persistence/xml/IXmlParser.h"

#include <functional>
#include <string>

namespace tessera::test {

struct Notes {
    std::string events;
    // After the event has been noted.
    std::function<void(IXmlParser& parser, const std::string& name)> onStart;
};

class RecordingListener final : public IXmlListener {
public:
    explicit RecordingListener(Notes& notes) : notes_(notes) {}

    void startElement(IXmlParser& parser, const char* name, const char* const* attributes) override {
        notes_.events += "<" + std::string(name);
        for (; *attributes != nullptr; attributes += 2) {
            notes_.events += " " + std::string(attributes[0]) + "=" + attributes[1];
        }
        notes_.events += ">";
        if (notes_.onStart) {
            notes_.onStart(parser, name);
        }
    }
    void endElement(IXmlParser&, const char* name) override { notes_.events += "</" + std::string(name) + ">"; }
    void characters(IXmlParser&, const char* text, std::int32_t length) override {
        notes_.events.append(text, static_cast<std::size_t>(length));
    }
    void comment(IXmlParser&, const char* text) override { notes_.events += "{" + std::string(text) + "}"; }

private:
    Notes& notes_;
};

} // namespace tessera::test
