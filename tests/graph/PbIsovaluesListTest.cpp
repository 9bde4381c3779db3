#include <Quillon/graph/PbIsovaluesList.h>

#include "PbDataObjectTestFixture.h"

namespace {
struct IsoList {
    std::vector<float> values;
    float min, max, step;
    int regular;
};

IsoList listOf(const PbIsovaluesList& list) {
    IsoList result;
    int count = 0;
    const float* values =
        list.getIsoList(count, result.min, result.max, result.step, result.regular);
    result.values.assign(values, values + count);
    return result;
}
// A value with the index, lower and upper isovalue the list gives it.
struct Query {
    float value;
    int index;
    float lower, upper;
};

void expectQueries(const PbIsovaluesList& list, std::initializer_list<Query> queries) {
    for (const Query& q : queries) {
        EXPECT_EQ(list.getIndex(q.value), q.index) << q.value;
        EXPECT_EQ(list.getLowerIsovalue(q.value), q.lower) << q.value;
        EXPECT_EQ(list.getUpperIsovalue(q.value), q.upper) << q.value;
    }
}
} // namespace

using PbIsovaluesListTest = PbDataObjectTest;

TEST_F(PbIsovaluesListTest, DefaultListIndexesAndNeighbours) {
    PbIsovaluesList list;
    const IsoList iso = listOf(list);
    EXPECT_EQ(iso.values, (std::vector<float>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
    EXPECT_EQ(iso.step, 1);
    EXPECT_EQ(iso.regular, 1);
    expectQueries(list, {{0, 0, -1e20f, 1},
                         {1, 0, 1, 1},
                         {4.5f, 4, 4, 5},
                         {5, 4, 5, 5},
                         {5.5f, 5, 5, 6},
                         {10, 9, 10, 10},
                         {11, 10, 10, 1e20f}});
}

TEST_F(PbIsovaluesListTest, IrregularListsAreSortedAndSearched) {
    PbIsovaluesList list;
    const float shuffled[] = {3, 1, 2};
    list.setIrregularIsoList(3, shuffled);
    IsoList iso = listOf(list);
    EXPECT_EQ(iso.values, (std::vector<float>{1, 2, 3}));
    EXPECT_EQ(iso.regular, 1);

    const float uneven[] = {8, 1, 4, 2};
    list.setIrregularIsoList(4, uneven);
    iso = listOf(list);
    EXPECT_EQ(iso.values, (std::vector<float>{1, 2, 4, 8}));
    EXPECT_EQ(iso.regular, 0);
    EXPECT_EQ(iso.step, 1);
    EXPECT_EQ(iso.min, 1);
    EXPECT_EQ(iso.max, 8);
    expectQueries(list, {{0, 0, -1e20f, 1},
                         {2, 1, 2, 2},
                         {2.1f, 2, 2, 4},
                         {7.9f, 3, 4, 8},
                         {8, 3, 8, 8},
                         {9, 4, 8, 1e20f}});
}

TEST_F(PbIsovaluesListTest, RegularListsFromBoundsStartsAndValues) {
    PbIsovaluesList list(10, 0, 4);
    IsoList iso = listOf(list);
    EXPECT_EQ(iso.min, 0);
    EXPECT_EQ(iso.max, 10);
    EXPECT_EQ(iso.values.back(), 10);
    EXPECT_FLOAT_EQ(iso.step, 10.0f / 3);
    list.setRegularIsoList(1.0f, 0.25f, 4);
    EXPECT_EQ(listOf(list).values, (std::vector<float>{0.25f, 0.5f, 0.75f, 1}));
    expectQueries(list, {{0.5f, 1, 0.5f, 0.5f}, {0.6f, 2, 0.5f, 0.75f}});
    list.setRegularIsoList(3);
    EXPECT_EQ(listOf(list).values, (std::vector<float>{0.25f, 0.625f, 1}));
    list.setRegularIsoList(0, 1);
    EXPECT_EQ(listOf(list).values, (std::vector<float>{0, 0.5f, 1}));

    const float samples[] = {4, -2, 1};
    list.setRegularIsoList(3, samples);
    EXPECT_EQ(listOf(list).values, (std::vector<float>{-2, 1, 4}));
    list.setRegularIsoList(3, samples, 4);
    EXPECT_EQ(listOf(list).values, (std::vector<float>{-2, 0, 2, 4}));

    list.setRegularIsoList(3, 5.0f, 0.5f);
    iso = listOf(list);
    EXPECT_EQ(iso.values, (std::vector<float>{5, 5.5f, 6}));
    EXPECT_EQ(iso.step, 0.5f);
    // A negative step fills the list from its end and leaves the first slot.
    list.setRegularIsoList(3, 5.0f, -1.0f);
    iso = listOf(list);
    EXPECT_EQ(iso.values, (std::vector<float>{0, 4, 5}));
    EXPECT_EQ(iso.min, 0);
    EXPECT_EQ(iso.max, 5);
    EXPECT_EQ(iso.step, -1);
}

TEST_F(PbIsovaluesListTest, BadCountsAreRejectedWithoutChangeOrNotification) {
    PbIsovaluesList list;
    list.addConnection(kit);
    list.setRegularIsoList(1);
    list.setRegularIsoList(0.f, 1.f, 1);
    list.setRegularIsoList(0, 1.0f, 1.0f);
    list.setIrregularIsoList(-2, nullptr);
    list.setIrregularIsoList(2, nullptr);
    list.setRegularIsoList(0, static_cast<const float*>(nullptr), 3);
    EXPECT_EQ(errors->messages().size(), 6u);
    EXPECT_EQ(listOf(list).values.size(), 10u);
    EXPECT_TRUE(kit->notifications.empty());
    list.setIrregularIsoList(0, nullptr);
    expectQueries(list, {{3, 0, -1e20f, 1e20f}});
    list.isoListDependsOnRep(1);
    EXPECT_EQ(list.isIsoListDependsOnRep(), 1);
    EXPECT_EQ(changes(), std::vector<PbBase::ChangeType>(2, PbBase::CHANGE));
    list.removeConnection(kit);
}

TEST_F(PbIsovaluesListTest, CopiesCarryTheList) {
    const float values[] = {0, 1, 3};
    PbIsovaluesList source;
    source.setIrregularIsoList(3, values);
    PbIsovaluesList assigned;
    assigned = source;
    EXPECT_EQ(listOf(PbIsovaluesList(source)).values, listOf(source).values);
    EXPECT_EQ(listOf(assigned).values, listOf(source).values);
    EXPECT_EQ(listOf(assigned).regular, 0);
}
