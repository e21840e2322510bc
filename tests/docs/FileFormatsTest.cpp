// The examples of docs/file-formats.md that no test of one class has: each is read, and written as it stands.
#include "appservices/formatting/CmDate.h"
#include "appservices/translation/TranslationTable.h"
#include "discovery/registry/ServiceRecord.h"
#include "exportscripts/AudioExportScript.h"
#include "foundation/containers/CmArray.h"
#include "foundation/containers/CmString.h"
#include "persistence/objects/FObjectDocument.h"
#include "persistence/objects/ObjectStreaming.h"
#include "persistence/paths/FNPath.h"
#include "persistence/streams/FMemoryStream.h"
#include "persistence/urls/FUrl.h"
#include "platform/SmallFile.h"
#include "support/PageExample.h"

#include <gtest/gtest.h>

#include <string>

namespace tessera::test {
namespace {

using testing_support::pageBytes;
using testing_support::pageDocument;
using testing_support::pageExample;

std::string bytesOf(const FMemoryStream& stream) {
    return std::string(reinterpret_cast<const char*>(stream.getData()), static_cast<std::size_t>(stream.getSize()));
}

// What the object stores, as a document of its own.
std::string documentOf(const CmObject& object, const char* rootTag) {
    FMemoryStream stream;
    EXPECT_TRUE(FObjectDocument::saveObject(stream, rootTag, object));
    return bytesOf(stream);
}

bool restore(CmObject& object, const char* rootTag, const std::string& document) {
    FMemoryStream stream(static_cast<const void*>(document.data()), static_cast<std::int32_t>(document.size()));
    return FObjectDocument::loadObject(stream, rootTag, object);
}

TEST(FileFormats, ADocumentOfOneObject) {
    const std::string text = pageDocument("Date.xml");
    CmDate date;
    ASSERT_TRUE(restore(date, "Date", text));
    EXPECT_TRUE(date.getText() == "2001-01-31");
    EXPECT_EQ(documentOf(date, "Date"), text);
}

TEST(FileFormats, APathAsATree) {
    const std::string text = pageDocument("Path.xml");
    FNPath path;
    ASSERT_TRUE(restore(path, "Path", text));
    EXPECT_STREQ(path.FPath::getFullPath().text8(), "C:\\Music\\take.wav");
    EXPECT_TRUE(path.isFile());
    EXPECT_TRUE(path.fileType().getDosType() == "wav");
    EXPECT_EQ(documentOf(path, "Path"), text);
}

TEST(FileFormats, AUrlAsATree) {
    const std::string text = pageDocument("Url.xml");
    FUrl url;
    ASSERT_TRUE(restore(url, "Url", text));
    EXPECT_STREQ(url.getFullPath().text8(), "http://example.org:8080/a/take.wav");
    EXPECT_EQ(documentOf(url, "Url"), text);
}

TEST(FileFormats, APathOnAStream) {
    const std::string bytes = pageBytes("path on a stream");
    FMemoryStream stream(static_cast<const void*>(bytes.data()), static_cast<std::int32_t>(bytes.size()));
    FNPath path;
    ASSERT_TRUE(static_cast<CmObject&>(path).read(stream));
    EXPECT_EQ(stream.tell(), stream.getSize());
    EXPECT_STREQ(path.FPath::getFullPath().text8(), "C:\\take.wav");
    EXPECT_TRUE(path.fileType().getDosType() == "wav");
    FMemoryStream written;
    ASSERT_TRUE(static_cast<CmObject&>(path).write(written));
    EXPECT_EQ(bytesOf(written), bytes);
}

TEST(FileFormats, AContainerOnAStream) {
    const std::string bytes = pageBytes("array on a stream");
    FMemoryStream stream(static_cast<const void*>(bytes.data()), static_cast<std::int32_t>(bytes.size()));
    CmObject* object = nullptr;
    ASSERT_TRUE(readObject(stream, "CmContainer", object));
    const auto array = FRefPtr<CmArray>::adopt(cmCast<CmArray>(object));
    EXPECT_EQ(stream.tell(), stream.getSize());
    ASSERT_EQ(array->getCount(), 2);
    EXPECT_EQ(array->getOwnership(), CmOwnership::owner);
    EXPECT_TRUE(cmCast<CmString>(array->at(0))->string() == "Rain");
    EXPECT_TRUE(cmCast<CmString>(array->at(1))->string() == u"ä");
    FMemoryStream written;
    ASSERT_TRUE(writeObject(written, array.get()));
    EXPECT_EQ(bytesOf(written), bytes);
}

TEST(FileFormats, ATranslationFileOfTheOlderForm) {
    const std::string text = pageExample("translation of the older form");
    TranslationTable table;
    table.setLanguage("fr");
    ASSERT_TRUE(table.loadFromMemory(text.data(), text.size()));
    EXPECT_TRUE(table.translateKey("Open") == u"Ouvrir & fermer") << "no entities";
    ASSERT_EQ(table.getLanguages().size(), 2u);
}

TEST(FileFormats, AServiceRecord) {
    const std::string text = pageExample("service record");
    ServiceRecord record;
    record.parse(text);
    EXPECT_EQ(record.processName, "tesx-peer");
    EXPECT_EQ(record.processId, 4711);
    EXPECT_EQ(record.type, "tesxcon_nanomsg");
    // Each line has the line end of the system.
    std::string lines;
    for (const char c : text) {
        lines += c == '\n' ? std::string(platform::kLineEnding) : std::string(1, c);
    }
    EXPECT_EQ(record.format(), lines);
}

TEST(FileFormats, AnExportScript) {
    const AudioExportScript script = parseScriptText(pageExample("export script"));
    EXPECT_EQ(script.name, "Tessera Lite");
    EXPECT_TRUE(isAccepted(script));
    EXPECT_STREQ(script.path.FPath::getFullPath().text8(), "\\usr\\local\\bin\\tesx-peer");
    EXPECT_EQ(script.arguments, (std::vector<std::string>{"--editor", "sox -R {in} {out} reverse", "$PATH"}));
}

} // namespace
} // namespace tessera::test
