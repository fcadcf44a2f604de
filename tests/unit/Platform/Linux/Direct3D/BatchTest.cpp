// The memory that a batch hands out for one life, and what it keeps of it for the next.
#include "Platform/Linux/Direct3D/Batch.h"

#include <gtest/gtest.h>

#include <memory>

using Platform::Direct3D::Batch;
using Platform::Direct3D::GraphicsDevice;
using Platform::Direct3D::HostSlice;

namespace {

constexpr VkDeviceSize kibibyte = 1024;
constexpr VkDeviceSize smallest = 256 * kibibyte;  // of a block

class BatchTest : public testing::Test {
protected:
    /// A life of the batch that asks for these sizes; where the last one lay.
    HostSlice Live(std::initializer_list<VkDeviceSize> sizes) {
        HostSlice last{};
        batch_.Open();
        for (const VkDeviceSize size : sizes) last = batch_.Reserve(size, 16);
        batch_.Submit(VK_NULL_HANDLE, 0, VK_NULL_HANDLE);
        batch_.Await();
        return last;
    }

    std::shared_ptr<GraphicsDevice> device_ = GraphicsDevice::Create();
    Batch batch_{*device_};
};

TEST_F(BatchTest, TheSameNeedsAreMetFromTheSameMemory) {
    const HostSlice first = Live({100, 700 * kibibyte});
    const VkDeviceSize held = batch_.HeldBytes();
    const HostSlice second = Live({100, 700 * kibibyte});
    EXPECT_EQ(second.data, first.data);
    EXPECT_EQ(batch_.HeldBytes(), held);
}

TEST_F(BatchTest, PicturesThatGrowLeaveNothingBehindAtEverySize) {
    for (VkDeviceSize size = 300 * kibibyte; size < 3000 * kibibyte; size += 100 * kibibyte) {
        Live({100, size});
        EXPECT_LE(batch_.HeldBytes(), smallest + size);
    }
}

TEST_F(BatchTest, WhatALifeHasNoUseForGoes) {
    Live({100, 1000 * kibibyte, 1000 * kibibyte, 1000 * kibibyte});
    EXPECT_EQ(batch_.HeldBytes(), smallest + 3000 * kibibyte);
    Live({100});
    EXPECT_EQ(batch_.HeldBytes(), smallest);
    batch_.Await();
    EXPECT_EQ(batch_.HeldBytes(), smallest);
}

TEST_F(BatchTest, PiecesOfOneLifeDoNotOverlap) {
    batch_.Open();
    const HostSlice first = batch_.Reserve(200 * kibibyte, 16);
    const HostSlice second = batch_.Reserve(40 * kibibyte, 16);
    const HostSlice large = batch_.Reserve(500 * kibibyte, 16);
    const HostSlice third = batch_.Reserve(200 * kibibyte, 16);
    EXPECT_EQ(second.data, first.data + 200 * kibibyte);
    EXPECT_NE(large.buffer, first.buffer);
    EXPECT_NE(third.buffer, first.buffer);
    EXPECT_NE(third.buffer, large.buffer);
    EXPECT_EQ(batch_.HeldBytes(), 2 * smallest + 500 * kibibyte);
    batch_.Submit(VK_NULL_HANDLE, 0, VK_NULL_HANDLE);
    batch_.Await();
}

}  // namespace
