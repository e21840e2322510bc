// Which codeset the system's code page is, by the environment of the process. Each case is a process of its own.
#include "support/ScopedLocale.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

namespace tessera {
namespace {

// The helper's output for the bytes, given in hexadecimal, with these settings and no others that name a locale.
std::string runHelper(const std::string& settings, const std::string& bytes) {
    const std::string command = "env -u LC_ALL -u LC_CTYPE -u LANG " + settings + " '" CODE_PAGE_HELPER "' " + bytes;
    FILE* const pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) {
        return "no helper";
    }
    char line[256] = "";
    static_cast<void>(std::fgets(line, sizeof line, pipe) == nullptr);
    pclose(pipe);
    return line;
}

struct EnvironmentRow {
    const char* name;
    const char* settings;
};

class SystemCodesetUtf8 : public testing::TestWithParam<EnvironmentRow> {};

TEST_P(SystemCodesetUtf8, IsUtf8) {
    EXPECT_EQ(runHelper(GetParam().settings, "c3a9"), "00e9 65001");
    EXPECT_EQ(runHelper(GetParam().settings, "e9"), "invalid 65001");
}

INSTANTIATE_TEST_SUITE_P(Rows, SystemCodesetUtf8,
                         testing::Values(EnvironmentRow{"NothingSet", ""}, EnvironmentRow{"C", "LC_ALL=C"},
                                         EnvironmentRow{"Posix", "LC_ALL=POSIX"},
                                         EnvironmentRow{"CUtf8", "LANG=C.UTF-8"},
                                         EnvironmentRow{"LowerCase", "LANG=en_GB.utf8"},
                                         EnvironmentRow{"EmptyIsNotSet", "LC_ALL= LANG=C.UTF-8"},
                                         EnvironmentRow{"NotInstalledUtf8", "LANG=xx_NOWHERE.UTF-8"},
                                         EnvironmentRow{"NotInstalled", "LANG=xx_NOWHERE.ISO-8859-1"}),
                         [](const auto& row) { return row.param.name; });

TEST(SystemCodeset, ALocaleWithBytesOfItsOwnIsFollowed) {
    const test::ScopedLocale german("de_DE", "ISO-8859-15");
    if (!german.isUsable()) {
        GTEST_SKIP() << "this machine can't build the locale";
    }
    const std::string path = "LOCPATH='" + german.folder().string() + "' ";
    EXPECT_EQ(runHelper(path + "LANG=" + german.name(), "e9a4"), "00e9 20ac 0");
    EXPECT_EQ(runHelper(path + "LC_CTYPE=" + german.name(), "e9a4"), "00e9 20ac 0");
    EXPECT_EQ(runHelper(path + "LC_ALL=C LC_CTYPE=" + german.name(), "c3a9"), "00e9 65001") << "LC_ALL comes first";
}

} // namespace
} // namespace tessera
