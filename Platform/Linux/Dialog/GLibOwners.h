// Owners for what GLib hands out. For this folder's sources only.
#pragma once

#include <gio/gio.h>

#include <memory>

namespace Platform {

template <auto Release>
struct GLibRelease {
    template <class Type>
    void operator()(Type* object) const {
        Release(object);
    }
};

template <class Type>
using GObjectOwner = std::unique_ptr<Type, GLibRelease<g_object_unref>>;
using GVariantOwner = std::unique_ptr<GVariant, GLibRelease<g_variant_unref>>;
using GErrorOwner = std::unique_ptr<GError, GLibRelease<g_error_free>>;
using GSourceOwner = std::unique_ptr<GSource, GLibRelease<g_source_unref>>;
using GTextOwner = std::unique_ptr<char, GLibRelease<g_free>>;

/// A main context that is the calling thread's default while this object lives, so that what GDBus starts on this
/// thread comes back to it.
class ThreadContext {
public:
    ThreadContext() : context_(g_main_context_new()) { g_main_context_push_thread_default(context_); }
    ~ThreadContext() {
        g_main_context_pop_thread_default(context_);
        g_main_context_unref(context_);
    }
    ThreadContext(const ThreadContext&) = delete;
    ThreadContext& operator=(const ThreadContext&) = delete;

    GMainContext* Get() const { return context_; }

private:
    GMainContext* context_;
};

}  // namespace Platform
