#include "host/HostFixture.h"

#include "host/model/HostFile.h"
#include "shell/hostapi/IUrlFactory.h"
#include "support/Skips.h"

#include <filesystem>
#include <fstream>

namespace tessera::host {
namespace {

using testing_support::pathOfUtf8;

class HostFileTest : public HostFixture {
protected:
    FRefPtr<IUrlFactory> file(const std::u16string& path, int isFolder = 0) {
        FRefPtr<IUrlFactory> result = service<IUrlFactory>();
        EXPECT_EQ(result->setPath(path.c_str(), isFolder), kResultOk);
        return result;
    }
    std::u16string folder() { return pathOfUtf8(path("")).parent_path().u16string(); }
    // With the system's separator between the two.
    static std::u16string below(const std::u16string& folder, const std::u16string& name) {
        return (std::filesystem::path(folder) / name).u16string();
    }

    static std::u16string pathOf(IHostFile& file) {
        char16_t buffer[kHostPathUnits];
        file.path(buffer);
        return buffer;
    }
    static std::u16string nameOf(IHostFile& file) {
        char16_t buffer[kHostPathUnits];
        file.name(buffer);
        return buffer;
    }
};

TEST_F(HostFileTest, EachQueryGivesAnotherEmptyFile) {
    const auto first = service<IUrlFactory>();
    const auto second = service<IUrlFactory>();
    EXPECT_NE(first.get(), second.get());
    EXPECT_EQ(pathOf(*first), u"");
}

TEST_F(HostFileTest, GoesDownFromFoldersAlone) {
    const auto target = file(u"/home/anna", 1);
    EXPECT_EQ(target->append(u"Audio", 1), kResultOk);
    EXPECT_EQ(target->append(u"\u00E4 \U0001F3B5.wav", 0), kResultOk);
    EXPECT_EQ(pathOf(*target), below(below(u"/home/anna", u"Audio"), u"\u00E4 \U0001F3B5.wav"));
    EXPECT_EQ(nameOf(*target), u"\u00E4 \U0001F3B5.wav");
    EXPECT_EQ(target->append(u"more", 0), kResultFalse);
    EXPECT_EQ(target->append(nullptr, 0), kInvalidArgument);
    EXPECT_EQ(target->append(u"", 0), kInvalidArgument);
}

TEST_F(HostFileTest, ACloneIsIndependent) {
    const auto original = file(u"/home/anna", 1);
    FRefPtr<IHostFile> clone;
    EXPECT_EQ(original->clone(clone.receive()), kResultOk);
    clone->append(u"a.wav", 0);
    EXPECT_EQ(pathOf(*original), u"/home/anna");
    EXPECT_EQ(pathOf(*clone), below(u"/home/anna", u"a.wav"));
}

TEST_F(HostFileTest, MakeUniqueFindsANameThatNobodyHas) {
    const auto first = file(below(folder(), u"take.wav"));
    EXPECT_EQ(first->makeUnique(), kResultOk);
    EXPECT_EQ(nameOf(*first), u"take.wav");
    std::ofstream(pathOfUtf8(path("take.wav"))) << "x";
    std::ofstream(pathOfUtf8(path("take-2.wav"))) << "x";
    EXPECT_EQ(first->makeUnique(), kResultOk);
    EXPECT_EQ(nameOf(*first), u"take-3.wav");
}

TEST_F(HostFileTest, MakeUniqueTakesALinkThatLeadsNowhereForATakenName) {
    if (const char* reason = testing_support::whyNoSymbolicLinks()) {
        GTEST_SKIP() << reason;
    }
    std::filesystem::create_symlink("nowhere", pathOfUtf8(path("take.wav")));
    const auto file = this->file(below(folder(), u"take.wav"));
    EXPECT_EQ(file->makeUnique(), kResultOk);
    EXPECT_EQ(nameOf(*file), u"take-2.wav");
}

TEST_F(HostFileTest, MakeUniqueShortensANameThatLeavesNoRoom) {
    const std::string stem(125, 'a');
    std::string longest = stem;
    for (int i = 0; i < 63; ++i) {
        longest += "\xC3\xA4";
    }
    ASSERT_EQ((longest + ".wav").size(), 255U);
    const std::filesystem::path there = pathOfUtf8(path(longest + ".wav"));
    std::ofstream(there) << "x";
    const auto target = file(there.u16string());
    EXPECT_EQ(target->makeUnique(), kResultOk);
    EXPECT_EQ(nameOf(*target), std::u16string(125, u'a') + std::u16string(62, u'\u00E4') + u"-2.wav");
}

TEST_F(HostFileTest, AnUnusablePathIsRefusedAndATooLongOneEmpty) {
    const auto target = file(u"/a");
    const char16_t lone[] = {u'/', 0xD800, 0};
    EXPECT_EQ(target->setPath(nullptr, 0), kInvalidArgument);
    EXPECT_EQ(target->setPath(u"", 0), kInvalidArgument);
    EXPECT_EQ(target->setPath(lone, 0), kInvalidArgument);
    EXPECT_EQ(pathOf(*target), u"/a");
    EXPECT_EQ(target->setPath((u"/" + std::u16string(1022, u'x')).c_str(), 0), kResultOk);
    EXPECT_EQ(pathOf(*target).size(), 1023U);
    EXPECT_EQ(target->setPath((u"/" + std::u16string(1023, u'x')).c_str(), 0), kResultOk);
    EXPECT_EQ(pathOf(*target), u"");
}

} // namespace
} // namespace tessera::host
