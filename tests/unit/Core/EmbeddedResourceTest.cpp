#include "Core/EmbeddedResource.h"

#include <dwrite.h>

#include <gtest/gtest.h>

namespace {

constinit Tamborel::EmbeddedResource resource(nullptr, 0);

TEST(EmbeddedResource, KnowsOnlyIUnknown) {
    void* object = &object;
    EXPECT_EQ(resource.QueryInterface(__uuidof(IUnknown), nullptr), E_POINTER);
    EXPECT_EQ(resource.QueryInterface(__uuidof(IDWriteFactory), &object), E_NOINTERFACE);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(resource.QueryInterface(__uuidof(IUnknown), &object), S_OK);
    EXPECT_EQ(object, static_cast<IUnknown*>(&resource));
    EXPECT_EQ(resource.Release(), 1U);
}

TEST(EmbeddedResource, CountsReferencesAndIsNeverFreed) {
    EXPECT_EQ(resource.AddRef(), 2U);
    EXPECT_EQ(resource.Release(), 1U);
    EXPECT_EQ(resource.Release(), 0U);
    EXPECT_EQ(resource.AddRef(), 1U);
}

}  // namespace
