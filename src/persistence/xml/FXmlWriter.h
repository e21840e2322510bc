// FXmlWriter: writes elements, text and comments into a stream, each as a line of its own, indented with tabs by the
// depth of open elements and ended with CR LF.
//
// It knows which elements are open: an end tag that doesn't match the innermost one is refused. Attribute values are
// escaped for our own readers; 16-bit values become UTF-8. Text goes out as it is: whoever writes it has escaped it.
// Every operation is false when the stream takes less than it is given.
#pragma once

#include "foundation/containers/CmBuffer.h"
#include "foundation/object/CmClass.h"
#include "foundation/object/FRefPtr.h"
#include "foundation/text/FString.h"
#include "persistence/streams/FStream.h"
#include "persistence/xml/FXmlAttributeList.h"
#include "persistence/xml/IXmlWriter.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace tessera {

enum class FXmlWriterOption : std::uint32_t {
    skipEmptyValues = 1,
    escapeValues = 2,
};

class FXmlWriter : public CmClass<FXmlWriter, CmObject, IXmlWriter> {
public:
    static FMetaClass metaClass;

    // Holds a reference of the stream. A null stream takes nothing.
    explicit FXmlWriter(FStream* stream) : stream_(stream) {}
    FXmlWriter(const FXmlWriter&) = delete;
    FXmlWriter& operator=(const FXmlWriter&) = delete;
    ~FXmlWriter() override;

    // Values are escaped unless it is switched off; empty ones are written unless it is switched on.
    void setOption(FXmlWriterOption option, bool on);
    bool hasOption(FXmlWriterOption option) const { return (options_ & static_cast<std::uint32_t>(option)) != 0; }
    std::int32_t getDepth() const { return static_cast<std::int32_t>(tagStack_.size()); }

    bool startElement(const FStringRef& name, const FXmlAttributeList& attributes, bool isEmpty);
    // False, and nothing written, when another element is open, or none.
    bool endElement(const FStringRef& name);
    // Without its control characters, in one line; nothing is written of a comment that is empty then.
    bool comment(const FStringRef& text);
    // Line by line, whatever ends the lines; empty lines are left out.
    bool characters(const FStringRef& text);

    FResult openElement(const char* name, const char* const* attributes, bool isEmpty) override;
    FResult closeElement(const char* name) override;
    FResult addComment(const char* text) override;
    FResult addText(const char* text) override;

protected:
    // One line of the document, without its end. An empty one writes nothing.
    virtual bool writeLine(std::string_view text, std::int32_t depth);

private:
    bool appendText(const FStringRef& text);
    bool appendAttribute(const FXmlAttribute& attribute);
    std::string_view line() const;

    FRefPtr<FStream> stream_;
    std::vector<FString> tagStack_;
    std::uint32_t options_ = static_cast<std::uint32_t>(FXmlWriterOption::escapeValues);
    CmBuffer line_;
    // The line with indent and end, which goes out in one call.
    CmBuffer output_;
};

} // namespace tessera
