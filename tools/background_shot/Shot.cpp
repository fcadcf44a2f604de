#include "tools/background_shot/Shot.h"

#include "Background/BackgroundRenderer.h"

#include <wrl/client.h>

#include <bit>
#include <cmath>
#include <cstdio>
#include <cstring>

namespace BackgroundShot {

namespace {

using Microsoft::WRL::ComPtr;

void Require(HRESULT result, const char* call) {
    if (SUCCEEDED(result)) return;
    std::array<char, 128> text{};
    std::snprintf(text.data(), text.size(), "%s failed: 0x%08X", call, static_cast<unsigned>(result));
    throw std::runtime_error(text.data());
}

float FromHalf(std::uint16_t half) {
    const int exponent = (half >> 10) & 0x1F;
    const int fraction = half & 0x3FF;
    float value = 0.0F;
    if (exponent == 0x1F) {
        value = fraction ? NAN : INFINITY;
    } else if (exponent == 0) {
        value = std::ldexp(static_cast<float>(fraction), -24);
    } else {
        value = std::ldexp(static_cast<float>(fraction + 0x400), exponent - 25);
    }
    return half & 0x8000 ? -value : value;
}

/// A device without a window, and a texture in the image's place.
class Studio {
public:
    explicit Studio(const Options& options) : options_(options) {
        Require(D3D11CreateDevice(nullptr, D3D_DRIVER_TYPE_HARDWARE, nullptr, D3D11_CREATE_DEVICE_BGRA_SUPPORT, nullptr,
                                  0, D3D11_SDK_VERSION, device_.GetAddressOf(), nullptr, immediate_.GetAddressOf()),
                "D3D11CreateDevice");
        D3D11_TEXTURE2D_DESC description{};
        description.Width = options.width;
        description.Height = options.height;
        description.MipLevels = 1;
        description.ArraySize = 1;
        description.Format = DXGI_FORMAT_R32G32B32A32_FLOAT;
        description.SampleDesc.Count = 1;
        description.BindFlags = D3D11_BIND_RENDER_TARGET;
        Require(device_->CreateTexture2D(&description, nullptr, image_.GetAddressOf()), "CreateTexture2D");
        Require(device_->CreateRenderTargetView(image_.Get(), nullptr, view_.GetAddressOf()), "CreateRenderTargetView");
        Require(renderer_.InitializeOn(device_.Get()), "BackgroundRenderer::InitializeOn");
    }

    Shot Take() {
        Set();
        ComPtr<ID3D11DeviceContext> deferred;
        Require(device_->CreateDeferredContext(0, deferred.GetAddressOf()), "CreateDeferredContext");
        const Tamborel::SurfaceTarget surface{view_.Get(), options_.width, options_.height};
        ComPtr<ID3D11CommandList> list;
        Require(renderer_.RecordDraw(&surface, static_cast<float>(options_.time), deferred.Get(), list.GetAddressOf(),
                                     options_.record, options_.whiteScale),
                "BackgroundRenderer::RecordDraw");
        immediate_->ExecuteCommandList(list.Get(), TRUE);
        Shot shot;
        shot.image = Read(image_.Get());
        if (options_.record.useThemeBackground) shot.offscreen = Read(renderer_.OffscreenTexture());
        return shot;
    }

private:
    void Set() {
        renderer_.SetBackground(options_.kind);
        if (options_.grade) renderer_.SetColorGrade(*options_.grade);
        if (options_.glow) renderer_.SetSunriseParameters(renderer_.SunriseRate(), *options_.glow);
        renderer_.SetSurfaceTuning(options_.tuning);
        if (options_.pointer) renderer_.SetPointer((*options_.pointer)[0], (*options_.pointer)[1], true);
        renderer_.SetSunriseClock(options_.time, options_.frame);
        renderer_.SetSurfaceClock(options_.time);
        renderer_.SetFrameCounter(options_.frame);
    }

    Picture Read(ID3D11Texture2D* texture) {
        D3D11_TEXTURE2D_DESC description{};
        texture->GetDesc(&description);
        description.Usage = D3D11_USAGE_STAGING;
        description.BindFlags = 0;
        description.CPUAccessFlags = D3D11_CPU_ACCESS_READ;
        ComPtr<ID3D11Texture2D> staging;
        Require(device_->CreateTexture2D(&description, nullptr, staging.GetAddressOf()), "CreateTexture2D");
        immediate_->CopyResource(staging.Get(), texture);
        D3D11_MAPPED_SUBRESOURCE mapped{};
        Require(immediate_->Map(staging.Get(), 0, D3D11_MAP_READ, 0, &mapped), "Map");
        Picture picture{description.Width, description.Height, {}};
        picture.texels.reserve(std::size_t{picture.width} * picture.height);
        for (std::uint32_t y = 0; y < picture.height; ++y) {
            const auto* row = static_cast<const std::byte*>(mapped.pData) + std::size_t{y} * mapped.RowPitch;
            for (std::uint32_t x = 0; x < picture.width; ++x) {
                picture.texels.push_back(Texel(row, x, description.Format == DXGI_FORMAT_R16G16B16A16_FLOAT));
            }
        }
        immediate_->Unmap(staging.Get(), 0);
        return picture;
    }

    static std::array<float, 4> Texel(const std::byte* row, std::size_t x, bool half) {
        std::array<float, 4> texel{};
        if (!half) {
            std::memcpy(texel.data(), row + x * sizeof(texel), sizeof(texel));
            return texel;
        }
        std::array<std::uint16_t, 4> halves{};
        std::memcpy(halves.data(), row + x * sizeof(halves), sizeof(halves));
        for (std::size_t i = 0; i < texel.size(); ++i) texel[i] = FromHalf(halves[i]);
        return texel;
    }

    const Options& options_;
    ComPtr<ID3D11Device> device_;
    ComPtr<ID3D11DeviceContext> immediate_;
    ComPtr<ID3D11Texture2D> image_;
    ComPtr<ID3D11RenderTargetView> view_;
    Tamborel::BackgroundRenderer renderer_;
};

}  // namespace

Shot Draw(const Options& options) {
    return Studio(options).Take();
}

}  // namespace BackgroundShot
