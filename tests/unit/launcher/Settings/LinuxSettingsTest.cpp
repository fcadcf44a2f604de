// What only Linux puts in launcher.ini's place or into it.
#include "launcher/Settings/Settings.h"
#include "Platform/Interface/Paths.h"
#include "tests/support/GameFiles.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>

namespace fs = std::filesystem;
using namespace std::string_literals;

namespace {

class LinuxSettings : public testing::Test {
protected:
    LinuxSettings() { fs::create_directory(state_); }

    TemporaryFolder temporary_;
    fs::path state_ = temporary_ / "VelorinthLauncher";
    fs::path file_ = state_ / "launcher.ini";
    ScopedEnvironment localAppData_{L"LOCALAPPDATA", Platform::TextFromPath(temporary_.Path())};
};

}  // namespace

TEST_F(LinuxSettings, AUtf8FileWithAByteOrderMarkIsRead) {
    WriteBytes(file_, "\xEF\xBB\xBF[Launcher]\r\nFolder=/srv/Qu\xC3\xA4ke\r\nMode=6\r\n");
    EXPECT_EQ(LoadSettings().Folder, L"/srv/Qu\u00E4ke");
    EXPECT_EQ(LoadSettings().Mode, 6);
}

TEST_F(LinuxSettings, NulBytesDoNotHideTheOtherLines) {
    WriteBytes(file_, "\0\0\n[Launcher]\nOther=\0x\0\nMode=6\nFolder=/srv/q2\n"s);
    EXPECT_EQ(LoadSettings().Mode, 6);
    EXPECT_EQ(LoadSettings().Folder, L"/srv/q2");
    EXPECT_TRUE(LoadSettings().Modern);
}

TEST_F(LinuxSettings, AFileOfNulBytesGivesTheDefaults) {
    WriteBytes(file_, std::string(1 << 20, '\0'));
    EXPECT_EQ(LoadSettings(), LauncherSettings());
}

TEST_F(LinuxSettings, AFolderThatIsNotUtf8Survives) {
    const std::wstring folder = Platform::TextFromPath("/srv/Qu\xE4ke \xFF");
    SaveSettings({.Folder = folder});
    EXPECT_EQ(LoadSettings().Folder, folder);
}

TEST_F(LinuxSettings, AFifoInPlaceOfTheFileGivesDefaultsAndSavingGoesUnnoticed) {
    ASSERT_EQ(mkfifo(file_.c_str(), 0600), 0);
    EXPECT_EQ(LoadSettings(), LauncherSettings());
    EXPECT_NO_THROW(SaveSettings({.Folder = {}, .Mode = 1}));
}

TEST_F(LinuxSettings, ADeviceInPlaceOfTheFileGivesTheDefaults) {
    fs::create_symlink("/dev/zero", file_);
    EXPECT_EQ(LoadSettings(), LauncherSettings());
}

TEST_F(LinuxSettings, WithoutLocalAppDataTheUsersDataFolderHoldsTheFile) {
    const ScopedEnvironment local(L"LOCALAPPDATA", std::nullopt);
    const ScopedEnvironment data(L"XDG_DATA_HOME", Platform::TextFromPath(temporary_ / "data"));
    SaveSettings({.Folder = {}, .Mode = 3});
    EXPECT_EQ(LoadSettings().Mode, 3);
    EXPECT_TRUE(fs::exists(temporary_ / "data" / "VelorinthLauncher" / "launcher.ini"));
}

TEST_F(LinuxSettings, WithoutADataFolderTheHomeFolderHoldsTheFile) {
    const ScopedEnvironment local(L"LOCALAPPDATA", std::nullopt);
    const ScopedEnvironment data(L"XDG_DATA_HOME", std::nullopt);
    const ScopedEnvironment home(L"HOME", Platform::TextFromPath(temporary_ / "home"));
    SaveSettings({.Folder = {}, .Mode = 2});
    EXPECT_EQ(LoadSettings().Mode, 2);
    EXPECT_TRUE(fs::exists(temporary_ / "home" / ".local" / "share" / "VelorinthLauncher" / "launcher.ini"));
}
