// What the tests of object documents share: documents as text, golden documents.
#pragma once

#include "persistence/objects/FObjectDocument.h"
#include "persistence/objects/TestNode.h"
#include "persistence/streams/FMemoryStream.h"
#include "persistence/streams/StreamBytes.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace tessera::test {

inline const std::string kDeclarationLine = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n";

// Lines as a document has them.
inline std::string lines(std::initializer_list<const char*> list) {
    std::string text;
    for (const char* line : list) {
        text.append(line).append("\r\n");
    }
    return text;
}

inline std::string goldenFolder() {
    return GOLDEN_DOCUMENTS;
}

inline std::string goldenText(const std::string& name) {
    std::ifstream file(std::filesystem::path(goldenFolder()) / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

inline std::string saved(const FObjectDocument& document, const char* rootTag = "Project") {
    FMemoryStream stream;
    return document.saveDocument(stream, rootTag) ? bytesOf(stream) : "(not saved)";
}

inline std::string savedObject(const CmObject& object, const char* rootTag) {
    FMemoryStream stream;
    return FObjectDocument::saveObject(stream, rootTag, object) ? bytesOf(stream) : "(not saved)";
}

inline bool load(FObjectDocument& document, const std::string& text, const char* rootTag = "Project",
                 const char* onlyRoot = nullptr) {
    FMemoryStream stream(static_cast<const void*>(text.data()), static_cast<std::int32_t>(text.size()));
    return document.loadDocument(stream, rootTag, FStringRef(onlyRoot));
}

inline bool loadObject(CmObject& object, const std::string& text, const char* rootTag) {
    FMemoryStream stream(static_cast<const void*>(text.data()), static_cast<std::int32_t>(text.size()));
    return FObjectDocument::loadObject(stream, rootTag, object);
}

// A document with its IDs replaced by their number in the order in which they occur: IDs are addresses, and differ from
// one run to the next.
std::string renumbered(const std::string& text);

} // namespace tessera::test
