// A thousand changes of kind, size, spacing, tuning and grade at random: the real device under the validation layer,
// and the count of what is made and kept.
#include "Background/BackgroundRenderer.h"
#include "Platform/Linux/Direct3D/Instance.h"
#include "RecordingDevice.h"

#include <gtest/gtest.h>
#include <unistd.h>
#include <wrl/client.h>

#include <algorithm>
#include <fstream>
#include <random>

namespace {

using Microsoft::WRL::ComPtr;
using Tamborel::BackgroundKind;
using Tamborel::BackgroundRenderer;
using Tamborel::SurfaceTarget;

constexpr int kSwitches = 1000;
// On the real device they are shared out, so that no test takes long.
constexpr int kShares = 4;

/// Changes the renderer's settings as a player with no patience would; the same seed gives the same sequence.
class Switcher {
public:
    explicit Switcher(unsigned seed) : random_(seed) {}

    void Change(BackgroundRenderer& renderer) {
        // Values that are no kind and settings out of range come too.
        renderer.SetBackground(static_cast<BackgroundKind>(Whole(0, 9)));
        renderer.SetColorGrade({Number(-200, 200), Number(-1, 3), Number(-2, 2), Number(-1, 3)});
        Tamborel::BackgroundTuning tuning;
        tuning.timeScale = Number(-1, 20);
        tuning.emberStrength = Number(-1, 20);
        tuning.pointerStrength = Number(-1, 20);
        tuning.viewScale = Number(-1, 12);
        tuning.fineDetail = Number(-1, 12);
        tuning.sampleSpacing = static_cast<std::int32_t>(Whole(1, 5));
        renderer.SetSurfaceTuning(tuning);
        renderer.SetSunriseParameters(Number(-1, 20), Number(-1, 20));
        renderer.SetPointer(Number(-1, 2), Number(-1, 2), Whole(0, 1) != 0);
        if (Whole(0, 9) == 0) renderer.SetAnimate(Whole(0, 1) != 0);
        if (Whole(0, 9) == 0) renderer.ReleaseSurfaceResources();
    }

    UINT Whole(UINT least, UINT most) { return std::uniform_int_distribution<UINT>(least, most)(random_); }

private:
    float Number(float least, float most) { return std::uniform_real_distribution<float>(least, most)(random_); }

    std::mt19937 random_;
};

/// Bytes of this process that lie in memory, its images and buffers on a software device among them.
std::size_t ResidentBytes() {
    std::ifstream file("/proc/self/statm");
    std::size_t all = 0;
    std::size_t resident = 0;
    file >> all >> resident;
    return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

class SwitchingVk : public testing::TestWithParam<int> {};

TEST_P(SwitchingVk, AThousandChangesAtRandomBringNoValidationMessageAndNoLeak) {
    ASSERT_TRUE(Platform::Direct3D::EnableValidation()) << "The package vulkan-validationlayers is missing.";
    ComPtr<ID3D11Device> device;
    ComPtr<ID3D11DeviceContext> immediate;
    ASSERT_EQ(D3D11CreateDevice(nullptr, D3D_DRIVER_TYPE_HARDWARE, nullptr, 0, nullptr, 0, D3D11_SDK_VERSION,
                                device.GetAddressOf(), nullptr, immediate.GetAddressOf()),
              S_OK);
    ComPtr<ID3D11DeviceContext> deferred;
    ASSERT_EQ(device->CreateDeferredContext(0, deferred.GetAddressOf()), S_OK);
    BackgroundRenderer renderer;
    ASSERT_EQ(renderer.InitializeOn(device.Get()), S_OK);

    Tamborel::BlitFrameRecord record;
    record.useThemeBackground = 1;
    Switcher switcher(static_cast<unsigned>(GetParam()));
    std::size_t early = 0;
    for (int i = 0; i < kSwitches / kShares; ++i) {
        switcher.Change(renderer);
        // Light kinds draw at no less than 640 by 360 however small the window is, so small windows do; but not ones of
        // a very different shape, whose offscreen images would be much larger.
        D3D11_TEXTURE2D_DESC size{};
        size.Width = switcher.Whole(48, 96);
        size.Height = switcher.Whole(24, 64);
        size.MipLevels = 1;
        size.ArraySize = 1;
        size.Format = DXGI_FORMAT_B8G8R8A8_UNORM;
        size.SampleDesc.Count = 1;
        size.BindFlags = D3D11_BIND_RENDER_TARGET;
        ComPtr<ID3D11Texture2D> image;
        ComPtr<ID3D11RenderTargetView> view;
        ASSERT_EQ(device->CreateTexture2D(&size, nullptr, image.GetAddressOf()), S_OK);
        ASSERT_EQ(device->CreateRenderTargetView(image.Get(), nullptr, view.GetAddressOf()), S_OK);
        const SurfaceTarget surface{view.Get(), size.Width, size.Height};
        ComPtr<ID3D11CommandList> list;
        ASSERT_EQ(renderer.RecordDraw(&surface, static_cast<float>(i) / 60.0F, deferred.Get(), list.GetAddressOf(),
                                      record, 1.0F),
                  S_OK);
        ASSERT_TRUE(list);
        immediate->ExecuteCommandList(list.Get(), TRUE);
        immediate->Flush();
        ASSERT_EQ(Platform::Direct3D::ValidationMessages(), 0U) << "after change " << i;
        if (i == kSwitches / kShares / 4) early = ResidentBytes();
    }
    // The programs are compiled and all pools have grown by the first quarter. An offscreen image (640 by 360 at least,
    // eight bytes each) kept per change would be 340 MB; what is allowed is the heap's own coming and going.
    EXPECT_LT(ResidentBytes(), early + (48U << 20));
}
INSTANTIATE_TEST_SUITE_P(Shares, SwitchingVk, testing::Range(0, kShares));

TEST(Switching, AThousandChangesAtRandomMakeObjectsInTheFirstFrameOnlyAndKeepNoOldOnes) {
    RecordingDevice device;
    RecordingDevice windowDevice;
    ComPtr<ID3D11RenderTargetView> view;
    ASSERT_EQ(windowDevice.CreateRenderTargetView(nullptr, nullptr, view.GetAddressOf()), S_OK);
    Tamborel::BlitFrameRecord record;
    record.useThemeBackground = 1;
    {
        BackgroundRenderer renderer;
        ASSERT_EQ(renderer.InitializeOn(&device), S_OK);
        const int initial = device.alive;
        Switcher switcher(1);
        for (int i = 0; i < kSwitches; ++i) {
            switcher.Change(renderer);
            const SurfaceTarget surface{view.Get(), switcher.Whole(1, 4000), switcher.Whole(1, 4000)};
            // A few frames of one picture: only the first may stop to make objects.
            std::size_t made = 0;
            for (int frame = 0; frame < 3; ++frame) {
                RecordingDeferredContext context;
                ComPtr<ID3D11CommandList> list;
                ASSERT_EQ(
                    renderer.RecordDraw(&surface, static_cast<float>(i), &context, list.GetAddressOf(), record, 1.0F),
                    S_OK);
                if (frame == 0) made = device.created.size();
                ASSERT_EQ(device.created.size(), made) << "change " << i << ", frame " << frame;
            }
            // Texture and two views of the offscreen image; the surface's two programs, constants, grid and two views.
            ASSERT_LE(device.alive, initial + 9) << "after change " << i;
        }
    }
    EXPECT_EQ(device.alive, 0);
}

}  // namespace
