// The geometries: a path that a sink fills, one taken through a matrix, several as one.
#pragma once

#include "Platform/Linux/Direct2D/Path.h"
#include "Platform/Linux/Direct2D/Resource.h"

#include <memory>
#include <mutex>

namespace Platform::Direct2D {

HRESULT PathBounds(const Path* path, const D2D1_MATRIX_3X2_F* worldTransform, D2D1_RECT_F* bounds) noexcept;

/// A geometry whose outline is known when it is made.
template <class Interface>
class FinishedGeometry final : public Resource<Interface, ID2D1Geometry>, public PathSource {
public:
    FinishedGeometry(ComPtr<ID2D1Factory> factory, std::shared_ptr<const Path> path)
        : Resource<Interface, ID2D1Geometry>("ID2D1Geometry", std::move(factory)), path_(std::move(path)) {}

    HRESULT GetBounds(const D2D1_MATRIX_3X2_F* worldTransform, D2D1_RECT_F* bounds) const override {
        return PathBounds(path_.get(), worldTransform, bounds);
    }
    std::shared_ptr<const Path> GetPath() const override { return path_; }

private:
    ~FinishedGeometry() override = default;

    std::shared_ptr<const Path> path_;
};

class PathGeometry final : public Resource<ID2D1PathGeometry, ID2D1Geometry>, public PathSource {
public:
    explicit PathGeometry(ComPtr<ID2D1Factory> factory) : Resource("ID2D1PathGeometry", std::move(factory)) {}

    HRESULT Open(ID2D1GeometrySink** sink) override;
    HRESULT GetBounds(const D2D1_MATRIX_3X2_F* worldTransform, D2D1_RECT_F* bounds) const override;
    std::shared_ptr<const Path> GetPath() const override;

    /// Takes the outline from the sink.
    void Finish(std::shared_ptr<const Path> path);

private:
    ~PathGeometry() override = default;

    mutable std::mutex mutex_;
    bool opened_ = false;               // guarded by mutex_
    std::shared_ptr<const Path> path_;  // guarded by mutex_; null until the sink is closed
};

}  // namespace Platform::Direct2D
