#include <Quillon/nodes/PoIsovaluesList.h>

#include <Quillon/nodes/PoIsovaluesListElement.h>

#include "nodes/PoFieldWatch.h"

#include <Inventor/actions/SoAction.h>

PO_NODE_SOURCE(PoIsovaluesList, PoNode)

PoIsovaluesList::PoIsovaluesList() {
    SO_NODE_CONSTRUCTOR(PoIsovaluesList);
    SO_NODE_ADD_FIELD(isovaluesList, (0.0f));
    m_listChanged.reset(new PoFieldWatch({&isovaluesList}));
}

PoIsovaluesList::~PoIsovaluesList() = default;

void PoIsovaluesList::setFieldFrom(const PbIsovaluesList& list) {
    int count = 0, regular = 0;
    float min = 0, max = 0, step = 0;
    const float* values = list.getIsoList(count, min, max, step, regular);
    isovaluesList.setValues(0, count, values);
    isovaluesList.setNum(count);
}

// Each setter works on a copy of the current list, so that values the
// list rejects leave the field as it was.
void PoIsovaluesList::setRegularIsoList(float min, float max, int count) {
    PbIsovaluesList list(*getIsovaluesList());
    list.setRegularIsoList(min, max, count);
    setFieldFrom(list);
}

void PoIsovaluesList::setRegularIsoList(int count, const float* values) {
    PbIsovaluesList list(*getIsovaluesList());
    list.setRegularIsoList(count, values);
    setFieldFrom(list);
}

void PoIsovaluesList::setRegularIsoList(int count, float start, float step) {
    PbIsovaluesList list(*getIsovaluesList());
    list.setRegularIsoList(count, start, step);
    setFieldFrom(list);
}

const PbIsovaluesList* PoIsovaluesList::getIsovaluesList(void) {
    if (m_listChanged->takeRaised())
        m_list.setIrregularIsoList(isovaluesList.getNum(), isovaluesList.getValues(0));
    return &m_list;
}

const float* PoIsovaluesList::getIsoList(int& count, float& min, float& max, float& step,
                                         int& regular) {
    return getIsovaluesList()->getIsoList(count, min, max, step, regular);
}

void PoIsovaluesList::doAction(SoAction* action) {
    PoIsovaluesListElement::set(action->getState(), this, getIsovaluesList());
}
