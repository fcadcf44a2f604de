#include <wincodec.h>
#include <wrl/client.h>

#include <gtest/gtest.h>

namespace {

using Microsoft::WRL::ComPtr;

class Apartment {
public:
    Apartment() { EXPECT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK); }
    ~Apartment() { CoUninitialize(); }
};

TEST(ImagingFactory, IsMadeByItsClass) {
    const Apartment apartment;
    ComPtr<IWICImagingFactory2> factory;
    EXPECT_EQ(CoCreateInstance(CLSID_WICImagingFactory2, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&factory)), S_OK);
    EXPECT_TRUE(factory);
}

TEST(ImagingFactory, OtherInterfaceIsRefused) {
    const Apartment apartment;
    ComPtr<IWICBitmapDecoder> decoder;
    EXPECT_EQ(CoCreateInstance(CLSID_WICImagingFactory2, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&decoder)),
              E_NOINTERFACE);
    EXPECT_FALSE(decoder);
}

TEST(ImagingFactory, ClassThatNoLibraryRegisteredIsUnknown) {
    const Apartment apartment;
    ComPtr<IUnknown> object;
    EXPECT_EQ(CoCreateInstance(GUID_WICPixelFormat32bppPBGRA, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&object)),
              REGDB_E_CLASSNOTREG);
}

TEST(ImagingFactory, NothingIsMadeOutsideAnApartment) {
    ComPtr<IWICImagingFactory2> factory;
    EXPECT_EQ(CoCreateInstance(CLSID_WICImagingFactory2, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&factory)),
              CO_E_NOTINITIALIZED);
}

}  // namespace
