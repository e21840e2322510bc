#include "appservices/translation/PseudoText.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

TEST(PseudoText, WrapsTheTextAndGivesEachVowelAGraveAccent) {
    EXPECT_EQ(pseudoText(u"Save As"), u"_Sàvè Às_");
    EXPECT_EQ(pseudoText(u"AaEeIiOoUu"), u"_ÀàÈèÌìÒòÙù_");
    EXPECT_EQ(pseudoText(u"xyz ÄöY"), u"_xyz ÄöY_");
    EXPECT_EQ(pseudoText(u""), u"__");
}

TEST(PseudoText, LeavesConversionsAlone) {
    EXPECT_EQ(pseudoText(u"%u of %i at %e"), u"_%u òf %i àt %e_");
    EXPECT_EQ(pseudoText(u"%5.2a|%-+ #0o|%E %A"), u"_%5.2a|%-+ #0o|%E %A_");
    EXPECT_EQ(pseudoText(u"%I64u and %lu"), u"_%I64u ànd %lu_");
    EXPECT_EQ(pseudoText(u"100%, u"), u"_100%, ù_");
    EXPECT_EQ(pseudoText(u"100%% a"), u"_100%% à_");
    EXPECT_EQ(pseudoText(u"%"), u"_%_");
}

TEST(PseudoText, ShowsNoContext) {
    EXPECT_EQ(pseudoText(u"Copy{{Noun}}"), u"_Còpy_");
}

} // namespace
} // namespace tessera
