#include "Platform/Linux/Processes/AttributeList.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

class AttributeList : public testing::Test {
protected:
    void SetUp() override {
        SIZE_T size = 0;
        EXPECT_FALSE(InitializeProcThreadAttributeList(nullptr, 1, 0, &size));
        EXPECT_EQ(GetLastError(), ERROR_INSUFFICIENT_BUFFER);
        memory_.resize(size);
        list_ = reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(memory_.data());
        ASSERT_TRUE(InitializeProcThreadAttributeList(list_, 1, 0, &size));
    }

    BOOL Update(DWORD_PTR attribute, SIZE_T size) {
        return UpdateProcThreadAttribute(list_, 0, attribute, handles_, size, nullptr, nullptr);
    }

    HANDLE handles_[2] = {reinterpret_cast<HANDLE>(4), reinterpret_cast<HANDLE>(8)};
    std::vector<BYTE> memory_;
    LPPROC_THREAD_ATTRIBUTE_LIST list_ = nullptr;
};

TEST_F(AttributeList, ANewListHasNoHandles) {
    EXPECT_TRUE(Platform::HandlesOf(list_).empty());
}

TEST_F(AttributeList, NoListHasNoHandles) {
    EXPECT_TRUE(Platform::HandlesOf(nullptr).empty());
}

TEST_F(AttributeList, HoldsTheHandlesWhereTheCallerKeepsThem) {
    ASSERT_TRUE(Update(PROC_THREAD_ATTRIBUTE_HANDLE_LIST, sizeof handles_));
    const auto handles = Platform::HandlesOf(list_);
    ASSERT_EQ(handles.size(), 2U);
    EXPECT_EQ(handles.data(), handles_);
}

TEST_F(AttributeList, ADeletedListHasNoHandlesAndTakesNone) {
    ASSERT_TRUE(Update(PROC_THREAD_ATTRIBUTE_HANDLE_LIST, sizeof handles_));
    DeleteProcThreadAttributeList(list_);
    EXPECT_TRUE(Platform::HandlesOf(list_).empty());
    EXPECT_FALSE(Update(PROC_THREAD_ATTRIBUTE_HANDLE_LIST, sizeof handles_));
}

TEST_F(AttributeList, RefusesUnknownAttributesAndOddSizes) {
    EXPECT_FALSE(Update(PROC_THREAD_ATTRIBUTE_HANDLE_LIST + 1, sizeof handles_));
    EXPECT_FALSE(Update(PROC_THREAD_ATTRIBUTE_HANDLE_LIST, 0));
    EXPECT_FALSE(Update(PROC_THREAD_ATTRIBUTE_HANDLE_LIST, 7));
    EXPECT_TRUE(Platform::HandlesOf(list_).empty());
}

TEST_F(AttributeList, RefusesTheSameAttributeTwice) {
    ASSERT_TRUE(Update(PROC_THREAD_ATTRIBUTE_HANDLE_LIST, sizeof(HANDLE)));
    EXPECT_FALSE(Update(PROC_THREAD_ATTRIBUTE_HANDLE_LIST, sizeof(HANDLE)));
}

TEST_F(AttributeList, RefusesMemoryThatIsTooSmall) {
    SIZE_T size = memory_.size() - 1;
    EXPECT_FALSE(InitializeProcThreadAttributeList(list_, 1, 0, &size));
    EXPECT_EQ(GetLastError(), ERROR_INSUFFICIENT_BUFFER);
    EXPECT_EQ(size, memory_.size());
}

}  // namespace
