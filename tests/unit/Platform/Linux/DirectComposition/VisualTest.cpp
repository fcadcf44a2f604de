#include "Platform/Linux/DirectComposition/CompositionDevice.h"

#include <gtest/gtest.h>

#include <limits>

using Microsoft::WRL::ComPtr;

namespace Platform::DirectComposition {
namespace {

/// Stands for a swap chain: only its identity counts here.
class Content final : public ComObject<IUnknown> {
public:
    Content() : ComObject("Content") {}
};

/// What presenters of these tests were asked to show, in order.
std::vector<std::vector<Layer>> shown;
HRESULT presenterResult = S_OK;

class RecordingPresenter final : public Presenter {
public:
    HRESULT Show(const std::vector<Layer>& layers) override {
        shown.push_back(layers);
        return presenterResult;
    }
};

const HWND noWindow = nullptr;
HWND Window(std::uintptr_t number) {
    return reinterpret_cast<HWND>(number);
}

std::unique_ptr<Presenter> MakeRecorder(HWND window) {
    if (window == noWindow) return nullptr;
    return std::make_unique<RecordingPresenter>();
}

class CompositionTree : public testing::Test {
protected:
    CompositionTree() {
        shown.clear();
        presenterResult = S_OK;
        device.Attach(new CompositionDevice(&MakeRecorder));
    }

    ComPtr<IDCompositionVisual2> NewVisual(IUnknown* content = nullptr) {
        ComPtr<IDCompositionVisual2> visual;
        EXPECT_EQ(S_OK, device->CreateVisual(&visual));
        EXPECT_EQ(S_OK, visual->SetContent(content));
        return visual;
    }

    ComPtr<IDCompositionTarget> NewTarget(IDCompositionVisual* root, HWND window = Window(1)) {
        ComPtr<IDCompositionTarget> target;
        EXPECT_EQ(S_OK, device->CreateTargetForHwnd(window, TRUE, &target));
        EXPECT_EQ(S_OK, target->SetRoot(root));
        return target;
    }

    static ComPtr<IUnknown> NewContent() {
        ComPtr<IUnknown> content;
        content.Attach(static_cast<ComObject<IUnknown>*>(new Content));
        return content;
    }

    ComPtr<CompositionDevice> device;
    ComPtr<IUnknown> frame = NewContent();
    ComPtr<IUnknown> client = NewContent();
};

TEST_F(CompositionTree, AVisualAddedBehindAnotherIsShownFirst) {
    const auto root = NewVisual();
    const auto frameVisual = NewVisual(frame.Get());
    const auto clientVisual = NewVisual(client.Get());
    ASSERT_EQ(S_OK, root->AddVisual(frameVisual.Get(), FALSE, nullptr));
    ASSERT_EQ(S_OK, root->AddVisual(clientVisual.Get(), FALSE, frameVisual.Get()));
    const auto target = NewTarget(root.Get());
    ASSERT_EQ(S_OK, device->Commit());
    ASSERT_EQ(1U, shown.size());
    ASSERT_EQ(2U, shown[0].size());
    EXPECT_EQ(client.Get(), shown[0][0].content);
    EXPECT_EQ(frame.Get(), shown[0][1].content);
}

TEST_F(CompositionTree, AVisualAddedInFrontOfAnotherIsShownAfterIt) {
    const auto root = NewVisual();
    const auto first = NewVisual(frame.Get());
    const auto second = NewVisual(client.Get());
    const ComPtr<IUnknown> between = NewContent();
    const auto third = NewVisual(between.Get());
    ASSERT_EQ(S_OK, root->AddVisual(first.Get(), FALSE, nullptr));
    ASSERT_EQ(S_OK, root->AddVisual(second.Get(), FALSE, nullptr));
    ASSERT_EQ(S_OK, root->AddVisual(third.Get(), TRUE, first.Get()));
    const auto target = NewTarget(root.Get());
    ASSERT_EQ(S_OK, device->Commit());
    ASSERT_EQ(3U, shown[0].size());
    EXPECT_EQ(frame.Get(), shown[0][0].content);
    EXPECT_EQ(between.Get(), shown[0][1].content);
    EXPECT_EQ(client.Get(), shown[0][2].content);
}

TEST_F(CompositionTree, AnOffsetAloneShowsNothingUntilTheNextCommit) {
    const auto root = NewVisual();
    const auto visual = NewVisual(client.Get());
    ASSERT_EQ(S_OK, root->AddVisual(visual.Get(), FALSE, nullptr));
    const auto target = NewTarget(root.Get());
    ASSERT_EQ(S_OK, visual->SetOffsetX(3));
    ASSERT_EQ(S_OK, visual->SetOffsetY(4));
    EXPECT_TRUE(shown.empty());
    ASSERT_EQ(S_OK, device->Commit());
    ASSERT_EQ(1U, shown.size());
    EXPECT_EQ(3, shown[0][0].placement.dx);
    EXPECT_EQ(4, shown[0][0].placement.dy);
}

TEST_F(CompositionTree, ATransformOfTheRootMovesWhatLiesBelowItAndCanBeTakenAway) {
    const auto root = NewVisual();
    const auto visual = NewVisual(client.Get());
    ASSERT_EQ(S_OK, visual->SetOffsetX(10));
    ASSERT_EQ(S_OK, root->AddVisual(visual.Get(), FALSE, nullptr));
    const auto target = NewTarget(root.Get());
    ComPtr<IDCompositionMatrixTransform> transform;
    ASSERT_EQ(S_OK, device->CreateMatrixTransform(&transform));
    ASSERT_EQ(S_OK, transform->SetMatrix(D2D_MATRIX_3X2_F{{{2, 0, 0, 3, 5, 7}}}));
    ASSERT_EQ(S_OK, root->SetTransform(transform.Get()));
    ASSERT_EQ(S_OK, device->Commit());
    EXPECT_EQ(2, shown[0][0].placement.m11);
    EXPECT_EQ(3, shown[0][0].placement.m22);
    EXPECT_EQ(25, shown[0][0].placement.dx);
    EXPECT_EQ(7, shown[0][0].placement.dy);
    ASSERT_EQ(S_OK, root->SetTransform(static_cast<IDCompositionTransform*>(nullptr)));
    ASSERT_EQ(S_OK, device->Commit());
    EXPECT_EQ(1, shown[1][0].placement.m11);
    EXPECT_EQ(10, shown[1][0].placement.dx);
}

TEST_F(CompositionTree, AVisualWithoutContentShowsOnlyItsChildren) {
    const auto root = NewVisual();
    const auto target = NewTarget(root.Get());
    ASSERT_EQ(S_OK, device->Commit());
    EXPECT_TRUE(shown[0].empty());
}

TEST_F(CompositionTree, AVisualHasOneParentAndNoCycle) {
    const auto root = NewVisual();
    const auto child = NewVisual();
    ASSERT_EQ(S_OK, root->AddVisual(child.Get(), FALSE, nullptr));
    EXPECT_EQ(E_INVALIDARG, NewVisual()->AddVisual(child.Get(), FALSE, nullptr));
    EXPECT_EQ(E_INVALIDARG, child->AddVisual(root.Get(), FALSE, nullptr));
    EXPECT_EQ(E_INVALIDARG, root->AddVisual(root.Get(), FALSE, nullptr));
    ASSERT_EQ(S_OK, root->RemoveVisual(child.Get()));
    EXPECT_EQ(S_OK, NewVisual()->AddVisual(child.Get(), FALSE, nullptr));
}

TEST_F(CompositionTree, AReferenceThatIsNoSiblingIsRefused) {
    const auto root = NewVisual();
    EXPECT_EQ(E_INVALIDARG, root->AddVisual(NewVisual().Get(), FALSE, NewVisual().Get()));
    EXPECT_EQ(E_INVALIDARG, root->RemoveVisual(NewVisual().Get()));
    EXPECT_EQ(E_INVALIDARG, root->AddVisual(nullptr, FALSE, nullptr));
}

TEST_F(CompositionTree, AnOffsetThatIsNoNumberIsRefused) {
    const auto visual = NewVisual();
    EXPECT_EQ(E_INVALIDARG, visual->SetOffsetX(std::numeric_limits<float>::quiet_NaN()));
    EXPECT_EQ(E_INVALIDARG, visual->SetOffsetY(std::numeric_limits<float>::infinity()));
}

TEST_F(CompositionTree, AWindowHasOneTreeAndIsFreeAgainWhenItsTargetEnds) {
    auto target = NewTarget(NewVisual().Get());
    ComPtr<IDCompositionTarget> second;
    EXPECT_EQ(DCOMPOSITION_ERROR_WINDOW_ALREADY_COMPOSED, device->CreateTargetForHwnd(Window(1), TRUE, &second));
    EXPECT_EQ(S_OK, device->CreateTargetForHwnd(Window(2), TRUE, &second));
    target.Reset();
    EXPECT_EQ(S_OK, device->CreateTargetForHwnd(Window(1), TRUE, &target));
}

TEST_F(CompositionTree, AWindowThatDoesNotExistGetsNoTarget) {
    ComPtr<IDCompositionTarget> target;
    EXPECT_EQ(E_INVALIDARG, device->CreateTargetForHwnd(noWindow, TRUE, &target));
    EXPECT_EQ(nullptr, target.Get());
}

TEST_F(CompositionTree, CommitShowsEveryWindowAndReturnsTheFirstFailure) {
    const auto first = NewTarget(NewVisual().Get(), Window(1));
    const auto second = NewTarget(NewVisual().Get(), Window(2));
    presenterResult = E_FAIL;
    EXPECT_EQ(E_FAIL, device->Commit());
    EXPECT_EQ(2U, shown.size());
}

}  // namespace
}  // namespace Platform::DirectComposition
