#include "foundation/containers/CmString.h"

#include "foundation/containers/CmArray.h"
#include "foundation/object/ClassFactory.h"
#include "foundation/object/FRefPtr.h"

#include <gtest/gtest.h>

#include <string_view>
#include <vector>

namespace tessera {
namespace {

TEST(CmString, IsCreatedByName) {
    const auto object =
        FRefPtr<CmObject>::adopt(static_cast<CmObject*>(ClassFactory::getInstance(true)->createInstance("CmString")));
    ASSERT_TRUE(object);
    EXPECT_TRUE(object->isTypeOf("CmString", false));
    EXPECT_TRUE(object->isTypeOf("CmObject", true));
    const auto* const text = cmCast<CmString>(object.get());
    ASSERT_NE(text, nullptr);
    EXPECT_TRUE(text->string().isEmpty());
}

TEST(CmString, AnswersBothStringInterfaces) {
    CmString text(u"caf\u00e9");
    const auto source = queryFor<IStringSource>(&text);
    ASSERT_TRUE(source);
    source->setText8("narrow");
    EXPECT_EQ(text.string().view8(), "narrow");

    const auto result = queryFor<IStringResult>(&text);
    ASSERT_TRUE(result);
    EXPECT_FALSE(result->isWide());
    EXPECT_FALSE(result->isEmpty());
    EXPECT_STREQ(result->getText8(), "narrow");
    EXPECT_EQ(std::u16string_view(result->getText16()), u"narrow");
    EXPECT_TRUE(result->isWide()) << "reading in the other width converts";
    result->setText16(u"wide");
    EXPECT_EQ(text.string().view16(), u"wide");
    result->setText8(nullptr);
    EXPECT_TRUE(result->isEmpty());
}

TEST(CmString, BothInterfacesAreOneTable) {
    CmString text;
    const auto source = queryFor<IStringSource>(&text);
    const auto result = queryFor<IStringResult>(&text);
    EXPECT_EQ(static_cast<void*>(source.get()), static_cast<void*>(result.get()));
    EXPECT_EQ(text.getReferenceCount(), 3u);
}

TEST(CmString, ReceivesTextFromAString) {
    CmString text;
    FStringRef(u"caf\u00e9").sendTo(text);
    EXPECT_EQ(text.string().view16(), u"caf\u00e9");
    FStringRef("bytes").sendTo(text);
    EXPECT_EQ(text.string().view8(), "bytes");
}

TEST(CmString, ComparesByTextAndCase) {
    const CmString a("alpha");
    const CmString sameWide(u"alpha");
    const CmString capital("Alpha");
    const CmString b("beta");
    EXPECT_TRUE(a.isEqual(&sameWide));
    EXPECT_EQ(a.compare(&sameWide), 0);
    EXPECT_FALSE(a.isEqual(&capital));
    EXPECT_GT(a.compare(&capital), 0);
    EXPECT_LT(a.compare(&b), 0);
    EXPECT_GT(b.compare(&a), 0);
}

TEST(CmString, ComparesWithOtherObjectsByAddress) {
    const CmString text("text");
    const CmObject other;
    EXPECT_FALSE(text.isEqual(&other));
    EXPECT_FALSE(text.isEqual(nullptr));
    EXPECT_EQ(text.compare(&other), &text < static_cast<const void*>(&other) ? -1 : 1);
}

TEST(CmString, HashesTheTextInItsWidth) {
    EXPECT_EQ(CmString("ab").hash(50), 6u);
    EXPECT_EQ(CmString(u"ab").hash(50), 6u);
    EXPECT_EQ(CmString().hash(50), 0u);
}

TEST(CmString, ACloneHasATextOfItsOwn) {
    const CmString text("text");
    const auto copy = FRefPtr<CmString>::adopt(text.clone());
    EXPECT_TRUE(copy->isEqual(&text));
    copy->string().append("!");
    EXPECT_EQ(text.string().view8(), "text");
}

struct SplitRow {
    const char* name;
    const char* text;
    FItemForm form;
    FEmptyLastItem emptyLast;
    std::vector<std::string_view> items;
};

class CmStringSplit : public testing::TestWithParam<SplitRow> {
protected:
    static void expectItems(const CmContainer& list, std::int32_t count) {
        const std::vector<std::string_view>& expected = GetParam().items;
        ASSERT_EQ(count, static_cast<std::int32_t>(expected.size()));
        ASSERT_EQ(list.getCount(), count);
        for (std::int32_t i = 0; i < count; ++i) {
            const auto* const item = cmCast<CmString>(list.at(i));
            ASSERT_NE(item, nullptr);
            EXPECT_STREQ(item->string().text8(), std::string(expected[static_cast<std::size_t>(i)]).c_str());
            EXPECT_EQ(item->getReferenceCount(), 1u) << "the list is the only owner";
        }
    }
};

TEST_P(CmStringSplit, FillsTheListInBothWidths) {
    CmArray list;
    expectItems(list, CmString::split(GetParam().text, ';', list, GetParam().form, GetParam().emptyLast));
    EXPECT_EQ(list.getOwnership(), CmOwnership::owner);

    FString wide(GetParam().text);
    CmArray wideList;
    expectItems(wideList, CmString::split(wide.text16(), u';', wideList, GetParam().form, GetParam().emptyLast));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, CmStringSplit,
    testing::Values(SplitRow{"Plain", "a;b;c", FItemForm::asTheyAre, FEmptyLastItem::dropped, {"a", "b", "c"}},
                    SplitRow{"NoSeparator", "abc", FItemForm::asTheyAre, FEmptyLastItem::dropped, {"abc"}},
                    SplitRow{"EmptyPiecesDropped", ";a;;b", FItemForm::asTheyAre, FEmptyLastItem::kept, {"a", "b"}},
                    SplitRow{"EmptyLastKept", "a;", FItemForm::asTheyAre, FEmptyLastItem::kept, {"a", ""}},
                    SplitRow{"EmptyLastDropped", "a;", FItemForm::asTheyAre, FEmptyLastItem::dropped, {"a"}},
                    SplitRow{"BlanksKept", " a ; ", FItemForm::asTheyAre, FEmptyLastItem::dropped, {" a ", " "}},
                    SplitRow{"Trimmed", " a ; b\t; ", FItemForm::trimmed, FEmptyLastItem::dropped, {"a", "b"}},
                    SplitRow{"TrimmedToNothingDropped", "a;  ;b", FItemForm::trimmed, FEmptyLastItem::kept, {"a", "b"}},
                    SplitRow{"TrimmedEmptyLastKept", "a;  ", FItemForm::trimmed, FEmptyLastItem::kept, {"a", ""}},
                    SplitRow{"EmptyTextKept", "", FItemForm::asTheyAre, FEmptyLastItem::kept, {""}},
                    SplitRow{"EmptyTextDropped", "", FItemForm::asTheyAre, FEmptyLastItem::dropped, {}}),
    [](const auto& row) { return row.param.name; });

TEST(CmStringSplit, AddsToWhatIsThereAndNothingForNull) {
    CmArray list;
    EXPECT_EQ(CmString::split("a;b", ';', list, FItemForm::asTheyAre, FEmptyLastItem::dropped), 2);
    EXPECT_EQ(CmString::split("c", ';', list, FItemForm::asTheyAre, FEmptyLastItem::dropped), 3);
    EXPECT_EQ(CmString::split(static_cast<const char*>(nullptr), ';', list, FItemForm::asTheyAre, FEmptyLastItem::kept),
              3);
}

} // namespace
} // namespace tessera
