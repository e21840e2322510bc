#include "components/ComponentVersion.h"

#include "foundation/text/FString.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

using Parts = std::array<std::int32_t, 4>;

TEST(ComponentVersion, IsFourNumbers) {
    const struct {
        const char* text;
        Parts parts;
    } rows[] = {
        {"1.5.10.6", {1, 5, 10, 6}}, {"2", {2, 0, 0, 0}},
        {"2.5.1", {2, 5, 1, 0}},     {"1.2.3.4.5", {1, 2, 3, 4}},
        {"", {0, 0, 0, 0}},          {"abc", {0, 0, 0, 0}},
        {"1.x.3", {1, 0, 0, 0}},     {"3-4.5", {3, 0, 0, 0}},
        {"1..2", {1, 0, 0, 0}},      {"99999999999.1", {0x7fffffff, 1, 0, 0}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(ComponentVersion::parse(row.text).parts, row.parts);
        FString wide(row.text);
        wide.toWide();
        EXPECT_EQ(ComponentVersion::parse(wide).parts, row.parts);
    }
}

TEST(ComponentVersion, ComparesFromTheMostSignificantNumberDown) {
    const auto parse = [](const char* text) { return ComponentVersion::parse(text); };
    EXPECT_LT(parse("1.9.9.9"), parse("2"));
    EXPECT_LT(parse("1.5.9"), parse("1.5.10"));
    EXPECT_GE(parse("1.5.10.6"), parse("1.5.10.6"));
    EXPECT_GT(parse("1.5.10.6"), parse("1.5.10"));
}

} // namespace
} // namespace tessera
