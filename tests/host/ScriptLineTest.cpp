#include "host/program/ScriptLine.h"

#include <gtest/gtest.h>

namespace tessera::host {
namespace {

using Words = std::vector<std::string>;

struct LineRow {
    const char* line;
    Words words;
};

TEST(ScriptLine, BlanksSeparateAndQuotesHoldTogether) {
    const LineRow rows[] = {
        {"", {}},
        {"  \t ", {}},
        {"# a remark", {}},
        {"show", {"show"}},
        {"  add  a.wav at\t2 \r", {"add", "a.wav", "at", "2"}},
        {"open \"my song.tesxproject\"", {"open", "my song.tesxproject"}},
        {"open \"\"", {"open", ""}},
        {"open my\" s\"ong", {"open", "my song"}},
        {"open a#b # remark", {"open", "a#b"}},
        {"open C:\\songs\\a.wav", {"open", "C:\\songs\\a.wav"}},
    };
    for (const LineRow& row : rows) {
        EXPECT_EQ(splitScriptLine(row.line), row.words) << row.line;
    }
}

TEST(ScriptLine, AnOpenQuoteGivesNothing) {
    EXPECT_EQ(splitScriptLine("open \"a.wav"), std::nullopt);
    EXPECT_EQ(splitScriptLine("\""), std::nullopt);
}

} // namespace
} // namespace tessera::host
