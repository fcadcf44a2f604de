#include "launcher/GameLaunch/FileCopy.h"
#include "tests/support/GameFiles.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>

namespace fs = std::filesystem;

namespace {

using GameLaunch::CopyContent;
using GameLaunch::IfExists;
using GameLaunch::SameContent;

class FileCopy : public testing::Test {
protected:
    FileCopy() { WriteBytes(source_, content_); }

    std::string content_ = std::string(std::size_t{3} << 20U, 'a') + "end";
    TemporaryFolder folder_;
    fs::path source_ = folder_ / "source";
    fs::path target_ = folder_ / "target";
};

TEST_F(FileCopy, NewTargetGetsAllBytes) {
    CopyContent(source_, target_, IfExists::Fail);
    EXPECT_EQ(ReadBytes(target_), content_);
}

TEST_F(FileCopy, ExistingTargetFailsNamedCopyFileAndStaysUnlessItMayBeOverwritten) {
    WriteBytes(target_, "before");
    try {
        CopyContent(source_, target_, IfExists::Fail);
        FAIL();
    } catch (const fs::filesystem_error& error) {
        EXPECT_NE(std::string(error.what()).find("copy_file"), std::string::npos) << error.what();
        EXPECT_EQ(error.code(), std::errc::file_exists);
        EXPECT_EQ(error.path1(), source_);
        EXPECT_EQ(error.path2(), target_);
    }
    EXPECT_EQ(ReadBytes(target_), "before");
    CopyContent(source_, target_, IfExists::Overwrite);
    EXPECT_EQ(ReadBytes(target_), content_);
}

TEST_F(FileCopy, MissingSourceLeavesAnExistingTargetAsItIs) {
    WriteBytes(target_, "before");
    fs::remove(source_);
    EXPECT_THROW(CopyContent(source_, target_, IfExists::Overwrite), fs::filesystem_error);
    EXPECT_EQ(ReadBytes(target_), "before");
}

TEST_F(FileCopy, EmptySourceGivesAnEmptyTarget) {
    WriteBytes(source_, "");
    WriteBytes(target_, "before");
    CopyContent(source_, target_, IfExists::Overwrite);
    EXPECT_EQ(fs::file_size(target_), 0U);
}

TEST_F(FileCopy, ContentIsComparedToTheLastByteAndLength) {
    WriteBytes(target_, content_);
    EXPECT_TRUE(SameContent(source_, target_));
    WriteBytes(target_, content_ + "x");
    EXPECT_FALSE(SameContent(source_, target_));
    content_.back() = 'D';
    WriteBytes(target_, content_);
    EXPECT_FALSE(SameContent(source_, target_));
    content_[0] = 'b';
    WriteBytes(target_, content_);
    EXPECT_FALSE(SameContent(source_, target_));
}

TEST_F(FileCopy, FileThatCanNotBeOpenedCanNotBeCompared) {
    try {
        SameContent(source_, target_);
        FAIL();
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "Cannot open driver");
    }
}

}  // namespace
