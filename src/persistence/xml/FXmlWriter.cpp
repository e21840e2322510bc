#include "persistence/xml/FXmlWriter.h"

#include "persistence/xml/XmlEscape.h"

#include <algorithm>
#include <string>
#include <utility>

namespace tessera {

namespace {

bool append(CmBuffer& buffer, std::string_view text) {
    return buffer.append(text.data(), static_cast<std::int32_t>(text.size()));
}

// Of both widths as bytes: 8-bit text as it is, 16-bit text as UTF-8.
FString bytesOf(const FStringRef& text) {
    FString bytes(text);
    if (bytes.isWide()) {
        bytes.toMultiByte(CodePage::utf8);
    }
    return bytes;
}

bool isControl(char byte) {
    return static_cast<unsigned char>(byte) < 0x20 || byte == 0x7F;
}

FResult resultOf(bool done) {
    return done ? kResultOk : kResultFailure;
}

} // namespace

FXmlWriter::~FXmlWriter() = default;

void FXmlWriter::setOption(FXmlWriterOption option, bool on) {
    const auto bit = static_cast<std::uint32_t>(option);
    options_ = on ? options_ | bit : options_ & ~bit;
}

bool FXmlWriter::startElement(const FStringRef& name, const FXmlAttributeList& attributes, bool isEmpty) {
    line_.setFill(0);
    bool done = append(line_, "<") && appendText(name);
    for (const FXmlAttribute& attribute : attributes) {
        done = done && appendAttribute(attribute);
    }
    if (!done || !append(line_, isEmpty ? "/>" : ">") || !writeLine(line(), getDepth())) {
        return false;
    }
    if (!isEmpty) {
        tagStack_.emplace_back(name);
    }
    return true;
}

bool FXmlWriter::endElement(const FStringRef& name) {
    if (tagStack_.empty() || tagStack_.back().compare(name) != 0) {
        return false;
    }
    tagStack_.pop_back();
    line_.setFill(0);
    return append(line_, "</") && appendText(name) && append(line_, ">") && writeLine(line(), getDepth());
}

bool FXmlWriter::comment(const FStringRef& text) {
    const FString bytes = bytesOf(text);
    std::string stripped(bytes.view8());
    std::erase_if(stripped, isControl);
    if (stripped.empty()) {
        return true;
    }
    line_.setFill(0);
    return append(line_, "<!-- ") && append(line_, stripped) && append(line_, " -->") && writeLine(line(), getDepth());
}

bool FXmlWriter::characters(const FStringRef& text) {
    const FString bytes = bytesOf(text);
    std::string_view rest = bytes.view8();
    bool done = true;
    while (done && !rest.empty()) {
        const std::string_view first = rest.substr(0, rest.find_first_of("\r\n"));
        done = writeLine(first, getDepth());
        rest.remove_prefix(std::min(first.size() + 1, rest.size()));
    }
    return done;
}

FResult FXmlWriter::openElement(const char* name, const char* const* attributes, bool isEmpty) {
    if (name == nullptr) {
        return kInvalidArgument;
    }
    FXmlAttributeList list;
    for (const char* const* at = attributes; at != nullptr && at[0] != nullptr && at[1] != nullptr; at += 2) {
        list.add(at[0], at[1]);
    }
    return resultOf(startElement(name, list, isEmpty));
}

FResult FXmlWriter::closeElement(const char* name) {
    return name != nullptr ? resultOf(endElement(name)) : kInvalidArgument;
}

FResult FXmlWriter::addComment(const char* text) {
    return text != nullptr ? resultOf(comment(text)) : kInvalidArgument;
}

FResult FXmlWriter::addText(const char* text) {
    return text != nullptr ? resultOf(characters(text)) : kInvalidArgument;
}

bool FXmlWriter::writeLine(std::string_view text, std::int32_t depth) {
    if (text.empty()) {
        return true;
    }
    output_.setFill(0);
    for (std::int32_t i = 0; i < depth; ++i) {
        append(output_, "\t");
    }
    if (!append(output_, text) || !append(output_, "\r\n")) {
        return false;
    }
    const std::int32_t count = output_.getFill();
    return stream_ && stream_->write(output_.getData(), count) == count;
}

bool FXmlWriter::appendText(const FStringRef& text) {
    return append(line_, bytesOf(text).view8());
}

bool FXmlWriter::appendAttribute(const FXmlAttribute& attribute) {
    const FString& value = attribute.getValue();
    if (value.isEmpty() && hasOption(FXmlWriterOption::skipEmptyValues)) {
        return true;
    }
    if (!append(line_, " ") || !appendText(attribute.getName()) || !append(line_, "=\"")) {
        return false;
    }
    if (!hasOption(FXmlWriterOption::escapeValues)) {
        return appendText(value) && append(line_, "\"");
    }
    const bool done = value.isWide() ? escapeWide(line_, value.view16()) : escape8(line_, value.view8(), false);
    return done && append(line_, "\"");
}

std::string_view FXmlWriter::line() const {
    return {reinterpret_cast<const char*>(line_.getData()), static_cast<std::size_t>(line_.getFill())};
}

} // namespace tessera
