#include <Quillon/graph/PbArrayOfFloat.h>
#include <Quillon/graph/PbArrayOfInt.h>
#include <Quillon/graph/PbArrayOfLong.h>

#include <gtest/gtest.h>

#include <functional>

namespace {
void addValues(PbArrayOfInt& array, int count) {
    for (int i = 0; i < count; ++i)
        EXPECT_EQ(array.add(i), i);
}
} // namespace

TEST(PbArray, CountAndCapacityFollowTheGrowthRule) {
    struct Case {
        const char* what;
        std::function<void(PbArrayOfInt&)> change;
        int count;
        int capacity;
    };
    const Case cases[] = {
        {"ten adds", [](PbArrayOfInt& a) { addValues(a, 10); }, 10, 10},
        {"eleven adds", [](PbArrayOfInt& a) { addValues(a, 11); }, 11, 20},
        {"emptied",
         [](PbArrayOfInt& a) {
             addValues(a, 11);
             a.empty();
         },
         0, 20},
        {"set beyond the end", [](PbArrayOfInt& a) { a.set(25, 7); }, 26, 30},
        {"set within the count",
         [](PbArrayOfInt& a) {
             a.set(25, 7);
             a.set(3, 4);
         },
         26, 30},
        {"shrunk",
         [](PbArrayOfInt& a) {
             addValues(a, 15);
             a.resize(5);
         },
         5, 5},
        // The writing operator raises the count but never the storage.
        {"written by index",
         [](PbArrayOfInt& a) {
             a.set(9, 0);
             a.empty();
             a[4] = 8;
         },
         5, 10},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        PbArrayOfInt array;
        c.change(array);
        EXPECT_EQ(array.getNum(), c.count);
        EXPECT_EQ(array.getCapacity(), c.capacity);
    }
}

TEST(PbArray, StoredValuesSurviveGrowthAndShrinking) {
    PbArrayOfInt array;
    addValues(array, 15);
    ASSERT_TRUE(array.resize(5));
    EXPECT_EQ(array[4], 4);
    array += 5;
    EXPECT_EQ(array.getCapacity(), 15);
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(array.get(i), i);
    PbArrayOfLong longs;
    longs.set(25, 7);
    EXPECT_EQ(longs[25], 7);
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
