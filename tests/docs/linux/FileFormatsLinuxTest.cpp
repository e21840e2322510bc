// The examples of docs/file-formats.md that stand for what another system has by itself.
#include "persistence/registry/FRegistryEntry.h"
#include "platform/NamedEvent.h"
#include "support/PageExample.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace tessera::test {
namespace {

using testing_support::pageBytes;
using testing_support::pageExample;

TEST(FileFormatsLinux, ANamedEvent) {
    const std::string name = "file-formats-example";
    auto event = platform::NamedEvent::open(name.c_str(), platform::NamedEvent::Reset::byWaiter);
    ASSERT_TRUE(event.isOpen());
    ASSERT_TRUE(event.signal());
    std::ifstream file(std::string(std::getenv("TMPDIR")) + "/Marlgrove/Events/" + name, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    EXPECT_EQ(bytes, pageBytes("named event"));
}

TEST(FileFormatsLinux, ARegistryValue) {
    FRegistryEntry entry("Software\\Marlgrove\\Shared Components", "Path");
    entry.setText("/opt/audio");
    ASSERT_TRUE(entry.putBack());
    std::string file = pageExample("registry value");
    file.pop_back();
    EXPECT_TRUE(std::filesystem::is_regular_file(std::string(std::getenv("XDG_CONFIG_HOME")) + "/" + file)) << file;
    entry.clearText();
    ASSERT_TRUE(entry.putBack());
    EXPECT_FALSE(std::filesystem::exists(std::string(std::getenv("XDG_CONFIG_HOME")) + "/" + file));
}

} // namespace
} // namespace tessera::test
