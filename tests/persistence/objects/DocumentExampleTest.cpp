// The example of docs/file-formats.md is what is read and written.
#include "foundation/containers/CmArray.h"
#include "foundation/containers/CmString.h"
#include "persistence/objects/DocumentSupport.h"
#include "support/PageExample.h"
#include "support/SystemText.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

using namespace test;
using testing_support::pageDocument;

TEST(DocumentExample, IsReadAndWrittenAsItStands) {
    // One text of it is a byte that stays as it is where it means nothing.
    if (const char* reason = testing_support::whyNoUtf8()) {
        GTEST_SKIP() << reason;
    }
    const std::string text = pageDocument("Project.xml");
    FObjectDocument document;
    ASSERT_TRUE(load(document, text));
    // The one reference that leads nowhere loses its ID.
    std::string expected = text;
    expected.replace(expected.find("94003"), 5, "0");
    EXPECT_EQ(saved(document), expected);
}

TEST(DocumentExample, HoldsWhatThePageSays) {
    FObjectDocument document;
    ASSERT_TRUE(load(document, pageDocument("Project.xml")));
    const FAttributes& view = *document.getTree("view");
    double gain = 0;
    EXPECT_TRUE(view.getFloat("gain", gain));
    EXPECT_EQ(gain, 0.1);
    EXPECT_EQ(view.getBinarySize("layout"), 4);
    EXPECT_EQ(view.getObject("selected"), nullptr);
    const auto* first = cmCast<CmArray>(document.getObject("first"));
    ASSERT_NE(first, nullptr);
    ASSERT_EQ(first->getCount(), 2);
    EXPECT_EQ(first->at(0), first->at(1));
    EXPECT_EQ(cmCast<CmString>(first->at(0))->string().view8(), "one");
}

} // namespace
} // namespace tessera
