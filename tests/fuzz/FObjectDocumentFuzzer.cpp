// A document may hold anything. What could be read is written, read and written again until it stays the same; then the
// objects in it are built.
#include "fuzz/LeaksAllowed.h"
#include "persistence/objects/FObjectDocument.h"

#include "persistence/streams/FMemoryStream.h"

#include <cstdint>
#include <cstdlib>
#include <set>
#include <string>

using namespace tessera;

namespace {

bool load(FObjectDocument& document, const std::string& text, const char* onlyRoot = nullptr) {
    FMemoryStream stream(static_cast<const void*>(text.data()), static_cast<std::int32_t>(text.size()));
    return document.loadDocument(stream, "Project", FStringRef(onlyRoot));
}

std::string saved(const FObjectDocument& document) {
    FMemoryStream stream;
    // What was read is never nested deeper than what can be written.
    if (!document.saveDocument(stream, "Project")) {
        std::abort();
    }
    return std::string(reinterpret_cast<const char*>(stream.getData()), static_cast<std::size_t>(stream.getSize()));
}

// The text after one more reading and writing; empty when it can't be read, as with texts that grew while they were
// escaped.
std::string rewritten(const std::string& text) {
    FObjectDocument document;
    const std::string result = load(document, text) ? saved(document) : std::string();
    document.unlink();
    return result;
}

// Class names aren't escaped, and of two objects with one ID only the first is found: such a document may change each
// time it is written.
bool settlesDown(const std::string& text) {
    const std::string mark = "<obj class=\"";
    std::set<std::string> ids;
    for (std::size_t at = text.find(mark); at != text.npos; at = text.find(mark, at + 1)) {
        const std::size_t end = text.find(">\r\n", at);
        const std::string tag = text.substr(at, end - at);
        const std::size_t id = tag.rfind("ID=\"");
        if (tag.find('&') != tag.npos || id == tag.npos || !ids.insert(tag.substr(id)).second) {
            return false;
        }
    }
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    FObjectDocument one;
    load(one, text, "a");
    one.unlink();
    FObjectDocument document;
    if (!load(document, text)) {
        return 0;
    }
    // What vanishes, as a reference without a target does, does so the first time.
    const std::string first = saved(document);
    const std::string second = rewritten(first);
    if (!second.empty() && settlesDown(second) && rewritten(second) != second) {
        std::abort();
    }
    for (std::int32_t i = 0; i < document.getObjects().getCount(); ++i) {
        document.getObject(document.getObjects().at(i)->getKey());
    }
    saved(document);
    return 0;
}
