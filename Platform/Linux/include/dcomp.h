// DirectComposition: what a window shows, as a tree of visuals. Changes wait for Commit and then show at once.
// Implemented in Platform/Linux/DirectComposition.
#pragma once

#include <d2dbasetypes.h>
#include <dcommon.h>
#include <dcomptypes.h>
#include <unknwn.h>

struct IDCompositionAnimation;

struct IDCompositionEffect : IUnknown {};
VELORINTH_DECLARE_IID(IDCompositionEffect, 0xec81b08f, 0xbfcb, 0x4e8d, 0xb1, 0x93, 0xa9, 0x15, 0x58, 0x79, 0x99, 0xe8);

struct IDCompositionTransform3D : IDCompositionEffect {};
VELORINTH_DECLARE_IID(IDCompositionTransform3D, 0x71185722, 0x246b, 0x41f2, 0xaa, 0xd1, 0x04, 0x43, 0xf7, 0xf4, 0xbf,
                      0xc2);

struct IDCompositionTransform : IDCompositionTransform3D {};
VELORINTH_DECLARE_IID(IDCompositionTransform, 0xfd55faa7, 0x37e0, 0x4c20, 0x95, 0xd2, 0x9b, 0xe4, 0x5b, 0xc3, 0x3f,
                      0x55);

struct IDCompositionMatrixTransform : IDCompositionTransform {
    virtual HRESULT STDMETHODCALLTYPE SetMatrix(const D2D_MATRIX_3X2_F& matrix) = 0;
};
VELORINTH_DECLARE_IID(IDCompositionMatrixTransform, 0x16cdff07, 0xc503, 0x419c, 0x83, 0xf2, 0x09, 0x65, 0xc7, 0xaf,
                      0x1f, 0xa6);

/// One layer. Offsets are in physical pixels, relative to the parent.
struct IDCompositionVisual : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE SetOffsetX(float offset) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetOffsetY(float offset) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetTransform(const D2D_MATRIX_3X2_F& matrix) = 0;
    /// The visual holds a reference; null takes the transform away.
    virtual HRESULT STDMETHODCALLTYPE SetTransform(IDCompositionTransform* transform) = 0;
    /// A swap chain made for composition, or null.
    virtual HRESULT STDMETHODCALLTYPE SetContent(IUnknown* content) = 0;
    /// Without a reference: above all children if `insertAbove` is FALSE, below all if it is TRUE. With one: directly
    /// in front of it if TRUE, directly behind it if FALSE.
    virtual HRESULT STDMETHODCALLTYPE AddVisual(IDCompositionVisual* visual, BOOL insertAbove,
                                                IDCompositionVisual* reference) = 0;
    virtual HRESULT STDMETHODCALLTYPE RemoveVisual(IDCompositionVisual* visual) = 0;
    virtual HRESULT STDMETHODCALLTYPE RemoveAllVisuals() = 0;
};
VELORINTH_DECLARE_IID(IDCompositionVisual, 0x4d93059d, 0x097b, 0x4651, 0x9a, 0x60, 0xf0, 0xf2, 0x51, 0x16, 0xe2, 0xf3);

struct IDCompositionVisual2 : IDCompositionVisual {};
VELORINTH_DECLARE_IID(IDCompositionVisual2, 0xe8de1639, 0x4331, 0x4b26, 0xbc, 0x5f, 0x6a, 0x32, 0x1d, 0x34, 0x7a, 0x85);

/// The tie between a window and the tree that it shows.
struct IDCompositionTarget : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE SetRoot(IDCompositionVisual* visual) = 0;
};
VELORINTH_DECLARE_IID(IDCompositionTarget, 0xeacdd04c, 0x117e, 0x4e17, 0x88, 0xf4, 0xd1, 0xb1, 0x2b, 0x0e, 0x3d, 0x89);

struct IDCompositionDevice2 : IUnknown {
    /// Makes all pending changes visible in one step.
    virtual HRESULT STDMETHODCALLTYPE Commit() = 0;
    virtual HRESULT STDMETHODCALLTYPE WaitForCommitCompletion() = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateVisual(IDCompositionVisual2** visual) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateMatrixTransform(IDCompositionMatrixTransform** transform) = 0;
};
VELORINTH_DECLARE_IID(IDCompositionDevice2, 0x75f6468d, 0x1b8e, 0x447c, 0x9b, 0xc6, 0x75, 0xfe, 0xa8, 0x0b, 0x5b, 0x25);

struct IDCompositionDesktopDevice : IDCompositionDevice2 {
    virtual HRESULT STDMETHODCALLTYPE CreateTargetForHwnd(HWND window, BOOL topmost, IDCompositionTarget** target) = 0;
};
VELORINTH_DECLARE_IID(IDCompositionDesktopDevice, 0x5f4633fe, 0x1e08, 0x4cb8, 0x8c, 0x75, 0xce, 0x24, 0x33, 0x3f, 0x56,
                      0x02);

/// `renderingDevice` is the DXGI device whose swap chains the visuals will show.
HRESULT WINAPI DCompositionCreateDevice2(IUnknown* renderingDevice, REFIID iid, void** device) noexcept;
