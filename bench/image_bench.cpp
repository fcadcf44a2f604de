// What pictures cost: decoding a PNG, an SVG's first draw and its repeats. Drawn on memory, without a graphics device.
#include "Platform/Linux/Direct2D/Factory.h"
#include "tests/support/Pictures.h"
#include "tests/unit/Platform/Linux/Direct2D/Canvas.h"

#include <shlwapi.h>
#include <wincodec.h>

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

using Microsoft::WRL::ComPtr;

namespace {

std::string Logo() {
    std::ifstream file(VELORINTH_LOGO, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

ComPtr<ID2D1SvgDocument> Parse(Canvas& canvas, const std::string& text) {
    ComPtr<IStream> stream;
    stream.Attach(SHCreateMemStream(reinterpret_cast<const BYTE*>(text.data()), static_cast<UINT>(text.size())));
    ComPtr<ID2D1SvgDocument> document;
    if (FAILED(canvas.Context().CreateSvgDocument(stream.Get(), {480, 120}, &document))) std::abort();
    return document;
}

void DrawAt(Canvas& canvas, ID2D1SvgDocument* document, float scale) {
    canvas.Draw([&](ID2D1DeviceContext5& context) {
        context.SetTransform(D2D1::Matrix3x2F(scale, 0, 0, scale, 20, 20));
        context.DrawSvgDocument(document);
    });
}

// Parse, render, rasterise: what the frame that first shows the logo pays.
void SvgLogoFirstDraw(benchmark::State& state) {
    const std::string logo = Logo();
    for ([[maybe_unused]] auto _ : state) {
        Canvas canvas(820, 200);
        DrawAt(canvas, Parse(canvas, logo).Get(), static_cast<float>(state.range(0)) / 100);
    }
}
BENCHMARK(SvgLogoFirstDraw)->Arg(100)->Arg(150)->Unit(benchmark::kMillisecond);

// The same frame again.
void SvgLogoRepeat(benchmark::State& state) {
    Canvas canvas(820, 200);
    const auto document = Parse(canvas, Logo());
    DrawAt(canvas, document.Get(), 1.5F);
    ID2D1DeviceContext5& context = canvas.Context();
    for ([[maybe_unused]] auto _ : state) {
        // Without the end of the pass, which in this program copies the target for tests to look at.
        context.BeginDraw();
        context.SetTransform(D2D1::Matrix3x2F(1.5F, 0, 0, 1.5F, 20, 20));
        context.DrawSvgDocument(document.Get());
        state.PauseTiming();
        context.EndDraw();
        canvas.Record().frames.clear();
        state.ResumeTiming();
    }
}
BENCHMARK(SvgLogoRepeat)->Unit(benchmark::kMicrosecond);

void PngDecode(benchmark::State& state) {
    const auto side = static_cast<int>(state.range(0));
    Pictures::Bytes bytes = Pictures::Png(Pictures::Gradient(side, side));
    if (FAILED(CoInitializeEx(nullptr, COINIT_MULTITHREADED))) std::abort();
    {
        ComPtr<IWICImagingFactory> factory;
        if (FAILED(CoCreateInstance(CLSID_WICImagingFactory2, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&factory)))) {
            std::abort();
        }
        std::vector<BYTE> pixels(static_cast<std::size_t>(side) * static_cast<std::size_t>(side) * 4);
        for ([[maybe_unused]] auto _ : state) {
            ComPtr<IWICStream> stream;
            ComPtr<IWICBitmapDecoder> decoder;
            ComPtr<IWICBitmapFrameDecode> frame;
            HRESULT result = factory->CreateStream(&stream);
            if (SUCCEEDED(result)) {
                result = stream->InitializeFromMemory(bytes.data(), static_cast<DWORD>(bytes.size()));
            }
            if (SUCCEEDED(result)) {
                result =
                    factory->CreateDecoderFromStream(stream.Get(), nullptr, WICDecodeMetadataCacheOnLoad, &decoder);
            }
            if (SUCCEEDED(result)) result = decoder->GetFrame(0, &frame);
            if (SUCCEEDED(result)) {
                result = frame->CopyPixels(nullptr, static_cast<UINT>(side) * 4, static_cast<UINT>(pixels.size()),
                                           pixels.data());
            }
            if (FAILED(result)) state.SkipWithError("a failure");
        }
    }
    CoUninitialize();
    state.SetItemsProcessed(state.iterations() * side * side);
}
BENCHMARK(PngDecode)->Arg(64)->Arg(512)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
