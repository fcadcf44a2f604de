#include "Platform/Interface/Paths.h"
#include "Platform/Linux/Files/FileObject.h"
#include "TestFile.h"
#include "tests/support/GameFiles.h"
#include "tests/support/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <filesystem>
#include <string>

namespace fs = std::filesystem;

namespace {

class OpenFile : public testing::Test {
protected:
    OpenFile() { WriteBytes(existing, "content"); }

    TemporaryFolder folder;
    const fs::path existing = folder / "existing";
    const fs::path missing = folder / "missing";
    const fs::path missingFolder = folder / "no folder" / "file";
};

}  // namespace

TEST_F(OpenFile, CreateNewMakesAFileAndRefusesAnExistingOne) {
    EXPECT_TRUE(TestFile(missing, CREATE_NEW).IsOpen());
    EXPECT_TRUE(fs::is_regular_file(missing));
    const TestFile again(missing, CREATE_NEW);
    EXPECT_FALSE(again.IsOpen());
    EXPECT_EQ(again.Error(), ERROR_FILE_EXISTS);
}

TEST_F(OpenFile, CreateNewSeesAnExistingFileInAnotherCase) {
    EXPECT_EQ(TestFile(folder / "EXISTING", CREATE_NEW).Error(), ERROR_FILE_EXISTS);
}

TEST_F(OpenFile, CreateAlwaysEmptiesAnExistingFileAndSaysSo) {
    EXPECT_EQ(TestFile(existing, CREATE_ALWAYS).Error(), ERROR_ALREADY_EXISTS);
    EXPECT_EQ(fs::file_size(existing), 0U);
    EXPECT_EQ(TestFile(missing, CREATE_ALWAYS).Error(), ERROR_SUCCESS);
    EXPECT_TRUE(fs::exists(missing));
}

TEST_F(OpenFile, OpenExistingKeepsTheContent) {
    EXPECT_TRUE(TestFile(existing, OPEN_EXISTING).IsOpen());
    EXPECT_EQ(ReadBytes(existing), "content");
    EXPECT_EQ(TestFile(missing, OPEN_EXISTING).Error(), ERROR_FILE_NOT_FOUND);
    EXPECT_FALSE(fs::exists(missing));
}

TEST_F(OpenFile, OpenAlwaysSaysWhetherTheFileExisted) {
    const TestFile old(existing, OPEN_ALWAYS);
    EXPECT_TRUE(old.IsOpen());
    EXPECT_EQ(old.Error(), ERROR_ALREADY_EXISTS);
    EXPECT_EQ(ReadBytes(existing), "content");
    const TestFile made(missing, OPEN_ALWAYS);
    EXPECT_TRUE(made.IsOpen());
    EXPECT_EQ(made.Error(), ERROR_SUCCESS);
    EXPECT_TRUE(fs::exists(missing));
}

TEST_F(OpenFile, TruncateExistingEmptiesAndNeedsWriteAccess) {
    EXPECT_EQ(TestFile(existing, TRUNCATE_EXISTING, GENERIC_READ).Error(), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(ReadBytes(existing), "content");
    EXPECT_TRUE(TestFile(existing, TRUNCATE_EXISTING).IsOpen());
    EXPECT_EQ(fs::file_size(existing), 0U);
    EXPECT_EQ(TestFile(missing, TRUNCATE_EXISTING).Error(), ERROR_FILE_NOT_FOUND);
}

TEST_F(OpenFile, AnUnknownDispositionIsRefused) {
    EXPECT_EQ(TestFile(existing, 0).Error(), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(TestFile(existing, 6).Error(), ERROR_INVALID_PARAMETER);
}

TEST_F(OpenFile, AMissingFolderIsToldApartFromAMissingFile) {
    for (const DWORD disposition : {CREATE_NEW, CREATE_ALWAYS, OPEN_EXISTING, OPEN_ALWAYS}) {
        EXPECT_EQ(TestFile(missingFolder, disposition).Error(), ERROR_PATH_NOT_FOUND) << disposition;
    }
    EXPECT_EQ(TestFile(existing / "below a file", OPEN_EXISTING).Error(), ERROR_PATH_NOT_FOUND);
    EXPECT_EQ(TestFile("", OPEN_EXISTING).Error(), ERROR_PATH_NOT_FOUND);
}

TEST_F(OpenFile, TheFolderOfANewFileIsFoundInAnotherCase) {
    fs::create_directory(folder / "BaseQ2");
    EXPECT_TRUE(TestFile(folder / "baseq2" / "New", CREATE_NEW).IsOpen());
    EXPECT_TRUE(fs::exists(folder / "BaseQ2" / "New"));
    EXPECT_FALSE(fs::exists(folder / "baseq2"));
}

TEST_F(OpenFile, AFolderIsRefused) {
    fs::create_directory(folder / "sub");
    for (const DWORD disposition : {CREATE_ALWAYS, OPEN_EXISTING, OPEN_ALWAYS, TRUNCATE_EXISTING}) {
        EXPECT_EQ(TestFile(folder / "sub", disposition).Error(), ERROR_ACCESS_DENIED) << disposition;
    }
    EXPECT_EQ(TestFile(folder / "sub", CREATE_NEW).Error(), ERROR_FILE_EXISTS);
}

TEST_F(OpenFile, AFifoIsRefusedAtOnceForReadingAndForWriting) {
    const fs::path pipe = folder / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    for (const DWORD access : {GENERIC_READ, GENERIC_WRITE, GENERIC_READ | GENERIC_WRITE}) {
        EXPECT_EQ(TestFile(pipe, OPEN_EXISTING, access).Error(), ERROR_ACCESS_DENIED) << access;
        EXPECT_EQ(TestFile(pipe, OPEN_ALWAYS, access, 0).Error(), ERROR_ACCESS_DENIED) << access;
    }
}

TEST_F(OpenFile, AWriterThatWaitsAtAFifoIsNotReleased) {
    // Opening a FIFO for reading would let a waiting writer go on, and its data would be lost.
    const fs::path pipe = folder / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_FALSE(TestFile(pipe, OPEN_EXISTING, GENERIC_READ).IsOpen());
    EXPECT_EQ(open(pipe.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC), -1);
    EXPECT_EQ(errno, ENXIO);
}

TEST_F(OpenFile, DevicesAreRefused) {
    EXPECT_EQ(TestFile("/dev/zero", OPEN_EXISTING, GENERIC_READ).Error(), ERROR_ACCESS_DENIED);
    EXPECT_EQ(TestFile("/dev/null", OPEN_ALWAYS).Error(), ERROR_ACCESS_DENIED);
}

TEST_F(OpenFile, ADanglingLinkIsMissingAndOpenAlwaysMakesTheFileItLeadsTo) {
    fs::create_symlink(missing, folder / "link");
    EXPECT_EQ(TestFile(folder / "link", OPEN_EXISTING).Error(), ERROR_FILE_NOT_FOUND);
    EXPECT_TRUE(TestFile(folder / "link", OPEN_ALWAYS).IsOpen());
    EXPECT_TRUE(fs::is_regular_file(missing));
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
}

TEST_F(OpenFile, ALoopOfLinksIsRefused) {
    fs::create_symlink(folder / "b", folder / "a");
    fs::create_symlink(folder / "a", folder / "b");
    EXPECT_EQ(TestFile(folder / "a", OPEN_EXISTING).Error(), ERROR_CANT_RESOLVE_FILENAME);
    EXPECT_EQ(TestFile(folder / "a", OPEN_ALWAYS).Error(), ERROR_CANT_RESOLVE_FILENAME);
}

TEST_F(OpenFile, AComponentOfMoreThan255BytesIsRefused) {
    for (const DWORD disposition : {CREATE_NEW, CREATE_ALWAYS, OPEN_EXISTING, OPEN_ALWAYS}) {
        EXPECT_EQ(TestFile(folder / std::string(256, 'n'), disposition).Error(), ERROR_FILENAME_EXCED_RANGE)
            << disposition;
    }
}

TEST_F(OpenFile, APathOf4000CharactersIsOpenedAndALongerOneThanTheSystemTakesIsRefused) {
    fs::path deep = folder.Path();
    while (deep.native().size() < 3800) deep /= std::string(200, 'n');
    fs::create_directories(deep);
    deep /= std::string(4000 - deep.native().size() - 1, 'f');
    ASSERT_EQ(deep.native().size(), 4000U);
    EXPECT_TRUE(TestFile(deep, CREATE_NEW).IsOpen());
    EXPECT_TRUE(TestFile(deep, OPEN_EXISTING).IsOpen());
    EXPECT_EQ(TestFile(deep / std::string(200, 'n'), OPEN_EXISTING).Error(), ERROR_FILENAME_EXCED_RANGE);
}

TEST_F(OpenFile, ANonUtf8NameIsMadeAndFound) {
    const fs::path name = folder / "na\xFFme";
    EXPECT_TRUE(TestFile(name, CREATE_NEW).IsOpen());
    EXPECT_TRUE(fs::exists(name));
    EXPECT_TRUE(TestFile(folder / "NA\xFFME", OPEN_EXISTING).IsOpen());
}

TEST_F(OpenFile, TheDescriptorStaysOutOfStartedProcessesAndIsExposedToPassOn) {
    SECURITY_ATTRIBUTES attributes{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    const std::wstring name = Platform::TextFromPath(existing);
    const HANDLE inheritable = CreateFileW(name.c_str(), GENERIC_READ, FILE_SHARE_READ, &attributes, OPEN_EXISTING,
                                           FILE_ATTRIBUTE_NORMAL, nullptr);
    attributes.bInheritHandle = FALSE;
    const HANDLE plain = CreateFileW(name.c_str(), GENERIC_READ, FILE_SHARE_READ, &attributes, OPEN_EXISTING,
                                     FILE_ATTRIBUTE_NORMAL, nullptr);
    EXPECT_TRUE(Platform::IsInheritable(inheritable));
    EXPECT_FALSE(Platform::IsInheritable(plain));
    const int descriptor = Platform::FindHandleObject(inheritable)->PassedDescriptor();
    EXPECT_EQ(fcntl(descriptor, F_GETFD), FD_CLOEXEC);
    EXPECT_EQ(Platform::FindHandleObject(inheritable)->WaitDescriptor(), -1);
    CloseHandle(plain);
    CloseHandle(inheritable);
    EXPECT_EQ(fcntl(descriptor, F_GETFD), -1);
}

TEST_F(OpenFile, AttributesTellFilesFromFolders) {
    EXPECT_EQ(GetFileAttributesW(Platform::TextFromPath(existing).c_str()), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(GetFileAttributesW(Platform::TextFromPath(folder.Path()).c_str()), FILE_ATTRIBUTE_DIRECTORY);
    EXPECT_EQ(GetFileAttributesW((Platform::TextFromPath(folder.Path()) + L"/").c_str()), FILE_ATTRIBUTE_DIRECTORY);
    fs::permissions(existing, fs::perms::owner_read);
    EXPECT_EQ(GetFileAttributesW(Platform::TextFromPath(existing).c_str()), FILE_ATTRIBUTE_READONLY);
}

TEST_F(OpenFile, AttributesFollowLinks) {
    fs::create_directory_symlink(folder.Path(), folder / "link");
    EXPECT_EQ(GetFileAttributesW(Platform::TextFromPath(folder / "link").c_str()), FILE_ATTRIBUTE_DIRECTORY);
    fs::create_symlink(missing, folder / "dangling");
    EXPECT_EQ(GetFileAttributesW(Platform::TextFromPath(folder / "dangling").c_str()), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(GetLastError(), ERROR_FILE_NOT_FOUND);
}

TEST_F(OpenFile, AttributesAreFoundInAnotherCase) {
    EXPECT_EQ(GetFileAttributesW(Platform::TextFromPath(folder / "EXISTING").c_str()), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(OpenFile, AttributesOfNothingFailWithTheReason) {
    const auto error = [](const std::wstring& name) {
        SetLastError(ERROR_SUCCESS);
        EXPECT_EQ(GetFileAttributesW(name.c_str()), INVALID_FILE_ATTRIBUTES);
        return GetLastError();
    };
    EXPECT_EQ(error(Platform::TextFromPath(missing)), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(error(Platform::TextFromPath(missingFolder)), ERROR_PATH_NOT_FOUND);
    EXPECT_EQ(error(Platform::TextFromPath(existing / "x")), ERROR_PATH_NOT_FOUND);
    EXPECT_EQ(error(Platform::TextFromPath(folder / std::string(256, 'n'))), ERROR_FILENAME_EXCED_RANGE);
    EXPECT_EQ(error(L""), ERROR_PATH_NOT_FOUND);
}
