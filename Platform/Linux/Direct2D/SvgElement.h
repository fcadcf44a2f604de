#pragma once

#include "Platform/Linux/Direct2D/SvgDocument.h"

namespace Platform::Direct2D {

/// A document's root. One thread at a time, the document's.
class SvgElement final : public Resource<ID2D1SvgElement> {
public:
    SvgElement(ComPtr<ID2D1Factory> factory, SvgDocument* document)
        : Resource("ID2D1SvgElement", std::move(factory)), document_(document) {}

    HRESULT SetAttributeValue(PCWSTR name, D2D1_SVG_ATTRIBUTE_POD_TYPE type, const void* value, UINT32 size) override {
        if (!name || !value) return E_INVALIDARG;
        if (type != D2D1_SVG_ATTRIBUTE_POD_TYPE_LENGTH || size != sizeof(D2D1_SVG_LENGTH)) return E_INVALIDARG;
        return document_->SetRootLength(name, *static_cast<const D2D1_SVG_LENGTH*>(value));
    }

private:
    ~SvgElement() override = default;

    ComPtr<SvgDocument> document_;
};

}  // namespace Platform::Direct2D
