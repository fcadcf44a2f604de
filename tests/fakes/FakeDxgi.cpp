#include "tests/fakes/FakeDxgi.h"

#include "tests/fakes/FakeDirect3D.h"

#include <windows.h>

#include <algorithm>
#include <atomic>
#include <mutex>
#include <vector>

namespace Fakes {

namespace {

std::mutex waitablesMutex;
std::vector<HANDLE> waitables;  // guarded by waitablesMutex
std::atomic<bool> signalOnPresent = false;

}  // namespace

void SignalFrame() {
    const std::lock_guard lock(waitablesMutex);
    // Values of handles are never used twice, so one that its owner has closed can be told.
    std::erase_if(waitables, [](HANDLE waitable) { return !SetEvent(waitable); });
}

void SignalFrameOnPresent(bool signal) {
    signalOnPresent = signal;
}

HRESULT FakeFactory::GetParent(REFIID, void** parent) {
    if (parent) *parent = nullptr;
    return E_NOINTERFACE;
}

HRESULT FakeFactory::CreateSwapChainForComposition(IUnknown* device, const DXGI_SWAP_CHAIN_DESC1* description,
                                                   IDXGIOutput* output, IDXGISwapChain1** swapChain) {
    const DXGI_SWAP_CHAIN_DESC1& d = *description;
    const HRESULT result = Call("CreateSwapChainForComposition", device, d.Width, d.Height, d.Format, d.Stereo,
                                d.SampleDesc.Count, d.SampleDesc.Quality, Hex{d.BufferUsage}, d.BufferCount, d.Scaling,
                                d.SwapEffect, d.AlphaMode, Hex{d.Flags}, output);
    return Make<FakeSwapChain>(result, swapChain, d);
}

FakeSwapChain::FakeSwapChain(const DXGI_SWAP_CHAIN_DESC1& description)
    : FakeObject("SwapChain"), description_(description) {}

void FakeSwapChain::MakeBuffer() {
    D3D11_TEXTURE2D_DESC texture{};
    texture.Width = description_.Width;
    texture.Height = description_.Height;
    texture.MipLevels = 1;
    texture.ArraySize = 1;
    texture.Format = description_.Format;
    texture.SampleDesc = description_.SampleDesc;
    texture.BindFlags = D3D11_BIND_RENDER_TARGET;
    buffer_.Attach(new FakeTexture("BackBuffer", texture));
}

HRESULT FakeSwapChain::GetParent(REFIID, void** parent) {
    if (parent) *parent = nullptr;
    return E_NOINTERFACE;
}

HRESULT FakeSwapChain::GetDevice(REFIID, void** device) {
    if (device) *device = nullptr;
    return E_NOINTERFACE;
}

HRESULT FakeSwapChain::GetBuffer(UINT index, REFIID iid, void** surface) {
    const HRESULT result = Call("GetBuffer", index);
    *surface = nullptr;
    if (FAILED(result)) return result;
    if (!buffer_) MakeBuffer();
    return buffer_->QueryInterface(iid, surface);
}

HRESULT FakeSwapChain::ResizeBuffers(UINT count, UINT width, UINT height, DXGI_FORMAT format, UINT flags) {
    const HRESULT result = Call("ResizeBuffers", count, width, height, format, Hex{flags});
    if (FAILED(result)) return result;
    if (buffer_ && buffer_->References() > 1) return DXGI_ERROR_INVALID_CALL;
    buffer_.Reset();
    if (count != 0) description_.BufferCount = count;
    description_.Width = width;
    description_.Height = height;
    if (format != DXGI_FORMAT_UNKNOWN) description_.Format = format;
    return S_OK;
}

HRESULT FakeSwapChain::GetDesc1(DXGI_SWAP_CHAIN_DESC1* description) {
    const HRESULT result = Call("GetDesc1");
    if (SUCCEEDED(result)) *description = description_;
    return result;
}

HRESULT FakeSwapChain::Present1(UINT interval, UINT flags, const DXGI_PRESENT_PARAMETERS* parameters) {
    const HRESULT result = Call("Present1", interval, Hex{flags}, parameters ? parameters->DirtyRectsCount : 0);
    if (signalOnPresent) SignalFrame();
    return result;
}

HRESULT FakeSwapChain::SetMaximumFrameLatency(UINT latency) {
    const HRESULT result = Call("SetMaximumFrameLatency", latency);
    if (SUCCEEDED(result)) latency_ = latency;
    return result;
}

HRESULT FakeSwapChain::GetMaximumFrameLatency(UINT* latency) {
    *latency = latency_;
    return Call("GetMaximumFrameLatency");
}

HANDLE FakeSwapChain::GetFrameLatencyWaitableObject() {
    if (FAILED(Call("GetFrameLatencyWaitableObject"))) return nullptr;
    const HANDLE waitable = CreateEventW(nullptr, FALSE, TRUE, nullptr);
    const std::lock_guard lock(waitablesMutex);
    waitables.push_back(waitable);
    return waitable;
}

HRESULT FakeSwapChain::CheckColorSpaceSupport(DXGI_COLOR_SPACE_TYPE space, UINT* support) {
    const HRESULT result = Call("CheckColorSpaceSupport", space);
    *support = SUCCEEDED(result) ? DXGI_SWAP_CHAIN_COLOR_SPACE_SUPPORT_FLAG_PRESENT : 0;
    return result;
}

HRESULT FakeSwapChain::SetColorSpace1(DXGI_COLOR_SPACE_TYPE space) {
    return Call("SetColorSpace1", space);
}

}  // namespace Fakes

FAKE_FUNCTION HRESULT WINAPI CreateDXGIFactory2(UINT flags, REFIID iid, void** factory) noexcept {
    return Fakes::MakeAs<Fakes::FakeFactory>(Fakes::FreeCall("CreateDXGIFactory2", flags), iid, factory);
}
