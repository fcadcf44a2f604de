// What text costs: setting it, its outline, and frames with a hundred labels of it.

#include "Platform/Linux/Base/ComObject.h"
#include "Platform/Linux/Direct2D/Factory.h"

#include "Scene/GlyphOutlineRenderer.h"

#include <dwrite.h>
#include <wrl/client.h>

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

namespace {

using Microsoft::WRL::ComPtr;
using namespace Platform::Direct2D;

constexpr D2D1_SIZE_U targetSize{820, 770};
constexpr int labels = 100;
const std::wstring label = L"Select the folder that holds the game at";  // 40 characters

/// A target that does nothing with what it is handed: only the drawing counts.
class IdleTarget final : public LayerTarget {
public:
    D2D1_SIZE_U Size() const noexcept override { return targetSize; }
    HRESULT Compose(const LayerFrame&) noexcept override { return S_OK; }
};

class IdleTargets final : public LayerTargetMaker {
public:
    std::unique_ptr<LayerTarget> Make(IDXGISurface*) const override { return std::make_unique<IdleTarget>(); }
    std::shared_ptr<const void> KeepDeviceObjects(IDXGIDevice*) const override { return nullptr; }
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

ComPtr<IDWriteFactory> TextFactory() {
    ComPtr<IDWriteFactory> factory;
    DWriteCreateFactory(DWRITE_FACTORY_TYPE_SHARED, __uuidof(IDWriteFactory),
                        reinterpret_cast<IUnknown**>(factory.GetAddressOf()));
    return factory;
}

ComPtr<IDWriteTextLayout> Layout(IDWriteFactory& factory, const std::wstring& text, float size = 14.0F) {
    ComPtr<IDWriteTextFormat> format;
    factory.CreateTextFormat(L"Segoe UI", nullptr, DWRITE_FONT_WEIGHT_NORMAL, DWRITE_FONT_STYLE_NORMAL,
                             DWRITE_FONT_STRETCH_NORMAL, size, L"", &format);
    ComPtr<IDWriteTextLayout> layout;
    factory.CreateTextLayout(text.data(), static_cast<UINT32>(text.size()), format.Get(), 300.0F, 30.0F, &layout);
    return layout;
}

/// A context with a target, a brush and labels spread over it.
class Board {
public:
    Board() : factory_(new Factory(targets_)) {
        factory_->Release();  // The pointer holds the one that counts.
        ComPtr<IDXGIDevice> dxgi;
        dxgi.Attach(new StubDevice());
        factory_->CreateDevice(dxgi.Get(), &device_);
        device_->CreateDeviceContext(D2D1_DEVICE_CONTEXT_OPTIONS_NONE, &context_);
        ComPtr<IDXGISurface> surface;
        surface.Attach(new StubSurface());
        ComPtr<ID2D1Bitmap1> target;
        context_->CreateBitmapFromDxgiSurface(surface.Get(), nullptr, &target);
        context_->SetTarget(target.Get());
        context_->CreateSolidColorBrush({1, 1, 1, 1}, &brush_);
        for (int i = 0; i < labels; ++i) layouts.push_back(Layout(*text.Get(), label + std::to_wstring(i), 8.0F));
    }

    void Draw() {
        context_->BeginDraw();
        for (std::size_t i = 0; i < layouts.size(); ++i) {
            const auto column = static_cast<float>(i % 4);
            const auto row = static_cast<float>(i / 4);  // NOLINT(bugprone-integer-division): whole rows
            context_->DrawTextLayout({column * 200, row * 30}, layouts[i].Get(), brush_.Get());
        }
        context_->EndDraw();
    }
    ID2D1Factory& Shapes() { return *factory_.Get(); }

    ComPtr<IDWriteFactory> text = TextFactory();
    std::vector<ComPtr<IDWriteTextLayout>> layouts;

private:
    IdleTargets targets_;
    ComPtr<ID2D1Factory3> factory_;
    ComPtr<ID2D1Device2> device_;
    ComPtr<ID2D1DeviceContext> context_;
    ComPtr<ID2D1SolidColorBrush> brush_;
};

// The first of the process reads the font configuration, so it runs once.
void FirstLayout(benchmark::State& state) {
    const ComPtr<IDWriteFactory> factory = TextFactory();
    for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(Layout(*factory.Get(), label));
}
BENCHMARK(FirstLayout)->Iterations(1)->Unit(benchmark::kMillisecond);

void LayoutAgain(benchmark::State& state) {
    const ComPtr<IDWriteFactory> factory = TextFactory();
    for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(Layout(*factory.Get(), label));
}
BENCHMARK(LayoutAgain)->Unit(benchmark::kMicrosecond);

void BuildOutline(benchmark::State& state) {
    Board board;
    const ComPtr<IDWriteTextLayout> layout = Layout(*board.text.Get(), label);
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(Tamborel::GlyphOutlineBuilder(layout.Get(), &board.Shapes(), 0.0F, 0.0F));
    }
}
BENCHMARK(BuildOutline)->Unit(benchmark::kMicrosecond);

void DrawUnchangedLabels(benchmark::State& state) {
    Board board;
    board.Draw();
    for ([[maybe_unused]] auto _ : state) board.Draw();
}
BENCHMARK(DrawUnchangedLabels)->Unit(benchmark::kMicrosecond);

void DrawOneChangedLabel(benchmark::State& state) {
    Board board;
    board.Draw();
    int count = 0;
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        board.layouts[42] = Layout(*board.text.Get(), label + std::to_wstring(count++), 8.0F);
        state.ResumeTiming();
        board.Draw();
    }
}
BENCHMARK(DrawOneChangedLabel)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
