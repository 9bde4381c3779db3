#include <Quillon/graph/PbArrayOfFloat.h>
#include <Quillon/graph/PbArrayOfInt.h>
#include <Quillon/graph/PbArrayOfLong.h>

#include <gtest/gtest.h>

#include <utility>

namespace {
template <typename Array> std::pair<int, int> countAndCapacity(const Array& array) {
    return {array.getNum(), array.getCapacity()};
}
} // namespace

TEST(PbArray, CountAndCapacityFollowTheGrowthRule) {
    PbArrayOfInt array;
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(array.add(i), i);
    EXPECT_EQ(countAndCapacity(array), std::make_pair(10, 10));
    array += 10;
    EXPECT_EQ(countAndCapacity(array), std::make_pair(11, 20));
    array.empty();
    EXPECT_EQ(countAndCapacity(array), std::make_pair(0, 20));
    // The writing operator raises the count but never the storage.
    array[4] = 8;
    EXPECT_EQ(countAndCapacity(array), std::make_pair(5, 20));
    ASSERT_TRUE(array.resize(5));
    EXPECT_EQ(countAndCapacity(array), std::make_pair(5, 5));
    // Growing adds whole steps to the capacity there is.
    array += 5;
    EXPECT_EQ(countAndCapacity(array), std::make_pair(6, 15));
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(array[i], i);
    EXPECT_EQ(array[4], 8);

    PbArrayOfLong longs;
    longs.set(25, 7);
    longs.set(3, 4);
    EXPECT_EQ(countAndCapacity(longs), std::make_pair(26, 30));
    EXPECT_EQ(longs.get(25), 7);
}

TEST(PbArray, FindReturnsTheFirstMatchOrMinusOne) {
    PbArrayOfFloat array;
    EXPECT_EQ(array.find(3.0f), -1);
    for (float v : {5.0f, 3.0f, 3.0f})
        array.add(v);
    EXPECT_EQ(array.find(3.0f), 1);
    EXPECT_EQ(array.find(4.0f), -1);
    array.empty();
    EXPECT_EQ(array.find(5.0f), -1);
}

TEST(PbArray, CopiesAreIndependentValues) {
    PbArrayOfInt a;
    a.add(1);
    a.add(2);
    PbArrayOfInt b(a);
    EXPECT_FALSE(a != b);
    b.set(1, 3);
    EXPECT_TRUE(a != b);
    EXPECT_EQ(a[1], 2);
    a = b;
    EXPECT_FALSE(a != b);
}
