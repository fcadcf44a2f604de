#include <combaseapi.h>
#include <gtest/gtest.h>
#include <shobjidl.h>
#include <wrl/client.h>

#include <thread>

namespace {

using Microsoft::WRL::ComPtr;

constexpr DWORD kSingle = COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE;

// Each body runs on a thread of its own, since an apartment belongs to one.
template <class Body>
void OnThread(Body body) {
    std::thread(body).join();
}

HRESULT MakeDialog(REFCLSID classId = CLSID_FileOpenDialog, DWORD context = CLSCTX_INPROC_SERVER) {
    ComPtr<IFileOpenDialog> dialog;
    const HRESULT result = CoCreateInstance(classId, nullptr, context, IID_PPV_ARGS(dialog.GetAddressOf()));
    EXPECT_EQ(SUCCEEDED(result), dialog.Get() != nullptr);
    return result;
}

TEST(ApartmentTest, TheFirstEntryAndTheFollowingOnesAreToldApart) {
    OnThread([] {
        EXPECT_EQ(CoInitializeEx(nullptr, kSingle), S_OK);
        EXPECT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_FALSE);
        CoUninitialize();
        CoUninitialize();
        EXPECT_EQ(CoInitializeEx(nullptr, kSingle), S_OK);
        CoUninitialize();
    });
}

TEST(ApartmentTest, TheOtherModelIsRefusedUntilTheLastEntryIsLeft) {
    OnThread([] {
        ASSERT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
        ASSERT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_FALSE);
        EXPECT_EQ(CoInitializeEx(nullptr, kSingle), RPC_E_CHANGED_MODE);
        CoUninitialize();
        EXPECT_EQ(CoInitializeEx(nullptr, kSingle), RPC_E_CHANGED_MODE);
        CoUninitialize();
        EXPECT_EQ(CoInitializeEx(nullptr, kSingle), S_OK);
        EXPECT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), RPC_E_CHANGED_MODE);
        CoUninitialize();
    });
}

TEST(ApartmentTest, ARefusedEntryDoesNotCount) {
    OnThread([] {
        ASSERT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
        ASSERT_EQ(CoInitializeEx(nullptr, kSingle), RPC_E_CHANGED_MODE);
        CoUninitialize();
        EXPECT_EQ(MakeDialog(), CO_E_NOTINITIALIZED);
    });
}

TEST(ApartmentTest, EachThreadHasItsOwn) {
    OnThread([] {
        ASSERT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
        OnThread([] {
            EXPECT_EQ(MakeDialog(), CO_E_NOTINITIALIZED);
            EXPECT_EQ(CoInitializeEx(nullptr, kSingle), S_OK);
            CoUninitialize();
        });
        CoUninitialize();
    });
}

TEST(ApartmentTest, LeavingWithoutHavingEnteredDoesNothing) {
    OnThread([] {
        CoUninitialize();
        EXPECT_EQ(CoInitializeEx(nullptr, kSingle), S_OK);
        CoUninitialize();
    });
}

TEST(ApartmentTest, ArgumentsWithoutAMeaningAreRefused) {
    OnThread([] {
        int reserved = 0;
        EXPECT_EQ(CoInitializeEx(&reserved, kSingle), E_INVALIDARG);
        EXPECT_EQ(CoInitializeEx(nullptr, 0x100), E_INVALIDARG);
        EXPECT_EQ(MakeDialog(), CO_E_NOTINITIALIZED);
    });
}

TEST(CreateInstanceTest, MakesTheDialogInsideAnApartmentOnly) {
    OnThread([] {
        EXPECT_EQ(MakeDialog(), CO_E_NOTINITIALIZED);
        ASSERT_EQ(CoInitializeEx(nullptr, kSingle), S_OK);
        EXPECT_EQ(MakeDialog(), S_OK);
        CoUninitialize();
        EXPECT_EQ(MakeDialog(), CO_E_NOTINITIALIZED);
    });
}

TEST(CreateInstanceTest, UnknownClassesContextsInterfacesAndOutersAreRefused) {
    OnThread([] {
        ASSERT_EQ(CoInitializeEx(nullptr, kSingle), S_OK);
        EXPECT_EQ(MakeDialog(CLSID{}), REGDB_E_CLASSNOTREG);
        EXPECT_EQ(MakeDialog(CLSID_FileOpenDialog, 0x4), REGDB_E_CLASSNOTREG);
        EXPECT_EQ(CoCreateInstance(CLSID_FileOpenDialog, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IUnknown), nullptr),
                  E_POINTER);
        ComPtr<IUnknown> dialog;
        ASSERT_EQ(
            CoCreateInstance(CLSID_FileOpenDialog, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(dialog.GetAddressOf())),
            S_OK);
        void* object = &object;
        EXPECT_EQ(CoCreateInstance(CLSID_FileOpenDialog, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IShellItem), &object),
                  E_NOINTERFACE);
        EXPECT_EQ(object, nullptr);
        object = &object;
        EXPECT_EQ(
            CoCreateInstance(CLSID_FileOpenDialog, dialog.Get(), CLSCTX_INPROC_SERVER, __uuidof(IUnknown), &object),
            E_NOTIMPL);
        EXPECT_EQ(object, nullptr);
        dialog.Reset();
        CoUninitialize();
    });
}

TEST(CreateInstanceTest, ADialogIsOneObjectBehindAllItsInterfaces) {
    OnThread([] {
        ASSERT_EQ(CoInitializeEx(nullptr, kSingle), S_OK);
        {
            ComPtr<IFileOpenDialog> dialog;
            ASSERT_EQ(CoCreateInstance(CLSID_FileOpenDialog, nullptr, CLSCTX_INPROC_SERVER,
                                       IID_PPV_ARGS(dialog.GetAddressOf())),
                      S_OK);
            ComPtr<IUnknown> identity;
            ComPtr<IModalWindow> modal;
            ComPtr<IFileDialog> file;
            ASSERT_EQ(dialog.As(&modal), S_OK);
            ASSERT_EQ(modal.As(&file), S_OK);
            ASSERT_EQ(file.As(&identity), S_OK);
            EXPECT_EQ(identity.Get(), static_cast<IUnknown*>(dialog.Get()));
            EXPECT_EQ(dialog->QueryInterface(__uuidof(IUnknown), nullptr), E_POINTER);
            EXPECT_EQ(dialog->AddRef(), 5U);
            EXPECT_EQ(dialog->Release(), 4U);
        }
        CoUninitialize();
    });
}

TEST(TaskMemoryTest, GivesMemoryForAnySizeAndTakesNull) {
    LPVOID const none = CoTaskMemAlloc(0);
    EXPECT_NE(none, nullptr);
    CoTaskMemFree(none);
    CoTaskMemFree(nullptr);
}

}  // namespace
