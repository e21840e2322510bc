// The binary form of a document may be broken anywhere: counts, sizes, tags, class names, IDs, nesting. What could be
// read can be written and read again; its objects are built, and what they are then is stored and detached.
#include "fuzz/LeaksAllowed.h"
#include "persistence/attributes/FAttributes.h"
#include "persistence/objects/BinaryForm.h"
#include "persistence/streams/FMemoryStream.h"

#include <cstdint>
#include <cstdlib>
#include <string>

using namespace tessera;

namespace {

// Texts of nearly 50,000 bytes grow when they are written and can't be read again, as is known.
constexpr std::size_t kLongestInput = 40000;

struct Document {
    bool read(const std::string& bytes) {
        std::string copy = bytes;
        FMemoryStream stream(copy.data(), static_cast<std::int32_t>(copy.size()));
        return loadBinary(stream, objects, trees);
    }
    // False when trees stand in each other too deep, which they may do once their references are followed.
    bool write(std::string& bytes) const {
        FMemoryStream stream;
        const bool complete = saveBinary(stream, objects, trees);
        bytes.assign(reinterpret_cast<const char*>(stream.getData()), static_cast<std::size_t>(stream.getSize()));
        return complete;
    }
    void buildAll() {
        for (std::int32_t i = 0; i < objects.getCount(); ++i) {
            objects.getObject(objects.at(i)->getKey());
        }
    }

    FAttributes objects;
    FAttributes trees;
};

void expect(bool condition) {
    if (!condition) {
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Document document;
    if (size > kLongestInput || !document.read(std::string(reinterpret_cast<const char*>(data), size))) {
        return 0;
    }
    std::string bytes;
    if (document.write(bytes)) {
        Document again;
        expect(again.read(bytes));
    }
    document.buildAll();
    if (document.write(bytes)) {
        Document again;
        expect(again.read(bytes));
        again.buildAll();
    }
    FAttributes::detachObjects(document.objects);
    FAttributes::detachObjects(document.trees);
    return 0;
}
