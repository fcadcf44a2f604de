#include "DeviceFixture.h"
#include "Programs.h"

namespace {

class DeferredContextTest : public DeviceFixture {
protected:
    void SetUp() override {
        DeviceFixture::SetUp();
        if (HasFatalFailure()) return;
        texture = MakeTexture(4, 4, D3D11_BIND_RENDER_TARGET);
        target = MakeTarget(texture.Get());
        constants = MakeConstants();
        shader = MakePixelShader(Programs::constant);
        deferred = MakeDeferred();
    }

    void TearDown() override {
        texture.Reset();
        target.Reset();
        constants.Reset();
        shader.Reset();
        deferred.Reset();
        DeviceFixture::TearDown();
    }

    /// Sets a context up to fill the target with the buffer's colour.
    void SetFill(ID3D11DeviceContext* on) {
        SetStrip(on, target.Get(), 4, 4);
        on->PSSetShader(shader.Get(), nullptr, 0);
        on->PSSetConstantBuffers(0, 1, constants.GetAddressOf());
    }

    ComPtr<ID3D11CommandList> Finish(BOOL restore) {
        ComPtr<ID3D11CommandList> list;
        EXPECT_EQ(deferred->FinishCommandList(restore, &list), S_OK);
        return list;
    }

    void Execute(BOOL finishRestores, BOOL executeRestores) {
        context->ExecuteCommandList(Finish(finishRestores).Get(), executeRestores);
    }

    ComPtr<ID3D11Texture2D> texture;
    ComPtr<ID3D11RenderTargetView> target;
    ComPtr<ID3D11Buffer> constants;
    ComPtr<ID3D11PixelShader> shader;
    ComPtr<ID3D11DeviceContext> deferred;
};

TEST_F(DeferredContextTest, NothingHappensBeforeTheListIsExecuted) {
    constexpr float red[4] = {1, 0, 0, 1};
    deferred->ClearRenderTargetView(target.Get(), red);
    const auto list = Finish(FALSE);
    EXPECT_EQ(Pixel(texture.Get(), 0, 0), 0U);
    context->ExecuteCommandList(list.Get(), TRUE);
    EXPECT_EQ(Pixel(texture.Get(), 0, 0), 0xFFFF0000U);
}

TEST_F(DeferredContextTest, EachDiscardServesTheDrawsThatFollowIt) {
    SetFill(deferred.Get());
    const D3D11_VIEWPORT left{0, 0, 2, 4, 0, 1};
    const D3D11_VIEWPORT right{2, 0, 2, 4, 0, 1};
    WriteColor(deferred.Get(), constants.Get(), {1, 0, 0, 1});
    deferred->RSSetViewports(1, &left);
    deferred->Draw(4, 0);
    WriteColor(deferred.Get(), constants.Get(), {0, 1, 0, 1});
    deferred->RSSetViewports(1, &right);
    deferred->Draw(4, 0);
    Execute(FALSE, TRUE);
    EXPECT_EQ(Pixel(texture.Get(), 1, 0), 0xFFFF0000U);
    EXPECT_EQ(Pixel(texture.Get(), 2, 0), 0xFF00FF00U);
}

TEST_F(DeferredContextTest, AListCanBePlayedAgain) {
    SetFill(deferred.Get());
    WriteColor(deferred.Get(), constants.Get(), {0, 0, 1, 1});
    deferred->Draw(4, 0);
    const auto list = Finish(FALSE);
    context->ExecuteCommandList(list.Get(), TRUE);
    constexpr float red[4] = {1, 0, 0, 1};
    context->ClearRenderTargetView(target.Get(), red);
    context->ExecuteCommandList(list.Get(), TRUE);
    EXPECT_EQ(Pixel(texture.Get(), 0, 0), 0xFF0000FFU);
}

TEST_F(DeferredContextTest, ABufferKeepsItsBytesWithoutANewDiscard) {
    SetFill(deferred.Get());
    WriteColor(deferred.Get(), constants.Get(), {0, 0, 1, 1});
    deferred->Draw(4, 0);
    Execute(TRUE, TRUE);
    EXPECT_EQ(Pixel(texture.Get(), 0, 0), 0xFF0000FFU);
    constexpr float red[4] = {1, 0, 0, 1};
    context->ClearRenderTargetView(target.Get(), red);
    deferred->Draw(4, 0);
    Execute(FALSE, TRUE);
    EXPECT_EQ(Pixel(texture.Get(), 0, 0), 0xFF0000FFU);
}

TEST_F(DeferredContextTest, FinishingWithoutRestoreEmptiesTheDeferredState) {
    SetFill(deferred.Get());
    Finish(FALSE);
    WriteColor(deferred.Get(), constants.Get(), {0, 0, 1, 1});
    deferred->Draw(4, 0);
    Execute(FALSE, TRUE);
    EXPECT_EQ(Pixel(texture.Get(), 0, 0), 0U);
}

TEST_F(DeferredContextTest, ExecutingWithRestoreKeepsTheImmediateState) {
    SetFill(context.Get());
    Execute(FALSE, TRUE);
    WriteColor(context.Get(), constants.Get(), {0, 1, 0, 1});
    context->Draw(4, 0);
    context->ClearState();
    EXPECT_EQ(Pixel(texture.Get(), 0, 0), 0xFF00FF00U);
}

TEST_F(DeferredContextTest, ExecutingWithoutRestoreEmptiesTheImmediateState) {
    SetFill(context.Get());
    Execute(FALSE, FALSE);
    WriteColor(context.Get(), constants.Get(), {0, 1, 0, 1});
    context->Draw(4, 0);
    EXPECT_EQ(Pixel(texture.Get(), 0, 0), 0U);
}

TEST_F(DeferredContextTest, AListDoesNotSeeTheImmediateState) {
    SetFill(context.Get());
    deferred->Draw(4, 0);
    Execute(FALSE, FALSE);
    EXPECT_EQ(Pixel(texture.Get(), 0, 0), 0U);
}

TEST_F(DeferredContextTest, OnlyADiscardOfADynamicBufferCanBeMapped) {
    D3D11_MAPPED_SUBRESOURCE mapped{};
    EXPECT_EQ(deferred->Map(constants.Get(), 0, D3D11_MAP_READ, 0, &mapped), E_INVALIDARG);
    EXPECT_EQ(deferred->Map(constants.Get(), 1, D3D11_MAP_WRITE_DISCARD, 0, &mapped), E_INVALIDARG);
    EXPECT_EQ(deferred->Map(nullptr, 0, D3D11_MAP_WRITE_DISCARD, 0, &mapped), E_INVALIDARG);
    EXPECT_EQ(deferred->Map(texture.Get(), 0, D3D11_MAP_WRITE_DISCARD, 0, &mapped), E_INVALIDARG);
    EXPECT_EQ(mapped.pData, nullptr);
}

TEST_F(DeferredContextTest, TheImmediateContextFinishesNoList) {
    ComPtr<ID3D11CommandList> list;
    EXPECT_EQ(context->FinishCommandList(FALSE, &list), DXGI_ERROR_INVALID_CALL);
    EXPECT_EQ(context->GetType(), D3D11_DEVICE_CONTEXT_IMMEDIATE);
    EXPECT_EQ(deferred->GetType(), D3D11_DEVICE_CONTEXT_DEFERRED);
}

}  // namespace
