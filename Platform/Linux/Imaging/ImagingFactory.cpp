// The imaging factory. It can be made and held; what it makes has no caller yet.

#include "Platform/Linux/Base/ComObject.h"
#include "Platform/Linux/Com/ClassRegistry.h"

#include <wincodec.h>

#include <new>

namespace Platform {

namespace {

class ImagingFactory final : public ComObject<IWICImagingFactory2, IWICImagingFactory> {
public:
    ImagingFactory() : ComObject("IWICImagingFactory") {}

    HRESULT CreateDecoderFromStream(IStream*, const GUID*, WICDecodeOptions, IWICBitmapDecoder** decoder) override {
        if (decoder) *decoder = nullptr;
        return NotImplemented("IWICImagingFactory::CreateDecoderFromStream");
    }
    HRESULT CreateFormatConverter(IWICFormatConverter** converter) override {
        if (converter) *converter = nullptr;
        return NotImplemented("IWICImagingFactory::CreateFormatConverter");
    }
    HRESULT CreateStream(IWICStream** stream) override {
        if (stream) *stream = nullptr;
        return NotImplemented("IWICImagingFactory::CreateStream");
    }

private:
    ~ImagingFactory() override = default;
};

HRESULT MakeImagingFactory(REFIID iid, void** object) noexcept {
    auto* const made = new (std::nothrow) ImagingFactory();
    if (!made) return E_OUTOFMEMORY;
    const HRESULT result = made->QueryInterface(iid, object);
    made->Release();
    return result;
}

}  // namespace

}  // namespace Platform

// Named for the linker, which is told to keep it.
extern "C" const Platform::ClassRegistration VelorinthImagingFactoryClass;
const Platform::ClassRegistration VelorinthImagingFactoryClass(CLSID_WICImagingFactory2, Platform::MakeImagingFactory);
