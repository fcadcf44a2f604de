// Fonts in memory: from bytes to a family that is found.

#include "Platform/Linux/DirectWrite/FontSource.h"

#include <dwrite_3.h>
#include <wrl/client.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>

namespace {

using Microsoft::WRL::ComPtr;

std::vector<char> FontBytes() {
    std::ifstream file("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf", std::ios::binary);
    EXPECT_TRUE(file) << "package fonts-dejavu-core";
    return {std::istreambuf_iterator<char>(file), {}};
}

class FontOwner final : public IUnknown {
public:
    HRESULT QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG AddRef() override { return ++references; }
    ULONG Release() override { return --references; }

    ULONG references = 1;
};

class Fonts : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(DWriteCreateFactory(DWRITE_FACTORY_TYPE_ISOLATED, __uuidof(IDWriteFactory5),
                                      reinterpret_cast<IUnknown**>(factory_.GetAddressOf())),
                  S_OK);
        ASSERT_EQ(factory_->CreateInMemoryFontFileLoader(&loader_), S_OK);
        ASSERT_EQ(factory_->RegisterFontFileLoader(loader_.Get()), S_OK);
        ASSERT_EQ(factory_->CreateFontSetBuilder(&builder_), S_OK);
    }

    ComPtr<IDWriteFontFile> File(const std::vector<char>& bytes, IUnknown* owner = nullptr) {
        ComPtr<IDWriteFontFile> file;
        EXPECT_EQ(loader_->CreateInMemoryFontFileReference(factory_.Get(), bytes.data(),
                                                           static_cast<UINT32>(bytes.size()), owner, &file),
                  S_OK);
        return file;
    }

    ComPtr<IDWriteFontCollection1> Collection() {
        ComPtr<IDWriteFontSet> set;
        EXPECT_EQ(builder_->CreateFontSet(&set), S_OK);
        ComPtr<IDWriteFontCollection1> collection;
        EXPECT_EQ(factory_->CreateFontCollectionFromFontSet(set.Get(), &collection), S_OK);
        return collection;
    }

    ComPtr<IDWriteFactory5> factory_;
    ComPtr<IDWriteInMemoryFontFileLoader> loader_;
    ComPtr<IDWriteFontSetBuilder1> builder_;
};

TEST_F(Fonts, FamilyIsFoundByItsNameInAnyCase) {
    ASSERT_EQ(builder_->AddFontFile(File(FontBytes()).Get()), S_OK);
    const auto collection = Collection();
    EXPECT_EQ(collection->GetFontFamilyCount(), 1U);
    UINT32 index = 7;
    BOOL exists = FALSE;
    EXPECT_EQ(collection->FindFamilyName(L"dejavu SANS", &index, &exists), S_OK);
    EXPECT_TRUE(exists);
    EXPECT_EQ(index, 0U);
}

TEST_F(Fonts, FamilyThatIsMissingIsNoFailure) {
    ASSERT_EQ(builder_->AddFontFile(File(FontBytes()).Get()), S_OK);
    UINT32 index = 7;
    BOOL exists = TRUE;
    EXPECT_EQ(Collection()->FindFamilyName(L"Segoe UI", &index, &exists), S_OK);
    EXPECT_FALSE(exists);
    EXPECT_EQ(index, 0xFFFFFFFFU);
}

TEST_F(Fonts, TwoFilesOfAFamilyMakeOneFamily) {
    const auto file = File(FontBytes());
    ASSERT_EQ(builder_->AddFontFile(file.Get()), S_OK);
    ASSERT_EQ(builder_->AddFontFile(file.Get()), S_OK);
    ComPtr<IDWriteFontSet> set;
    ASSERT_EQ(builder_->CreateFontSet(&set), S_OK);
    EXPECT_EQ(set->GetFontCount(), 2U);
    EXPECT_EQ(Collection()->GetFontFamilyCount(), 1U);
}

TEST_F(Fonts, BytesThatAreNoFontAreAFileFormatFailure) {
    EXPECT_EQ(builder_->AddFontFile(File(std::vector<char>(100, 'x')).Get()), DWRITE_E_FILEFORMAT);
}

TEST_F(Fonts, OwnerLivesAsLongAsWhatUsesItsBytes) {
    const std::vector<char> bytes = FontBytes();
    FontOwner owner;
    {
        auto file = File(bytes, &owner);
        ASSERT_EQ(builder_->AddFontFile(file.Get()), S_OK);
        auto collection = Collection();
        builder_ = nullptr;
        file = nullptr;
        EXPECT_GT(owner.references, 1U);
    }
    EXPECT_EQ(owner.references, 1U);
}

TEST_F(Fonts, LoaderMustBeRegistered) {
    ASSERT_EQ(factory_->UnregisterFontFileLoader(loader_.Get()), S_OK);
    ComPtr<IDWriteFontFile> file;
    EXPECT_EQ(loader_->CreateInMemoryFontFileReference(factory_.Get(), "x", 1, nullptr, &file), E_INVALIDARG);
    EXPECT_EQ(factory_->UnregisterFontFileLoader(loader_.Get()), E_INVALIDARG);
}

TEST_F(Fonts, FormatKeepsItsCollection) {
    ASSERT_EQ(builder_->AddFontFile(File(FontBytes()).Get()), S_OK);
    const auto collection = Collection();
    ComPtr<IDWriteTextFormat> format;
    ASSERT_EQ(factory_->CreateTextFormat(L"DejaVu Sans", collection.Get(), DWRITE_FONT_WEIGHT_NORMAL,
                                         DWRITE_FONT_STYLE_NORMAL, DWRITE_FONT_STRETCH_NORMAL, 12, L"", &format),
              S_OK);
    ComPtr<IDWriteFontCollection> kept;
    ASSERT_EQ(format->GetFontCollection(&kept), S_OK);
    EXPECT_EQ(kept.Get(), collection.Get());
}

// A thread that reads ahead may be so late that the process is already ending.
TEST(SystemFonts, OutliveTheStaticsOfTheProcess) {
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    EXPECT_EXIT(
        {
            static_cast<void>(std::atexit([] {
                using Platform::DirectWrite::FontSource;
                for (int i = 0; i < 2; ++i) {
                    FontSource::Session session(*FontSource::System(), {.family = L"Segoe UI",
                                                                        .weight = DWRITE_FONT_WEIGHT_NORMAL,
                                                                        .style = DWRITE_FONT_STYLE_NORMAL,
                                                                        .stretch = DWRITE_FONT_STRETCH_NORMAL,
                                                                        .size = 14.0F,
                                                                        .locale = {}});
                    if (!session.Face(session.BaseFont())) std::_Exit(3);
                }
            }));
            static_cast<void>(Platform::DirectWrite::FontSource::System());
            std::exit(0);
        },
        testing::ExitedWithCode(0), "");
}

}  // namespace
