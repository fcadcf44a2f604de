// The animated backdrop of a window.
#pragma once

#include "Background/BackgroundKind.h"
#include "Background/BackgroundSettings.h"
#include "Background/BlitFrameRecord.h"
#include "Background/LiquidMetalSurface.h"
#include "Background/OffscreenSize.h"
#include "Background/SurfaceTarget.h"

#include <d3d11_4.h>
#include <wrl/client.h>
#include <array>
#include <cstdint>
#include <optional>

namespace Tamborel {

class RenderDevice;

/// Draws a background in two stages: a procedural program renders into an offscreen texture, and the blit brings that
/// texture to the window's image, grading its colours and painting title bar, frame and inner border over it.
///
/// Settings, clocks and counters survive the loss of the device; Direct3D objects don't. Everything is called on the
/// render thread once the renderer is in use; there is no lock.
class BackgroundRenderer {
public:
    BackgroundRenderer() = default;
    ~BackgroundRenderer();
    BackgroundRenderer(const BackgroundRenderer&) = delete;
    BackgroundRenderer& operator=(const BackgroundRenderer&) = delete;

    /// Makes the Direct3D objects that don't depend on a size. `renderDevice` is borrowed until ReleaseResources and
    /// may not be null. Returns the first failure, logged, and leaves the renderer uninitialized then.
    HRESULT Initialize(RenderDevice* renderDevice);

    /// The same on a device that belongs to no window.
    HRESULT InitializeOn(ID3D11Device* device);

    bool IsInitialized() const { return initialized_; }

    /// Records one picture at `time` (seconds, never going back) on `deferredContext`. `*outCommandList` is the
    /// caller's: the recorded commands, or null where there is nothing to draw (not initialized, no surface, a surface
    /// without area) or the result is a failure. `sdrWhiteScale` multiplies the background's colours; 1 where it isn't
    /// positive.
    HRESULT RecordDraw(const SurfaceTarget* surface, float time, ID3D11DeviceContext* deferredContext,
                       ID3D11CommandList** outCommandList, const BlitFrameRecord& record, float sdrWhiteScale);

    /// Lets go of all Direct3D objects and of the device. Settings, clocks and counters stay.
    void ReleaseResources();

    /// Lets go of what only the metal surface needs.
    void ReleaseSurfaceResources();

    /// Shows another kind; a value that is no kind shows the first one's program. A clock that kinds keep for
    /// themselves gains no time by the switch.
    void SetBackground(BackgroundKind kind);

    /// Sets the grade of the current kind. Each component is limited to its range, and kept as it was where it isn't
    /// finite.
    void SetColorGrade(const ColorGrade& grade);

    /// As SetColorGrade; a sample spacing other than 2 or 4 is ignored.
    void SetSurfaceTuning(const BackgroundTuning& tuning);

    /// Rate of the sunrise's clock and strength of its glow, 0 to 16 each; as SetColorGrade.
    void SetSunriseParameters(float rate, float glow);

    /// Sets a clock, in seconds, and the sunrise's frame number. Negative or not finite seconds change nothing.
    void SetSunriseClock(double seconds, std::int32_t frame);
    void SetSurfaceClock(double seconds);

    /// The pointer over the window, 0 to 1 on both axes, v downward. Inactive, or at a place that isn't finite, it goes
    /// back to the middle.
    void SetPointer(float u, float v, bool active);

    /// Off, time stands still: clocks and frame counters keep their values. On at first.
    void SetAnimate(bool animate) { animate_ = animate; }
    bool IsAnimated() const { return animate_; }

    /// Sets the number of the next frame, as programs without a counter of their own read it. For reproducible
    /// pictures.
    void SetFrameCounter(std::int32_t frame) { frameCounter_ = frame; }

    BackgroundKind Kind() const { return kind_; }
    /// The current kind's grade; neutral for a value that is no kind.
    ColorGrade Grade() const;
    const BackgroundTuning& SurfaceTuning() const { return tuning_; }
    const BackgroundPointer& Pointer() const { return pointer_; }
    float SunriseRate() const { return sunriseRate_; }
    float SunriseGlow() const { return sunriseGlow_; }
    double SunriseClock() const { return sunriseClock_; }
    double SurfaceClock() const { return surfaceClock_; }
    std::int32_t SunriseFrame() const { return sunriseFrame_; }
    std::int32_t FrameCounter() const { return frameCounter_; }

    /// The texture that the last picture's background was drawn to, borrowed, and its size; null and 0 by 0 before.
    ID3D11Texture2D* OffscreenTexture() const { return offscreenTexture_.Get(); }
    OffscreenSize OffscreenTextureSize() const { return offscreenSize_; }

private:
    template <class Interface>
    using ComPtr = Microsoft::WRL::ComPtr<Interface>;

    /// What a kind's program is told of time.
    struct KindTime {
        float seconds;
        std::int32_t frame;
    };

    HRESULT CreateResources(ID3D11Device& device);
    HRESULT CreatePixelShaders(ID3D11Device& device);
    HRESULT CreateBuffers(ID3D11Device& device);
    HRESULT CreateStates(ID3D11Device& device);
    HRESULT EnsureOffscreen(const SurfaceTarget& surface);
    HRESULT CreateOffscreen(OffscreenSize size);
    void ReleaseOffscreen();
    void ActivatePixelShader();

    KindTime AdvanceTime(float time);
    void BindPipeline(ID3D11DeviceContext& context) const;
    HRESULT RecordBackground(ID3D11DeviceContext& context, const SurfaceTarget& surface, float time);
    void RecordBlit(ID3D11DeviceContext& context, const SurfaceTarget& surface, const BlitFrameRecord& record,
                    float sdrWhiteScale) const;
    void CountFrame();

    LiquidMetalSurface surface_;
    BackgroundTuning tuning_;
    std::array<ColorGrade, kBackgroundKindCount> grades_{};
    BackgroundPointer pointer_;
    double surfaceClock_ = 0.0;             // seconds
    std::optional<float> surfaceLastTime_;  // the caller's time of the last frame

    ComPtr<ID3D11VertexShader> vertexShader_;
    ComPtr<ID3D11PixelShader> activePixelShader_;
    std::array<ComPtr<ID3D11PixelShader>, kPixelProgramCount> pixelShaders_;
    ComPtr<ID3D11PixelShader> blitPixelShader_;
    ComPtr<ID3D11InputLayout> inputLayout_;
    ComPtr<ID3D11Buffer> vertexBuffer_;
    ComPtr<ID3D11Buffer> constants_;
    ComPtr<ID3D11Buffer> blitConstants_;
    ComPtr<ID3D11SamplerState> sampler_;
    ComPtr<ID3D11RasterizerState> rasterizerState_;
    ComPtr<ID3D11BlendState> blendState_;
    ComPtr<ID3D11DepthStencilState> depthStencilState_;

    ComPtr<ID3D11Texture2D> offscreenTexture_;
    ComPtr<ID3D11RenderTargetView> offscreenRtv_;
    ComPtr<ID3D11ShaderResourceView> offscreenSrv_;
    OffscreenSize offscreenSize_;  // of the last texture that was made; kept over a failure

    ID3D11Device* device_ = nullptr;  // the window's, borrowed
    BackgroundKind kind_ = BackgroundKind::LiquidMetal;
    bool animate_ = true;
    float sunriseRate_ = 1.0F;
    float sunriseGlow_ = 0.0F;
    double sunriseClock_ = 0.0;             // seconds
    std::optional<float> sunriseLastTime_;  // the caller's time of the last frame
    std::int32_t sunriseFrame_ = 0;
    bool initialized_ = false;
    std::int32_t frameCounter_ = 0;
};

}  // namespace Tamborel
