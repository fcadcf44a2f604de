#include "Canvas.h"

#include "Platform/Linux/Base/ComObject.h"
#include "Platform/Linux/Direct2D/Factory.h"

#include <gtest/gtest.h>

#include <cstring>

using Microsoft::WRL::ComPtr;
using namespace Platform::Direct2D;

namespace {

class MemoryTarget final : public LayerTarget {
public:
    MemoryTarget(D2D1_SIZE_U size, std::shared_ptr<ComposeRecord> record) : size_(size), record_(std::move(record)) {}

    D2D1_SIZE_U Size() const noexcept override { return size_; }

    HRESULT Compose(const LayerFrame& frame) noexcept override {
        ComposedFrame composed;
        if (frame.pixels) composed.pixels.resize(std::size_t{size_.width} * size_.height);
        for (std::size_t row = 0; frame.pixels && row < size_.height; ++row) {
            std::memcpy(composed.pixels.data() + row * size_.width, frame.pixels + row * frame.stride,
                        std::size_t{size_.width} * 4);
        }
        composed.painted.assign(frame.painted.begin(), frame.painted.end());
        composed.changed.assign(frame.changed.begin(), frame.changed.end());
        composed.clear = frame.clear;
        record_->frames.push_back(std::move(composed));
        return record_->result;
    }

private:
    D2D1_SIZE_U size_;
    std::shared_ptr<ComposeRecord> record_;
};

class MemoryTargets final : public LayerTargetMaker {
public:
    MemoryTargets(D2D1_SIZE_U size, std::shared_ptr<ComposeRecord> record) : size_(size), record_(std::move(record)) {}

    std::unique_ptr<LayerTarget> Make(IDXGISurface*) const override {
        return std::make_unique<MemoryTarget>(size_, record_);
    }
    std::shared_ptr<const void> KeepDeviceObjects(IDXGIDevice*) const override { return nullptr; }

private:
    D2D1_SIZE_U size_;
    std::shared_ptr<ComposeRecord> record_;
};

class StubDevice final : public Platform::ComObject<IDXGIDevice, IDXGIObject> {
public:
    StubDevice() : ComObject("StubDevice") {}
    HRESULT GetParent(REFIID, void**) override { return E_NOTIMPL; }
};

class StubSurface final : public Platform::ComObject<IDXGISurface, IDXGIDeviceSubObject, IDXGIObject> {
public:
    StubSurface() : ComObject("StubSurface") {}
    HRESULT GetParent(REFIID, void**) override { return E_NOTIMPL; }
    HRESULT GetDevice(REFIID, void**) override { return E_NOTIMPL; }
    HRESULT GetDesc(DXGI_SURFACE_DESC*) override { return E_NOTIMPL; }
};

}  // namespace

Canvas::Canvas(UINT32 width, UINT32 height, D2D1_ALPHA_MODE alphaMode)
    : width_(width),
      record_(std::make_shared<ComposeRecord>()),
      targets_(std::make_unique<MemoryTargets>(D2D1::SizeU(width, height), record_)) {
    factory_.Attach(new Platform::Direct2D::Factory(*targets_));
    ComPtr<IDXGIDevice> dxgiDevice;
    dxgiDevice.Attach(new StubDevice());
    EXPECT_EQ(factory_->CreateDevice(dxgiDevice.Get(), &device_), S_OK);
    ComPtr<ID2D1DeviceContext> context;
    EXPECT_EQ(device_->CreateDeviceContext(D2D1_DEVICE_CONTEXT_OPTIONS_NONE, &context), S_OK);
    EXPECT_EQ(context.As(&context_), S_OK);
    ComPtr<IDXGISurface> surface;
    surface.Attach(new StubSurface());
    const D2D1_BITMAP_PROPERTIES1 properties =
        D2D1::BitmapProperties1(D2D1_BITMAP_OPTIONS_TARGET | D2D1_BITMAP_OPTIONS_CANNOT_DRAW,
                                D2D1::PixelFormat(DXGI_FORMAT_B8G8R8A8_UNORM, alphaMode));
    EXPECT_EQ(context_->CreateBitmapFromDxgiSurface(surface.Get(), &properties, &target_), S_OK);
    context_->SetTarget(target_.Get());
}

ComPtr<ID2D1SolidColorBrush> Canvas::Brush(float r, float g, float b, float a) {
    ComPtr<ID2D1SolidColorBrush> brush;
    EXPECT_EQ(context_->CreateSolidColorBrush(D2D1::ColorF(r, g, b, a), &brush), S_OK);
    return brush;
}

std::uint32_t Canvas::Pixel(UINT32 x, UINT32 y) const {
    const std::vector<std::uint32_t>& pixels = record_->frames.back().pixels;
    return pixels.empty() ? 0 : pixels[std::size_t{y} * width_ + x];
}
