// BackgroundRenderer: one frame's commands.
#include "Background/BackgroundRenderer.h"
#include "Background/ShaderConstants.h"

#include <algorithm>
#include <cstring>

namespace Tamborel {

namespace {

constexpr UINT kStripVertices = 4;
constexpr UINT kUnboundResources = 4;

/// Replaces the buffer's contents. Where it can't be mapped, the frame goes on with the old ones.
template <class Record>
void Write(ID3D11DeviceContext& context, ID3D11Buffer* buffer, const Record& record) {
    D3D11_MAPPED_SUBRESOURCE mapped{};
    if (FAILED(context.Map(buffer, 0, D3D11_MAP_WRITE_DISCARD, 0, &mapped))) return;
    std::memcpy(mapped.pData, &record, sizeof(record));
    context.Unmap(buffer, 0);
}

void SetViewport(ID3D11DeviceContext& context, UINT width, UINT height) {
    const D3D11_VIEWPORT viewport{0.0F, 0.0F, static_cast<float>(width), static_cast<float>(height), 0.0F, 1.0F};
    context.RSSetViewports(1, &viewport);
}

float Flag(bool value) {
    return value ? 1.0F : 0.0F;
}

/// Frame numbers wrap around rather than end.
std::int32_t Next(std::int32_t frame) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(frame) + 1U);
}

/// Moves a kind's own clock on by what passed since the last frame; time that went back counts as none.
void Advance(double& clock, std::optional<float>& lastTime, float time, float rate, bool animate) {
    if (animate && lastTime) {
        clock += std::max(static_cast<double>(time) - static_cast<double>(*lastTime), 0.0) * static_cast<double>(rate);
    }
    lastTime = time;
}

BlitConstants BlitConstantsFor(const BlitFrameRecord& record, BackgroundKind kind, const ColorGrade& grade,
                               float sdrWhiteScale) {
    BlitConstants constants;
    constants.SdrWhiteScale = sdrWhiteScale > 0.0F ? sdrWhiteScale : 1.0F;
    if (record.useThemeBackground) constants.UseThemeBackground = IsFullSizeKind(kind) ? 2.0F : 1.0F;
    constants.IsMaximized = Flag(record.isMaximized != 0);
    constants.MaximizedChromePolicy = static_cast<float>(record.maximizedChromePolicy);
    constants.WindowMetrics = record.windowMetrics;
    const auto& chrome = record.chromeMetrics;
    constants.ChromeMetrics = {chrome[0], chrome[1], chrome[2], Flag(record.innerBorderEnabled != 0)};
    constants.ClientFrameExtension = record.clientFrameExtension;
    constants.TitleBarFill = record.titleBarFill;
    constants.FrameFill = record.frameFill;
    constants.InnerBorderColor = record.innerBorderColor;
    constants.FlatInteriorFill = record.flatInteriorFill;
    constants.ColorGrade = grade;
    return constants;
}

}  // namespace

HRESULT BackgroundRenderer::RecordDraw(const SurfaceTarget* surface, float time, ID3D11DeviceContext* deferredContext,
                                       ID3D11CommandList** outCommandList, const BlitFrameRecord& record,
                                       float sdrWhiteScale) {
    if (!outCommandList) return E_POINTER;
    *outCommandList = nullptr;
    if (!initialized_ || !surface || !surface->RTV || !deferredContext || !device_) return S_OK;
    if (surface->width == 0 || surface->height == 0) return S_OK;

    ID3D11DeviceContext& context = *deferredContext;
    const bool theme = record.useThemeBackground != 0;
    if (theme) {
        if (const HRESULT result = EnsureOffscreen(*surface); FAILED(result)) return result;
    }
    BindPipeline(context);
    if (theme) {
        if (const HRESULT result = RecordBackground(context, *surface, time); FAILED(result)) {
            // What was recorded so far would otherwise stay in the context and grow with every failed frame.
            ComPtr<ID3D11CommandList> abandoned;
            context.FinishCommandList(FALSE, abandoned.GetAddressOf());
            return result;
        }
    }
    RecordBlit(context, *surface, record, sdrWhiteScale);
    CountFrame();
    return context.FinishCommandList(TRUE, outCommandList);
}

BackgroundRenderer::KindTime BackgroundRenderer::AdvanceTime(float time) {
    switch (kind_) {
        case BackgroundKind::QuietGoldSunrise:
            Advance(sunriseClock_, sunriseLastTime_, time, sunriseRate_, animate_);
            return {static_cast<float>(sunriseClock_), sunriseFrame_};
        case BackgroundKind::LiquidMetalSurface:
            Advance(surfaceClock_, surfaceLastTime_, time, tuning_.timeScale, animate_);
            return {static_cast<float>(surfaceClock_), animate_ ? frameCounter_ : 0};
        default:
            return animate_ ? KindTime{time, frameCounter_} : KindTime{0.0F, 0};
    }
}

void BackgroundRenderer::BindPipeline(ID3D11DeviceContext& context) const {
    context.IASetInputLayout(inputLayout_.Get());
    const UINT stride = sizeof(BackgroundVertex);
    const UINT offset = 0;
    context.IASetVertexBuffers(0, 1, vertexBuffer_.GetAddressOf(), &stride, &offset);
    context.IASetPrimitiveTopology(D3D11_PRIMITIVE_TOPOLOGY_TRIANGLESTRIP);
    context.VSSetShader(vertexShader_.Get(), nullptr, 0);
    context.RSSetState(rasterizerState_.Get());
    context.PSSetConstantBuffers(0, 1, constants_.GetAddressOf());
    context.PSSetSamplers(0, 1, sampler_.GetAddressOf());
    context.OMSetBlendState(blendState_.Get(), nullptr, 0xFFFFFFFF);
    context.OMSetDepthStencilState(depthStencilState_.Get(), 0);
}

HRESULT BackgroundRenderer::RecordBackground(ID3D11DeviceContext& context, const SurfaceTarget& surface, float time) {
    const std::array<float, 4> black = {0.0F, 0.0F, 0.0F, 1.0F};
    context.ClearRenderTargetView(offscreenRtv_.Get(), black.data());
    context.OMSetRenderTargets(1, offscreenRtv_.GetAddressOf(), nullptr);
    const std::array<ID3D11ShaderResourceView*, kUnboundResources> none{};
    context.PSSetShaderResources(0, kUnboundResources, none.data());
    SetViewport(context, offscreenSize_.width, offscreenSize_.height);

    const KindTime kindTime = AdvanceTime(time);
    Constants constants;
    constants.iResolution[0] = static_cast<float>(offscreenSize_.width);
    constants.iResolution[1] = static_cast<float>(offscreenSize_.height);
    constants.iTime = kindTime.seconds;
    constants.iFrame = kindTime.frame;
    constants.sunriseGlow = sunriseGlow_;
    Write(context, constants_.Get(), constants);
    // The vertex program reads them too: it works out what all pixels have in common.
    context.VSSetConstantBuffers(2, 1, constants_.GetAddressOf());

    ID3D11PixelShader* shader = activePixelShader_.Get();
    if (kind_ == BackgroundKind::LiquidMetalSurface) {
        if (const HRESULT result = surface_.RecordGrid(*device_, context, surface.width, surface.height,
                                                       kindTime.seconds, tuning_, pointer_);
            FAILED(result)) {
            return result;
        }
        shader = surface_.PixelShader();
    }
    context.PSSetShader(shader, nullptr, 0);
    context.Draw(kStripVertices, 0);
    return S_OK;
}

void BackgroundRenderer::RecordBlit(ID3D11DeviceContext& context, const SurfaceTarget& surface,
                                    const BlitFrameRecord& record, float sdrWhiteScale) const {
    // The offscreen texture is read from here on, and may not be bound for drawing meanwhile.
    context.OMSetRenderTargets(0, nullptr, nullptr);
    context.OMSetRenderTargets(1, &surface.RTV, nullptr);
    SetViewport(context, surface.width, surface.height);
    ID3D11ShaderResourceView* const source = record.useThemeBackground ? offscreenSrv_.Get() : nullptr;
    context.PSSetShaderResources(0, 1, &source);

    Write(context, blitConstants_.Get(), BlitConstantsFor(record, kind_, Grade(), sdrWhiteScale));
    context.PSSetConstantBuffers(0, 1, blitConstants_.GetAddressOf());
    context.VSSetConstantBuffers(1, 1, blitConstants_.GetAddressOf());
    context.PSSetShader(blitPixelShader_.Get(), nullptr, 0);
    context.Draw(kStripVertices, 0);

    context.OMSetRenderTargets(0, nullptr, nullptr);
    ID3D11ShaderResourceView* const none = nullptr;
    context.PSSetShaderResources(0, 1, &none);
}

void BackgroundRenderer::CountFrame() {
    if (!animate_) return;
    frameCounter_ = Next(frameCounter_);
    if (kind_ == BackgroundKind::QuietGoldSunrise && sunriseRate_ > 0.0F) sunriseFrame_ = Next(sunriseFrame_);
}

}  // namespace Tamborel
