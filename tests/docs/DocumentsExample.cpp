#include "docs/Marker.h"
#include "foundation/containers/CmOrderedArray.h"
#include "persistence/objects/DocumentFolders.h"
#include "persistence/objects/FObjectDocument.h"
#include "persistence/objects/FObjectFiles.h"
#include "persistence/streams/FMemoryStream.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

namespace tessera::test {
namespace {

// [documents]
bool saveSong(FStream& stream, CmContainer& markers, Marker& selected) {
    FAttributes view;
    view.setObject("selected", &selected);
    FObjectDocument document;
    return document.addObject("markers", markers) && document.addTree("view", view) &&
           document.saveDocument(stream, "Song");
}

bool loadSong(FStream& stream, FRefPtr<CmContainer>& markers, FRefPtr<Marker>& selected) {
    FObjectDocument document;
    const bool read = document.loadDocument(stream, "Song");
    if (read) {
        markers = cmCast<CmContainer>(document.getObject("markers")); // built now
        const FAttributes* view = document.getTree("view");
        selected = view != nullptr ? cmCast<Marker>(view->getObject("selected")) : nullptr;
    }
    document.unlink(); // objects that refer to each other in a circle go as well
    return read;
}
// [documents]

// [document files]
bool saveMarkers(const CmContainer& markers) {
    return FObjectFiles::saveObject("Markers", "Markers", markers);
}

bool loadMarkers(CmContainer& markers) {
    return FObjectFiles::loadObject("Markers", "Markers", markers);
}
// [document files]

TEST(DocumentsExample, AnObjectThatTwoHoldIsOneAgain) {
    CmOrderedArray markers;
    markers.setOwnership(CmOwnership::owner);
    markers.add(new Marker("Verse", 12));
    auto* chorus = new Marker("Chorus", 30);
    markers.add(chorus);
    FMemoryStream stream;
    ASSERT_TRUE(saveSong(stream, markers, *chorus));

    stream.rewind();
    FRefPtr<CmContainer> loaded;
    FRefPtr<Marker> selected;
    ASSERT_TRUE(loadSong(stream, loaded, selected));
    ASSERT_TRUE(loaded);
    ASSERT_EQ(loaded->getCount(), 2);
    EXPECT_EQ(loaded->at(1), selected.get());
    EXPECT_TRUE(selected->getName() == "Chorus");
    EXPECT_EQ(selected->getSeconds(), 30);
}

TEST(DocumentsExample, AnotherRootTagIsRefused) {
    FMemoryStream stream;
    FObjectDocument document;
    ASSERT_TRUE(document.saveDocument(stream, "Mixer"));
    stream.rewind();
    FRefPtr<CmContainer> markers;
    FRefPtr<Marker> selected;
    EXPECT_FALSE(loadSong(stream, markers, selected));
    EXPECT_FALSE(markers);
}

TEST(DocumentsExample, ADocumentIsAFileOfTheProgram) {
    const testing_support::ScratchFolder user;
    const testing_support::ScratchFolder module;
    const DocumentFolders folders(user.path(), module.path());
    CmOrderedArray markers;
    markers.setOwnership(CmOwnership::owner);
    markers.add(new Marker("Verse", 12));
    ASSERT_TRUE(saveMarkers(markers));
    EXPECT_TRUE(user.has("Markers.xml"));
    EXPECT_EQ(user.entryCount(), 1u);
    CmOrderedArray loaded;
    ASSERT_TRUE(loadMarkers(loaded));
    ASSERT_EQ(loaded.getCount(), 1);
    EXPECT_EQ(cmCast<Marker>(loaded.at(0))->getSeconds(), 12);
}

} // namespace
} // namespace tessera::test
