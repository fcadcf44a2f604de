#include "tests/fakes/FakeComposition.h"

namespace Fakes {

namespace {

std::string Fields(const D2D_MATRIX_3X2_F& m) {
    return "{" + Joined(m._11, m._12, m._21, m._22, m._31, m._32) + "}";
}

}  // namespace

HRESULT FakeTransform::SetMatrix(const D2D_MATRIX_3X2_F& matrix) {
    return Call("SetMatrix", Fields(matrix));
}

HRESULT FakeVisual::SetTransform(const D2D_MATRIX_3X2_F& matrix) {
    return Call("SetTransform", Fields(matrix));
}

HRESULT FakeVisual::SetTransform(IDCompositionTransform* transform) {
    const HRESULT result = Call("SetTransform", transform);
    if (SUCCEEDED(result)) transform_ = transform;
    return result;
}

HRESULT FakeVisual::SetContent(IUnknown* content) {
    const HRESULT result = Call("SetContent", content);
    if (SUCCEEDED(result)) content_ = content;
    return result;
}

HRESULT FakeVisual::AddVisual(IDCompositionVisual* visual, BOOL insertAbove, IDCompositionVisual* reference) {
    const HRESULT result = Call("AddVisual", visual, insertAbove, reference);
    if (SUCCEEDED(result)) children_.emplace_back(visual);
    return result;
}

HRESULT FakeVisual::RemoveVisual(IDCompositionVisual* visual) {
    const HRESULT result = Call("RemoveVisual", visual);
    if (SUCCEEDED(result)) std::erase_if(children_, [&](const auto& child) { return child.Get() == visual; });
    return result;
}

HRESULT FakeVisual::RemoveAllVisuals() {
    const HRESULT result = Call("RemoveAllVisuals");
    if (SUCCEEDED(result)) children_.clear();
    return result;
}

HRESULT FakeTarget::SetRoot(IDCompositionVisual* visual) {
    const HRESULT result = Call("SetRoot", visual);
    if (SUCCEEDED(result)) root_ = visual;
    return result;
}

HRESULT FakeCompositionDevice::CreateVisual(IDCompositionVisual2** visual) {
    return Make<FakeVisual>(Call("CreateVisual"), visual);
}

HRESULT FakeCompositionDevice::CreateMatrixTransform(IDCompositionMatrixTransform** transform) {
    return Make<FakeTransform>(Call("CreateMatrixTransform"), transform);
}

HRESULT FakeCompositionDevice::CreateTargetForHwnd(HWND window, BOOL topmost, IDCompositionTarget** target) {
    const HRESULT result = Call("CreateTargetForHwnd", Hex{reinterpret_cast<std::uintptr_t>(window)}, topmost);
    return Make<FakeTarget>(result, target);
}

}  // namespace Fakes

FAKE_FUNCTION HRESULT WINAPI DCompositionCreateDevice2(IUnknown* renderingDevice, REFIID iid, void** device) noexcept {
    return Fakes::MakeAs<Fakes::FakeCompositionDevice>(Fakes::FreeCall("DCompositionCreateDevice2", renderingDevice),
                                                       iid, device);
}
