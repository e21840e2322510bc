// Whatever class is registered, now or later: a fresh object of it that is saved comes back the same.
#include "foundation/object/ClassFactory.h"
#include "foundation/object/CmObject.h"
#include "foundation/object/FRefPtr.h"
#include "persistence/streams/FMemoryStream.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>

namespace tessera {
namespace {

// These hold nothing when they are fresh, and nothing has no stream form.
constexpr std::string_view kWithoutForm[] = {"CmDelegatingUnknown", "FAttributeValue", "FIntIDAttribute",
                                             "FStringIDAttribute"};

std::string bytesOf(const FMemoryStream& stream) {
    return std::string(reinterpret_cast<const char*>(stream.getData()), static_cast<std::size_t>(stream.getSize()));
}

TEST(ClassSweep, AFreshObjectOfEachClassIsWrittenAndReadBackTheSame) {
    const ClassFactory& registry = *ClassFactory::getInstance(true);
    int written = 0;
    for (const FMetaClass* record : registry.getRecords()) {
        const auto object = FRefPtr<CmObject>::adopt(registry.createObject(record->getName()));
        if (!object) {
            continue;
        }
        SCOPED_TRACE(record->getName());
        FMemoryStream first;
        const bool hasForm =
            std::find(std::begin(kWithoutForm), std::end(kWithoutForm), record->getName()) == std::end(kWithoutForm);
        EXPECT_EQ(object->write(first), hasForm);
        if (!hasForm) {
            continue;
        }
        first.rewind();
        const auto again = FRefPtr<CmObject>::adopt(registry.createObject(record->getName()));
        EXPECT_TRUE(again->read(first));
        EXPECT_EQ(first.tell(), first.getSize()) << "all of the form is read";
        FMemoryStream second;
        EXPECT_TRUE(again->write(second));
        EXPECT_EQ(bytesOf(second), bytesOf(first));
        ++written;
    }
    EXPECT_GE(written, 15);
}

} // namespace
} // namespace tessera
