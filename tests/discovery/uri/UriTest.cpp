#include "discovery/uri/Uri.h"

#include <gtest/gtest.h>

namespace tessera::test {
namespace {

struct PathRow {
    const char* name;
    const char* path;
    const char* normal;
};

class EveryPath : public testing::TestWithParam<PathRow> {};
INSTANTIATE_TEST_SUITE_P(
    Paths, EveryPath,
    testing::Values(PathRow{"Empty", "", ""}, PathRow{"Plain", "a/b/c", "a/b/c"}, PathRow{"Absolute", "/a/b", "/a/b"},
                    PathRow{"Root", "/", "/"}, PathRow{"Dot", ".", ""}, PathRow{"DotsInside", "a/./b/.", "a/b"},
                    PathRow{"Back", "a/b/../c", "a/c"}, PathRow{"BackBeyondTheStart", "a/../../b", "../b"},
                    PathRow{"BackTwiceBeyond", "../../b", "../../b"}, PathRow{"BackToNothing", "a/..", ""},
                    PathRow{"BackAboveTheRoot", "/../a", "/../a"}, PathRow{"BackToTheRoot", "/a/..", "/"},
                    PathRow{"TrailingSlash", "a/b/", "a/b"}, PathRow{"DoubleSlash", "a//b", "a/b"},
                    PathRow{"Drive", "c:/a/../b", "c:/b"}, PathRow{"DriveAlone", "c:", "c:"},
                    PathRow{"DriveRoot", "c:/", "c:/"}, PathRow{"DriveWithoutSlash", "c:a", "c:/a"},
                    PathRow{"DriveBehindASlash", "/C:/a/./b", "/C:/a/b"}, PathRow{"DriveBack", "c:/../a", "c:/../a"},
                    PathRow{"DigitIsNoDrive", "1:/a/..", "1:"}, PathRow{"Network", "//host/a/../b", "//host/b"},
                    PathRow{"NetworkBack", "//host/../b", "//host/../b"}, PathRow{"ShortestNetwork", "//h/", "//h/"},
                    PathRow{"NoHost", "///a", "/a"}, PathRow{"HostWithoutSlash", "//host", "/host"},
                    PathRow{"NameOfDots", "a/.../b", "a/.../b"}, PathRow{"DotInFront", "./a", "a"},
                    PathRow{"Utf8", "/\xc3\xa4/\xf0\x9f\x8e\xb5/..", "/\xc3\xa4"}),
    [](const auto& row) { return row.param.name; });

TEST_P(EveryPath, BecomesNormal) {
    EXPECT_EQ(Uri::normalizedPath(GetParam().path), GetParam().normal);
}

TEST_P(EveryPath, StaysNormal) {
    EXPECT_EQ(Uri::normalizedPath(GetParam().normal), GetParam().normal);
}

TEST(Uri, OfAPathHasAPathAlone) {
    const Uri uri = Uri::fromPath("/a/./b");
    EXPECT_EQ(uri.path, "/a/b");
    EXPECT_EQ(uri.scheme + uri.authority + uri.query + uri.fragment, "");
}

TEST(Uri, LastComponentStandsBehindTheLastSlash) {
    EXPECT_EQ(Uri::fromPath("/a/b").lastComponent(), "b");
    EXPECT_EQ(Uri::fromPath("b").lastComponent(), "b");
    EXPECT_EQ(Uri::fromPath("/").lastComponent(), "");
}

TEST(Uri, ChildKeepsTheRestOfTheUri) {
    Uri folder = Uri::fromPath("/a");
    folder.scheme = "file";
    EXPECT_EQ(folder.child("b").path, "/a/b");
    EXPECT_EQ(folder.child("b").scheme, "file");
    EXPECT_EQ(Uri::fromPath("/").child("b").path, "/b");
    EXPECT_EQ(Uri().child("b").path, "b");
}

} // namespace
} // namespace tessera::test
