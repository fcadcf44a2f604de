// Loading from files. The file calls are the test's own, so that a read lasts as long as the test wants.

#include "Scene/ImageAsset.h"
#include "tests/fakes/FakeDirect2D.h"

#include <gtest/gtest.h>

#include <dlfcn.h>
#include <pthread.h>

#include <condition_variable>
#include <cstring>
#include <system_error>
#include <thread>

namespace {

struct Files {
    std::mutex mutex;
    std::condition_variable changed;
    // All below are guarded by mutex.
    bool exists = true;
    bool sizeFails = false;
    bool readFails = false;
    LONGLONG size = 4;
    DWORD givenByRead = 4;
    bool hold = false;  // reads wait while it is set
    bool reading = false;
    int opened = 0;
    int closed = 0;
    DWORD sizeAsked = 0;
    DWORD access = 0;
    DWORD share = 0;
    DWORD disposition = 0;
    DWORD flags = 0;
    std::wstring path;
    bool threadsFail = false;
};

Files& State() {
    static Files* const files = new Files;  // Loader threads may outlive main.
    return *files;
}

const HANDLE theFile = &State();

}  // namespace

HANDLE CreateFileW(LPCWSTR name, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES, DWORD disposition, DWORD flags,
                   HANDLE) noexcept {
    Files& files = State();
    const std::lock_guard lock(files.mutex);
    files.path = name;
    files.access = access;
    files.share = share;
    files.disposition = disposition;
    files.flags = flags;
    ++files.opened;
    return files.exists ? theFile : INVALID_HANDLE_VALUE;
}

BOOL GetFileSizeEx(HANDLE, PLARGE_INTEGER size) noexcept {
    Files& files = State();
    const std::lock_guard lock(files.mutex);
    size->QuadPart = files.size;
    return files.sizeFails ? FALSE : TRUE;
}

BOOL ReadFile(HANDLE, LPVOID buffer, DWORD size, LPDWORD read, LPOVERLAPPED) noexcept {
    Files& files = State();
    std::unique_lock lock(files.mutex);
    files.reading = true;
    files.sizeAsked = size;
    files.changed.notify_all();
    files.changed.wait(lock, [&] { return !files.hold; });
    *read = files.givenByRead;
    std::memset(buffer, 42, *read);
    return files.readFails ? FALSE : TRUE;
}

BOOL CloseHandle(HANDLE handle) noexcept {
    Files& files = State();
    const std::lock_guard lock(files.mutex);
    if (handle == theFile) ++files.closed;
    return TRUE;
}

// A sanitizer's runtime within the program has it under this name; the system's own would go round that.
// NOLINTNEXTLINE(bugprone-reserved-identifier)
extern "C" [[gnu::weak]] int __interceptor_pthread_create(pthread_t* thread, const pthread_attr_t* attributes,
                                                          void* (*start)(void*), void* argument) noexcept;

extern "C" int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*start)(void*),
                              void* argument) noexcept {
    {
        const std::lock_guard lock(State().mutex);
        if (State().threadsFail) return EAGAIN;
    }
    static const auto real = __interceptor_pthread_create != nullptr
                                 ? &__interceptor_pthread_create
                                 : reinterpret_cast<decltype(&pthread_create)>(dlsym(RTLD_NEXT, "pthread_create"));
    return real(thread, attributes, start, argument);
}

namespace Tamborel {
namespace {

class ImageLoading : public testing::Test {
protected:
    ImageLoading() {
        Files& files = State();
        const std::lock_guard lock(files.mutex);
        files.exists = true;
        files.sizeFails = files.readFails = files.hold = files.reading = files.threadsFail = false;
        files.size = files.givenByRead = 4;
        files.opened = files.closed = 0;
        files.path.clear();
    }

    static void AwaitEnd(const ImageAsset::LoadState& state) {
        while (!state.complete) std::this_thread::yield();
    }
    static void Hold(bool hold) {
        const std::lock_guard lock(State().mutex);
        State().hold = hold;
        State().changed.notify_all();
    }
    static void AwaitRead() {
        std::unique_lock lock(State().mutex);
        State().changed.wait(lock, [] { return State().reading; });
    }
    static std::vector<std::uint8_t> LoadedBytes() {
        const auto asset = ImageAsset::LoadFromFile(L"picture.png");
        AwaitEnd(*asset->State());
        return asset->State()->bytes;
    }
    static bool Draw(ImageAsset& asset) {
        Microsoft::WRL::ComPtr<ID2D1Device> device;
        device.Attach(new Fakes::FakeDrawingDevice);
        Microsoft::WRL::ComPtr<ID2D1DeviceContext5> target;
        target.Attach(new Fakes::FakeDrawingContext(device.Get()));
        BrushCache brushes;
        DrawContext context(target.Get(), &brushes, 1.0F);
        return asset.Draw(context, {0, 0, 10, 10});
    }
};

TEST_F(ImageLoading, FileIsReadWholeInOneRead) {
    EXPECT_EQ(LoadedBytes(), std::vector<std::uint8_t>(4, 42));
    const Files& files = State();
    EXPECT_EQ(files.path, L"picture.png");
    EXPECT_EQ(files.access, GENERIC_READ);
    EXPECT_EQ(files.share, FILE_SHARE_READ);
    EXPECT_EQ(files.disposition, OPEN_EXISTING);
    EXPECT_EQ(files.flags, FILE_ATTRIBUTE_NORMAL | FILE_FLAG_SEQUENTIAL_SCAN);
    EXPECT_EQ(files.sizeAsked, 4U);
    EXPECT_EQ(files.closed, 1);
}

TEST_F(ImageLoading, SuffixInAnyCaseTellsSvg) {
    Files& files = State();
    files.exists = false;
    const auto isSvg = [](const wchar_t* path) {
        const auto asset = ImageAsset::LoadFromFile(path);
        AwaitEnd(*asset->State());  // A thread left behind would open and close files in the tests that follow.
        return asset->IsSvg();
    };
    EXPECT_TRUE(isSvg(L"x.svg"));
    EXPECT_TRUE(isSvg(L"C:\\pictures\\x.SVG"));
    EXPECT_TRUE(isSvg(L"x.Svg"));
    EXPECT_TRUE(isSvg(L".svg"));
    EXPECT_FALSE(isSvg(L"svg"));
    EXPECT_FALSE(isSvg(L""));
    EXPECT_FALSE(isSvg(L"x.svgz"));
    EXPECT_FALSE(isSvg(L"x.svg.png"));
    EXPECT_FALSE(isSvg(L"xsvg"));
}

TEST_F(ImageLoading, AssetWhoseFileIsStillReadPaintsNothingYet) {
    Hold(true);
    const auto asset = ImageAsset::LoadFromFile(L"x.svg");
    AwaitRead();
    EXPECT_FALSE(asset->State()->complete);
    EXPECT_FALSE(Draw(*asset));
    Hold(false);
    AwaitEnd(*asset->State());
    EXPECT_TRUE(Draw(*asset));
}

TEST_F(ImageLoading, MissingFileEndsCompleteWithoutBytesAndIsNotTriedAgain) {
    State().exists = false;
    const auto asset = ImageAsset::LoadFromFile(L"x.svg");
    AwaitEnd(*asset->State());
    EXPECT_TRUE(asset->State()->bytes.empty());
    EXPECT_FALSE(Draw(*asset));
    EXPECT_FALSE(Draw(*asset));
    EXPECT_EQ(State().opened, 1);
    EXPECT_EQ(State().closed, 0);
}

TEST_F(ImageLoading, ShortReadDropsWhatWasRead) {
    State().givenByRead = 3;
    EXPECT_TRUE(LoadedBytes().empty());
    EXPECT_EQ(State().closed, 1);
}

TEST_F(ImageLoading, FailedReadOrSizeLeavesNoBytes) {
    State().readFails = true;
    EXPECT_TRUE(LoadedBytes().empty());
    State().sizeFails = true;
    EXPECT_TRUE(LoadedBytes().empty());
    EXPECT_EQ(State().closed, 2);
}

TEST_F(ImageLoading, FileBeyondWhatOneReadCanCountIsNotRead) {
    State().size = LONGLONG{1} << 40;
    EXPECT_TRUE(LoadedBytes().empty());
    EXPECT_FALSE(State().reading);
    EXPECT_EQ(State().closed, 1);
}

TEST_F(ImageLoading, DeletingAnAssetWhileItsFileIsReadIsSafe) {
    Hold(true);
    auto asset = ImageAsset::LoadFromFile(L"x.png");
    const std::weak_ptr<ImageAsset::LoadState> state = asset->State();
    AwaitRead();
    asset.reset();
    EXPECT_FALSE(state.expired()) << "the thread holds the state";
    Hold(false);
    while (!state.expired()) std::this_thread::yield();
    const std::lock_guard lock(State().mutex);  // The thread's last look at them happened before.
    EXPECT_EQ(State().closed, 1);
}

TEST_F(ImageLoading, ThreadThatCannotBeStartedRaises) {
    {
        const std::lock_guard lock(State().mutex);
        State().threadsFail = true;
    }
    EXPECT_THROW(ImageAsset::LoadFromFile(L"x.png"), std::system_error);
    EXPECT_EQ(State().opened, 0);
}

}  // namespace
}  // namespace Tamborel
