#include <Quillon/graph/PbArrayOfFloat.h>
#include <Quillon/graph/PbArrayOfInt.h>
#include <Quillon/graph/PbArrayOfLong.h>

#include <gtest/gtest.h>

TEST(PbArray, CapacityGrowsInStepsOfTen) {
    PbArrayOfInt array;
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(array.add(i), i);
    EXPECT_EQ(array.getCapacity(), 10);
    array += 10;
    EXPECT_EQ(array.getNum(), 11);
    EXPECT_EQ(array.getCapacity(), 20);
    EXPECT_EQ(array[10], 10);
}

TEST(PbArray, EmptyKeepsStorage) {
    PbArrayOfFloat array;
    for (int i = 0; i < 11; ++i)
        array.add(0.5f * i);
    array.empty();
    EXPECT_EQ(array.getNum(), 0);
    EXPECT_EQ(array.getCapacity(), 20);
    EXPECT_EQ(array.find(0.5f), -1);
}

TEST(PbArray, SetBeyondTheEndGrowsAndRaisesCount) {
    PbArrayOfLong array;
    array.set(25, 7);
    EXPECT_EQ(array.getNum(), 26);
    EXPECT_EQ(array.getCapacity(), 30);
    EXPECT_EQ(array.get(25), 7);
    array.set(3, 4);
    EXPECT_EQ(array.getNum(), 26);
}

TEST(PbArray, WritingOperatorRaisesCountWithinStorage) {
    PbArrayOfInt array;
    array.set(9, 0);
    array.empty();
    array[4] = 8;
    EXPECT_EQ(array.getNum(), 5);
    EXPECT_EQ(array.getCapacity(), 10);
}

TEST(PbArray, FindReturnsFirstMatch) {
    PbArrayOfInt array;
    EXPECT_EQ(array.find(3), -1);
    array.add(5);
    array.add(3);
    array.add(3);
    EXPECT_EQ(array.find(3), 1);
    EXPECT_EQ(array.find(4), -1);
}

TEST(PbArray, ResizeShrinksToRequestAndKeepsPrefix) {
    PbArrayOfInt array;
    for (int i = 0; i < 15; ++i)
        array.add(i);
    ASSERT_TRUE(array.resize(5));
    EXPECT_EQ(array.getCapacity(), 5);
    EXPECT_EQ(array.getNum(), 5);
    EXPECT_EQ(array[4], 4);
    EXPECT_TRUE(array.resize(5));
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
