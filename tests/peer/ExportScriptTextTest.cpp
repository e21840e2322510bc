#include "peer/ExportScriptText.h"

#include <gtest/gtest.h>

namespace tessera::peer {
namespace {

TEST(ExportScriptText, NamesTheProgramTheEditorAndTheFile) {
    EXPECT_EQ("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<AudioExportPostProcess>\n"
              "    <Executable>\n"
              "        <Name>Tessera Lite</Name>\n"
              "        <Version>9.0.0</Version>\n"
              "        <Path>/opt/tesx-peer</Path>\n"
              "        <Argument>--editor</Argument>\n"
              "        <Argument>sox -R {in} {out} reverse</Argument>\n"
              "        <Argument>$PATH</Argument>\n"
              "    </Executable>\n"
              "</AudioExportPostProcess>\n",
              exportScriptText("/opt/tesx-peer", "sox -R {in} {out} reverse"));
}

TEST(ExportScriptText, ReservedCharactersBecomeEntities) {
    const std::string text = exportScriptText("/a&b", "x '<{in}>' \"{out}\"");
    EXPECT_NE(std::string::npos, text.find("<Path>/a&amp;b</Path>"));
    EXPECT_NE(std::string::npos, text.find("<Argument>x '&lt;{in}&gt;' &quot;{out}&quot;</Argument>"));
}

} // namespace
} // namespace tessera::peer
