#include "3Ddata/PiMarchingCaseTable.h"

#include <cstdio>
#include <deque>

PiMarchingCaseTable::PiMarchingCaseTable(int numNodes, const char* messagePrefix, Factory factory,
                                         std::vector<BaseCase> baseCases)
    : m_messagePrefix(messagePrefix), m_factory(factory), m_baseCases(std::move(baseCases)),
      m_cases(static_cast<size_t>(1) << numNodes) {}

int PiMarchingCaseTable::init() {
    if (m_initCount++ == 0)
        build();
    return 1;
}

void PiMarchingCaseTable::finish() {
    if (m_initCount == 0 || --m_initCount > 0)
        return;
    clear();
}

const PiMarchingCase* PiMarchingCaseTable::get(unsigned char caseId) {
    if (!m_built)
        build();
    return caseId < m_cases.size() ? m_cases[caseId].get() : nullptr;
}

void PiMarchingCaseTable::addMC(std::unique_ptr<PiMarchingCase> mc) {
    ++m_numAdded;
    std::unique_ptr<PiMarchingCase>& entry = m_cases.at(mc->getId());
    if (entry) {
        printf("%s%3d : error caseId %3d already set !!!\n", m_messagePrefix, m_numAdded,
               mc->getId());
        return;
    }
    entry = std::move(mc);
}

void PiMarchingCaseTable::addMCBoth(std::unique_ptr<PiMarchingCase> mc) {
    std::unique_ptr<PiMarchingCase> reverse = mc->getReverse();
    addMC(std::move(mc));
    addMC(std::move(reverse));
}

void PiMarchingCaseTable::build() {
    clear();
    for (size_t base = 0; base < m_baseCases.size(); ++base) {
        const BaseCase& description = m_baseCases[base];
        std::unique_ptr<PiMarchingCase> mc =
            m_factory(static_cast<unsigned char>(base), description.id);
        mc->setStripSet(description.strips);
        mc->setOptQuad(description.optQuadPositions);
        addMCBoth(std::move(mc));
        addTurns(*m_cases[description.id]);
    }
    m_built = true;
}

void PiMarchingCaseTable::clear() {
    for (std::unique_ptr<PiMarchingCase>& entry : m_cases)
        entry.reset();
    m_numAdded = 0;
    m_built = false;
}

void PiMarchingCaseTable::addTurns(const PiMarchingCase& baseCase) {
    std::deque<const PiMarchingCase*> pending{&baseCase};
    while (!pending.empty()) {
        const PiMarchingCase* mc = pending.front();
        pending.pop_front();
        std::unique_ptr<PiMarchingCase> turns[] = {mc->getRotX(1), mc->getRotY(1), mc->getRotZ(1)};
        for (std::unique_ptr<PiMarchingCase>& turned : turns) {
            if (m_cases[turned->getId()])
                continue;
            pending.push_back(turned.get());
            addMCBoth(std::move(turned));
        }
    }
}
