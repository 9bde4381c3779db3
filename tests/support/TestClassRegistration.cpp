#include "support/TestClassRegistration.h"

#include <gtest/gtest.h>

#include <vector>

namespace {
class UnregisterWhenTestEnds : public ::testing::EmptyTestEventListener {
public:
    void add(void (*exitClass)()) { m_exitFunctions.push_back(exitClass); }

private:
    // Last registered first, so that a derived test class goes before its
    // parent.
    void OnTestEnd(const ::testing::TestInfo&) override {
        for (auto exitClass = m_exitFunctions.rbegin(); exitClass != m_exitFunctions.rend();
             ++exitClass)
            (*exitClass)();
        m_exitFunctions.clear();
    }

    std::vector<void (*)()> m_exitFunctions;
};

UnregisterWhenTestEnds& listener() {
    static UnregisterWhenTestEnds* s_listener = [] {
        auto* created = new UnregisterWhenTestEnds;
        // The test framework owns its listeners.
        ::testing::UnitTest::GetInstance()->listeners().Append(created);
        return created;
    }();
    return *s_listener;
}
} // namespace

void TestClassRegistration::registerForThisTest(SoType (*getClassTypeId)(), void (*initClass)(),
                                                void (*exitClass)()) {
    if (getClassTypeId() != SoType::badType())
        return;
    initClass();
    listener().add(exitClass);
}
