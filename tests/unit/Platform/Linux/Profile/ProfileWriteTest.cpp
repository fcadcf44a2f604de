#include "Platform/Linux/Profile/ProfileFile.h"
#include "TestProfile.h"

#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

class ProfileWrite : public ProfileTest {
protected:
    /// Tells one file from another that took its place.
    ino_t FileNumber() const {
        struct stat status {};
        EXPECT_EQ(lstat(path.c_str(), &status), 0);
        return status.st_ino;
    }
};

TEST_F(ProfileWrite, MakesFileSectionAndKeyAndLeavesNothingElse) {
    EXPECT_TRUE(Write(L"Mode", L"7"));
    EXPECT_EQ(ReadBytes(path), "[Launcher]\nMode=7\n");
    EXPECT_EQ(Entries(), "launcher.ini ");
}

TEST_F(ProfileWrite, WhatIsWrittenIsRead) {
    for (const std::wstring& value :
         {std::wstring(L"/games/Quake II/\u00E4\u00F6 \U0001F600"), std::wstring(L"C:\\Games"),
          std::wstring(32767, L'x'), std::wstring(L"it's \"quoted\""), std::wstring()}) {
        EXPECT_TRUE(Write(L"Folder", value));
        EXPECT_EQ(Read(L"Folder"), value);
    }
}

TEST_F(ProfileWrite, ANonUtf8FolderSurvives) {
    const fs::path game = "/games/\xFF\xC3quake";
    EXPECT_TRUE(Write(L"Folder", Platform::TextFromPath(game)));
    EXPECT_EQ(Platform::PathFromText(Read(L"Folder")), game);
}

TEST_F(ProfileWrite, AFolderLosesLeadingAndTrailingBlanksOnTheWay) {
    EXPECT_TRUE(Write(L"Folder", L" /games/quake "));
    EXPECT_EQ(Read(L"Folder"), L"/games/quake");
}

TEST_F(ProfileWrite, KeepsAllElseInTheFile) {
    WriteBytes(path, "; mine\r\n[Launcher]\r\nMode=1\r\nUnknown = x \r\n[Other]\r\na=\xFF\r\n");
    EXPECT_TRUE(Write(L"Mode", L"7"));
    EXPECT_EQ(ReadBytes(path), "; mine\r\n[Launcher]\r\nMode=7\r\nUnknown = x \r\n[Other]\r\na=\xFF\r\n");
}

TEST_F(ProfileWrite, AValueThatStandsAlreadyIsNotWritten) {
    EXPECT_TRUE(Write(L"Mode", L"7"));
    const ino_t before = FileNumber();
    const auto time = fs::last_write_time(path) - std::chrono::hours(1);
    fs::last_write_time(path, time);
    EXPECT_TRUE(Write(L"Mode", L"7"));
    EXPECT_EQ(FileNumber(), before);
    EXPECT_EQ(fs::last_write_time(path), time);
}

TEST_F(ProfileWrite, ReplacesTheFileInOneStep) {
    EXPECT_TRUE(Write(L"Mode", L"7"));
    fs::create_hard_link(path, folder / "kept");
    EXPECT_TRUE(Write(L"Mode", L"8"));
    EXPECT_EQ(ReadBytes(folder / "kept"), "[Launcher]\nMode=7\n");
    EXPECT_EQ(ReadBytes(path), "[Launcher]\nMode=8\n");
}

TEST_F(ProfileWrite, KeepsTheFilesPermissions) {
    WriteBytes(path, "");
    fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_TRUE(Write(L"Mode", L"7"));
    EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(ProfileWrite, ALinkStaysAndTheFileItLeadsToIsReplaced) {
    WriteBytes(folder / "real" / "file.ini", "[Launcher]\nMode=1\n");
    fs::create_symlink("second", path);
    fs::create_symlink("real/file.ini", folder / "second");
    EXPECT_TRUE(Write(L"Mode", L"7"));
    EXPECT_TRUE(fs::is_symlink(path));
    EXPECT_TRUE(fs::is_symlink(folder / "second"));
    EXPECT_EQ(ReadBytes(folder / "real" / "file.ini"), "[Launcher]\nMode=7\n");
    EXPECT_EQ(ReadInt(L"Mode"), 7U);
}

TEST_F(ProfileWrite, ADanglingLinkGetsTheFileItLeadsTo) {
    fs::create_symlink("later.ini", path);
    EXPECT_TRUE(Write(L"Mode", L"7"));
    EXPECT_TRUE(fs::is_symlink(path));
    EXPECT_EQ(ReadBytes(folder / "later.ini"), "[Launcher]\nMode=7\n");
}

TEST_F(ProfileWrite, ALoopOfLinksFailsAtOnce) {
    fs::create_symlink("launcher.ini", path);
    EXPECT_FALSE(Write(L"Mode", L"7"));
    EXPECT_EQ(GetLastError(), ERROR_CANT_RESOLVE_FILENAME);
}

TEST_F(ProfileWrite, AFileInAnotherCaseIsTheOneWritten) {
    WriteBytes(folder / "LAUNCHER.INI", "[Launcher]\nMode=1\n");
    EXPECT_TRUE(Write(L"Mode", L"7"));
    EXPECT_EQ(Entries(), "LAUNCHER.INI ");
    EXPECT_EQ(ReadInt(L"Mode"), 7U);
}

TEST_F(ProfileWrite, ARelativeNameIsOneInTheWorkingFolder) {
    const fs::path before = fs::current_path();
    fs::current_path(folder.Path());
    const BOOL written = WritePrivateProfileStringW(L"Launcher", L"Mode", L"7", L"launcher.ini");
    fs::current_path(before);
    EXPECT_TRUE(written);
    EXPECT_EQ(ReadInt(L"Mode"), 7U);
}

TEST_F(ProfileWrite, LineBreaksAreRefusedAndTheFileStays) {
    EXPECT_TRUE(Write(L"Mode", L"7"));
    EXPECT_FALSE(Write(L"Folder", L"a\nMode=9"));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
    EXPECT_FALSE(Write(L"Folder", L"a\r"));
    EXPECT_FALSE(Write(L"Fol\nder", L"a"));
    EXPECT_FALSE(WritePrivateProfileStringW(L"Lau\ncher", L"Mode", L"7", Name().c_str()));
    EXPECT_EQ(ReadBytes(path), "[Launcher]\nMode=7\n");
}

TEST_F(ProfileWrite, RemovingIsNotOffered) {
    EXPECT_TRUE(Write(L"Mode", L"7"));
    SetLastError(ERROR_SUCCESS);
    EXPECT_FALSE(WritePrivateProfileStringW(L"Launcher", L"Mode", nullptr, Name().c_str()));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
    EXPECT_FALSE(WritePrivateProfileStringW(L"Launcher", nullptr, L"7", Name().c_str()));
    EXPECT_FALSE(WritePrivateProfileStringW(nullptr, L"Mode", L"7", Name().c_str()));
    EXPECT_FALSE(WritePrivateProfileStringW(L"Launcher", L"Mode", L"7", nullptr));
    EXPECT_FALSE(WritePrivateProfileStringW(L"Launcher", L"Mode", L"7", L""));
    EXPECT_EQ(ReadBytes(path), "[Launcher]\nMode=7\n");
}

TEST_F(ProfileWrite, AMissingFolderIsToldAndNotMade) {
    path = folder / "none" / "launcher.ini";
    EXPECT_FALSE(Write(L"Mode", L"7"));
    EXPECT_EQ(GetLastError(), ERROR_PATH_NOT_FOUND);
    EXPECT_EQ(Entries(), "");
}

TEST_F(ProfileWrite, AFifoAndAFolderAreNotTouched) {
    const fs::path pipe = folder / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    fs::create_directory(folder / "sub");
    for (const fs::path& each : {pipe, folder / "sub"}) {
        path = each;
        EXPECT_FALSE(Write(L"Mode", L"7"));
        EXPECT_EQ(GetLastError(), ERROR_ACCESS_DENIED);
    }
    EXPECT_TRUE(fs::is_fifo(pipe));
    EXPECT_TRUE(fs::is_directory(folder / "sub"));
}

TEST_F(ProfileWrite, ADeviceIsNotTouched) {
    path = "/dev/zero";
    EXPECT_FALSE(Write(L"Mode", L"7"));
    EXPECT_TRUE(fs::is_character_file("/dev/zero"));
    EXPECT_FALSE(fs::exists("/dev/.zero.new"));
}

TEST_F(ProfileWrite, ATooLargeFileIsNeitherOverwrittenNorMade) {
    std::string content = "[Launcher]\nMode=1\n;";
    content.resize(Platform::largestProfileFile, ' ');
    WriteBytes(path, content);
    EXPECT_FALSE(Write(L"Folder", L"x"));
    EXPECT_EQ(ReadBytes(path), content);
    content += ' ';
    WriteBytes(path, content);
    EXPECT_FALSE(Write(L"Mode", L"7"));
    EXPECT_EQ(GetLastError(), ERROR_ACCESS_DENIED);
    EXPECT_EQ(ReadBytes(path), content);
}

TEST_F(ProfileWrite, WhatAKilledWriterLeftIsUsedUp) {
    WriteBytes(folder / ".launcher.ini.new", "half a fi");
    EXPECT_TRUE(Write(L"Mode", L"7"));
    EXPECT_EQ(Entries(), "launcher.ini ");
    EXPECT_EQ(ReadBytes(path), "[Launcher]\nMode=7\n");
}

TEST_F(ProfileWrite, AFifoOrALinkUnderTheTemporaryNameIsReplacedAndNotOpened) {
    ASSERT_EQ(mkfifo((folder / ".launcher.ini.new").c_str(), 0600), 0);
    EXPECT_TRUE(Write(L"Mode", L"7"));
    WriteBytes(folder / "victim", "stays");
    fs::create_symlink("victim", folder / ".launcher.ini.new");
    EXPECT_TRUE(Write(L"Mode", L"8"));
    EXPECT_EQ(ReadBytes(folder / "victim"), "stays");
    EXPECT_FALSE(fs::is_symlink(path));
    EXPECT_EQ(ReadBytes(path), "[Launcher]\nMode=8\n");
}

TEST_F(ProfileWrite, AFullDiskLeavesTheOldFileAndNothingElse) {
    EXPECT_TRUE(Write(L"Mode", L"7"));
    const pid_t child = fork();
    if (child == 0) {
        signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{4, 4};
        setrlimit(RLIMIT_FSIZE, &limit);
        _exit(Write(L"Mode", L"8") ? 1 : 0);
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(ReadBytes(path), "[Launcher]\nMode=7\n");
    EXPECT_EQ(Entries(), "launcher.ini ");
}
