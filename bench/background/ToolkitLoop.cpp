#include "ToolkitLoop.h"

#include <stdexcept>
#include <string>

namespace BackgroundBench {

namespace {

void Require(HRESULT result, const char* call) {
    if (FAILED(result)) throw std::runtime_error(std::string(call) + " failed");
}

D3D11_TEXTURE2D_DESC TextureOf(UINT width, UINT height) {
    D3D11_TEXTURE2D_DESC description{};
    description.Width = width;
    description.Height = height;
    description.MipLevels = 1;
    description.ArraySize = 1;
    description.Format = DXGI_FORMAT_B8G8R8A8_UNORM;  // as a window's image
    description.SampleDesc.Count = 1;
    return description;
}

}  // namespace

ToolkitLoop::ToolkitLoop() {
    Require(D3D11CreateDevice(nullptr, D3D_DRIVER_TYPE_HARDWARE, nullptr, D3D11_CREATE_DEVICE_BGRA_SUPPORT, nullptr, 0,
                              D3D11_SDK_VERSION, device_.GetAddressOf(), nullptr, immediate_.GetAddressOf()),
            "D3D11CreateDevice");
    Require(renderer_.InitializeOn(device_.Get()), "BackgroundRenderer::InitializeOn");
    Require(device_->CreateDeferredContext(0, deferred_.GetAddressOf()), "CreateDeferredContext");
    D3D11_TEXTURE2D_DESC description = TextureOf(1, 1);
    description.Usage = D3D11_USAGE_STAGING;
    description.CPUAccessFlags = D3D11_CPU_ACCESS_READ;
    Require(device_->CreateTexture2D(&description, nullptr, fence_.GetAddressOf()), "CreateTexture2D");
}

void ToolkitLoop::Prepare(const Scenario& scenario) {
    view_.Reset();
    D3D11_TEXTURE2D_DESC description = TextureOf(scenario.width, scenario.height);
    description.BindFlags = D3D11_BIND_RENDER_TARGET;
    Require(device_->CreateTexture2D(&description, nullptr, image_.ReleaseAndGetAddressOf()), "CreateTexture2D");
    Require(device_->CreateRenderTargetView(image_.Get(), nullptr, view_.ReleaseAndGetAddressOf()),
            "CreateRenderTargetView");
    surface_ = {view_.Get(), scenario.width, scenario.height};
    record_ = scenario.Record();
    renderer_.SetBackground(scenario.kind);
    renderer_.SetColorGrade(kGrade);
    renderer_.SetSurfaceTuning(scenario.Tuning());
    time_ = 0.0F;
}

void ToolkitLoop::DrawFrame() {
    ComPtr<ID3D11CommandList> list;
    Require(renderer_.RecordDraw(&surface_, time_, deferred_.Get(), list.GetAddressOf(), record_, 1.0F), "RecordDraw");
    {
        const std::lock_guard lock(mutex_);
        immediate_->ExecuteCommandList(list.Get(), TRUE);
    }
    D3D11_MAPPED_SUBRESOURCE mapped{};
    Require(immediate_->Map(fence_.Get(), 0, D3D11_MAP_READ, 0, &mapped), "Map");
    immediate_->Unmap(fence_.Get(), 0);
    time_ += kFrameTime;
}

}  // namespace BackgroundBench
