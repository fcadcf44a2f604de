// What an asset has a device make of its bytes.
#include "Scene/ImageAsset.h"

#include "Core/DeviceManager.h"

#include <shlwapi.h>
#include <wincodec.h>

#include <algorithm>
#include <limits>
#include <tuple>

namespace Tamborel {

using Microsoft::WRL::ComPtr;

/// An asset's encoded bytes while something is made of them. Those that were loaded stay locked as long as this lives.
class ImageAsset::EncodedBytes {
public:
    EncodedBytes(LoadState* state, EmbeddedResource* embedded) {
        if (embedded) {
            std::tie(first_, size_) = embedded->Data();
        } else if (state) {
            lock_ = std::unique_lock(state->lock);
            state_ = state;
            first_ = state->bytes.data();
            size_ = state->bytes.size();
        }
    }

    const std::uint8_t* First() const { return first_; }
    /// 0 for bytes that are not there, and for more than the interfaces can count.
    std::uint32_t Size() const {
        return first_ && size_ <= std::numeric_limits<std::uint32_t>::max() ? static_cast<std::uint32_t>(size_) : 0;
    }
    /// The device object stands for loaded bytes from now on.
    void Drop() {
        if (state_) std::vector<std::uint8_t>().swap(state_->bytes);
    }

private:
    std::unique_lock<std::mutex> lock_;
    LoadState* state_ = nullptr;
    const std::uint8_t* first_ = nullptr;
    std::uint64_t size_ = 0;
};

// A failure leaves `made` as it was: the next draw tries again.
void ImageAsset::Decode(ID2D1DeviceContext5* target, const Rect& destination, DeviceEntry& made) {
    if (isSvg_) {
        const D2D1_SIZE_F viewport{std::max(1.0F, destination.right - destination.left),
                                   std::max(1.0F, destination.bottom - destination.top)};
        ComPtr<ID2D1SvgDocument> document;
        if (SUCCEEDED(MakeDocument(target, viewport, &document))) made.document = document;
    } else {
        ComPtr<ID2D1Bitmap> bitmap;
        if (SUCCEEDED(MakeBitmap(target, &bitmap))) made.bitmap = bitmap;
    }
}

HRESULT ImageAsset::MakeDocument(ID2D1DeviceContext5* target, D2D1_SIZE_F viewport, ID2D1SvgDocument** document) {
    EncodedBytes bytes(state_.get(), embedded_);
    if (bytes.Size() == 0) return E_FAIL;
    ComPtr<IStream> stream;
    stream.Attach(SHCreateMemStream(bytes.First(), bytes.Size()));
    if (!stream) return E_OUTOFMEMORY;
    ComPtr<ID2D1SvgDocument> made;
    const HRESULT result = target->CreateSvgDocument(stream.Get(), viewport, &made);
    if (FAILED(result)) return result;
    ComPtr<ID2D1SvgElement> root;
    made->GetRoot(&root);
    if (root) {
        // The drawing fills the viewport by its view box, whatever size the file gives it. Without this much it would
        // still be drawn, so a failure here is no failure.
        const D2D1_SVG_LENGTH whole{100.0F, D2D1_SVG_LENGTH_UNITS_PERCENTAGE};
        root->SetAttributeValue(L"width", D2D1_SVG_ATTRIBUTE_POD_TYPE_LENGTH, &whole, sizeof whole);
        root->SetAttributeValue(L"height", D2D1_SVG_ATTRIBUTE_POD_TYPE_LENGTH, &whole, sizeof whole);
    }
    bytes.Drop();
    *document = made.Detach();
    return S_OK;
}

HRESULT ImageAsset::MakeBitmap(ID2D1DeviceContext5* target, ID2D1Bitmap** bitmap) {
    EncodedBytes bytes(state_.get(), embedded_);
    if (bytes.Size() == 0) return E_FAIL;
    IWICImagingFactory2* const factory = DeviceManager::Get().GetWICFactory();
    if (!factory) return E_FAIL;

    ComPtr<IWICStream> stream;
    HRESULT result = factory->CreateStream(&stream);
    if (FAILED(result)) return result;
    // The stream only reads; its interface has no word for that.
    result = stream->InitializeFromMemory(const_cast<BYTE*>(bytes.First()), bytes.Size());
    if (FAILED(result)) return result;
    ComPtr<IWICBitmapDecoder> decoder;
    result = factory->CreateDecoderFromStream(stream.Get(), nullptr, WICDecodeMetadataCacheOnLoad, &decoder);
    if (FAILED(result)) return result;
    ComPtr<IWICBitmapFrameDecode> frame;
    result = decoder->GetFrame(0, &frame);
    if (FAILED(result)) return result;
    ComPtr<IWICFormatConverter> converter;
    result = factory->CreateFormatConverter(&converter);
    if (FAILED(result)) return result;
    result = converter->Initialize(frame.Get(), GUID_WICPixelFormat32bppPBGRA, WICBitmapDitherTypeNone, nullptr, 0.0,
                                   WICBitmapPaletteTypeMedianCut);
    if (FAILED(result)) return result;
    ComPtr<ID2D1Bitmap1> made;
    result = target->CreateBitmapFromWicBitmap(converter.Get(), nullptr, &made);
    if (FAILED(result)) return result;
    bytes.Drop();
    *bitmap = made.Detach();
    return S_OK;
}

}  // namespace Tamborel
