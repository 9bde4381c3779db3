#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PbIsovaluesList.h>
#include <Quillon/nodes/PoNode.h>

#include <Inventor/fields/SoMFFloat.h>

#include <memory>

class PoFieldWatch;

// Puts the list of isovalues into the traversal state for the contouring
// and level-surface kits below.  The field holds the values; the list
// becomes regular when they are evenly spaced.
class QUILLON_API PoIsovaluesList : public PoNode {
    PO_NODE_HEADER(PoIsovaluesList);

public:
    SoMFFloat isovaluesList;

    PoIsovaluesList();

    // Fill the field with a regular list, as the list's own setters do.
    void setRegularIsoList(float min, float max, int count);
    void setRegularIsoList(int count, const float* values);
    void setRegularIsoList(int count, float start, float step);

    const float* getIsoList(int& count, float& min, float& max, float& step, int& regular);
    // The owned list, brought up to date with the field.
    const PbIsovaluesList* getIsovaluesList(void);

    void doAction(SoAction* action) override;

protected:
    ~PoIsovaluesList() override;

private:
    void setFieldFrom(const PbIsovaluesList& list);

    PbIsovaluesList m_list;
    std::unique_ptr<PoFieldWatch> m_listChanged;
};
