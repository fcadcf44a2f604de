// A software device's picture that is drawn when it is needed.
#pragma once

#include "Platform/Linux/Direct3D/Texture.h"

#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace Platform::Direct3D {

/// What a swap chain's buffer still lacks. Where the processor draws, a picture takes it a display's frame or more, and
/// nothing more urgent can be drawn until it is done. So its commands wait until somebody needs the pixels and come in
/// steps of a few milliseconds, between which they may be given up. A picture that was given up is still drawn if
/// anybody comes to need it; if the next one draws over all that it would have drawn, it never is.
///
/// With the device locked.
class UnfinishedPicture {
public:
    using Function = std::function<void()>;

    /// What a list of commands draws on, in order: on nothing else, and on nothing that it hasn't cleared before, but
    /// for the buffer. Of two lists with equal ones the second leaves the same behind, beside the buffers, whether the
    /// first was drawn or not.
    struct Drawing {
        bool isClear;
        const void* target;
        bool operator==(const Drawing&) const = default;
    };

    UnfinishedPicture() = default;
    UnfinishedPicture(std::shared_ptr<Texture> buffer, std::vector<Drawing> drawings)
        : buffer_(std::move(buffer)), drawings_(std::move(drawings)) {}

    void AddDrawing(Function function) { steps_.push_back({std::move(function), true}); }
    /// A step that is done even if the picture never is drawn.
    void AddOther(Function function) { steps_.push_back({std::move(function), false}); }

    bool IsOf(const Texture& buffer) const noexcept { return buffer_.get() == &buffer; }
    bool IsDone() const noexcept { return steps_.empty(); }
    std::size_t StepsLeft() const noexcept { return steps_.size(); }
    /// Does the next step.
    void Proceed();

    /// How many steps have drawn so far.
    std::size_t DrawnSteps() const noexcept { return drawnSteps_; }

    void GiveUp() noexcept { isGivenUp_ = true; }
    /// Whether this one was given up and need not be drawn when `next` is, whose drawings are the same but that they
    /// end on another buffer.
    bool IsReplacedBy(const UnfinishedPicture& next) const;
    /// Does what is left but the drawing. The buffer is incomplete then.
    void Skip();

private:
    struct Step {
        Function function;
        bool isDrawing;
    };

    std::shared_ptr<Texture> buffer_;
    std::vector<Drawing> drawings_;
    std::deque<Step> steps_;  ///< What is left.
    std::size_t drawnSteps_ = 0;
    bool isGivenUp_ = false;
};

}  // namespace Platform::Direct3D
