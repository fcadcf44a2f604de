#include "tools/scene_shot/Studio.h"

#include "Core/DeviceManager.h"
#include "Scene/DrawContext.h"

#include <combaseapi.h>
#include <d2d1_3.h>
#include <d3d11_4.h>
#include <dxgi1_6.h>
#include <wrl/client.h>

#include <array>
#include <bit>
#include <cstdio>
#include <cstring>
#include <stdexcept>

namespace SceneShot {

namespace {

using Microsoft::WRL::ComPtr;
using Tamborel::DeviceManager;

void Require(HRESULT result, const char* call) {
    if (SUCCEEDED(result)) return;
    std::array<char, 128> text{};
    std::snprintf(text.data(), text.size(), "%s failed: 0x%08X", call, static_cast<unsigned>(result));
    throw std::runtime_error(text.data());
}

/// The process-wide factories for as long as it lives. Without the whole toolkit, since there is no window.
class Factories {
public:
    Factories() {
        Require(CoInitializeEx(nullptr, COINIT_MULTITHREADED), "CoInitializeEx");
        Require(DeviceManager::Get().Initialize(), "DeviceManager::Initialize");
    }
    ~Factories() {
        DeviceManager::Get().Shutdown();
        CoUninitialize();
    }
    Factories(const Factories&) = delete;
    Factories& operator=(const Factories&) = delete;
};

/// A texture in the place of a window's back buffer, and a Direct2D context that paints on it.
class Studio {
public:
    explicit Studio(const View& view) : view_(view) {
        Require(D3D11CreateDevice(nullptr, D3D_DRIVER_TYPE_HARDWARE, nullptr, D3D11_CREATE_DEVICE_BGRA_SUPPORT, nullptr,
                                  0, D3D11_SDK_VERSION, device_.GetAddressOf(), nullptr, immediate_.GetAddressOf()),
                "D3D11CreateDevice");
        D3D11_TEXTURE2D_DESC description{};
        description.Width = view.width;
        description.Height = view.height;
        description.MipLevels = 1;
        description.ArraySize = 1;
        description.Format = DXGI_FORMAT_B8G8R8A8_UNORM;
        description.SampleDesc.Count = 1;
        description.BindFlags = D3D11_BIND_RENDER_TARGET;
        Require(device_->CreateTexture2D(&description, nullptr, image_.GetAddressOf()), "CreateTexture2D");
        MakeContext();
    }

    void Paint(Tamborel::SceneNode& root, const Tamborel::Color& backdrop) {
        context_->SetTarget(target_.Get());
        context_->BeginDraw();
        const auto clear = std::bit_cast<D2D1_COLOR_F>(backdrop);
        context_->Clear(&clear);
        {
            Tamborel::DrawContext context(context_.Get(), &brushes_, 1.0F);
            root.Prepare(context);
            root.Draw(context);
        }
        Require(context_->EndDraw(nullptr, nullptr), "EndDraw");
        context_->SetTarget(nullptr);
    }

    Pictures::Picture Read() {
        D3D11_TEXTURE2D_DESC description{};
        image_->GetDesc(&description);
        description.Usage = D3D11_USAGE_STAGING;
        description.BindFlags = 0;
        description.CPUAccessFlags = D3D11_CPU_ACCESS_READ;
        ComPtr<ID3D11Texture2D> staging;
        Require(device_->CreateTexture2D(&description, nullptr, staging.GetAddressOf()), "CreateTexture2D");
        immediate_->CopyResource(staging.Get(), image_.Get());
        D3D11_MAPPED_SUBRESOURCE mapped{};
        Require(immediate_->Map(staging.Get(), 0, D3D11_MAP_READ, 0, &mapped), "Map");
        Pictures::Picture picture{view_.width, view_.height, {}};
        picture.texels.reserve(std::size_t{view_.width} * view_.height);
        for (std::uint32_t y = 0; y < view_.height; ++y) {
            const auto* row = static_cast<const std::uint8_t*>(mapped.pData) + std::size_t{y} * mapped.RowPitch;
            for (std::uint32_t x = 0; x < view_.width; ++x) {
                const std::uint8_t* const bgra = row + std::size_t{x} * 4;
                picture.texels.push_back({bgra[2], bgra[1], bgra[0], bgra[3]});
            }
        }
        immediate_->Unmap(staging.Get(), 0);
        return picture;
    }

private:
    void MakeContext() {
        ComPtr<IDXGIDevice> dxgiDevice;
        Require(device_.As(&dxgiDevice), "QueryInterface of IDXGIDevice");
        Require(DeviceManager::Get().GetD2DFactory()->CreateDevice(dxgiDevice.Get(), &drawingDevice_), "CreateDevice");
        // The newest context: every one of this platform has all the interfaces of its chain.
        Require(drawingDevice_->CreateDeviceContext(D2D1_DEVICE_CONTEXT_OPTIONS_NONE,
                                                    reinterpret_cast<ID2D1DeviceContext**>(context_.GetAddressOf())),
                "CreateDeviceContext");
        ComPtr<IDXGISurface2> surface;
        Require(image_.As(&surface), "QueryInterface of IDXGISurface2");
        const D2D1_BITMAP_PROPERTIES1 properties =
            D2D1::BitmapProperties1(D2D1_BITMAP_OPTIONS_TARGET | D2D1_BITMAP_OPTIONS_CANNOT_DRAW,
                                    D2D1::PixelFormat(DXGI_FORMAT_B8G8R8A8_UNORM, D2D1_ALPHA_MODE_PREMULTIPLIED));
        Require(context_->CreateBitmapFromDxgiSurface(surface.Get(), &properties, &target_),
                "CreateBitmapFromDxgiSurface");
    }

    View view_;
    ComPtr<ID3D11Device> device_;
    ComPtr<ID3D11DeviceContext> immediate_;
    ComPtr<ID3D11Texture2D> image_;
    ComPtr<ID2D1Device2> drawingDevice_;
    ComPtr<ID2D1DeviceContext5> context_;
    ComPtr<ID2D1Bitmap1> target_;
    Tamborel::BrushCache brushes_;
};

}  // namespace

Shot Draw(const Scene& scene, const View& view) {
    const Factories factories;
    Studio studio(view);
    Shot shot;
    shot.root = scene.make(view);
    shot.root->Update(0);
    shot.root->Animate(0);
    studio.Paint(*shot.root, scene.backdrop);
    shot.picture = studio.Read();
    return shot;
}

}  // namespace SceneShot
