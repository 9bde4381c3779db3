#include <Quillon/graph/PbBase.h>

#include <Quillon/graph/PoBase.h>

PbBase::PbBase() = default;

PbBase::PbBase(const PbBase& other)
    : m_connectionEnabled(other.m_connectionEnabled), m_changeType(other.m_changeType),
      m_dataChange(other.m_dataChange) {}

PbBase::~PbBase() {
    m_changeType = DESTROYED;
    notifyChange();
    removeAllConnection();
}

PbBase& PbBase::operator=(const PbBase& other) {
    if (this == &other)
        return *this;
    m_connectionEnabled = other.m_connectionEnabled;
    m_dataChange = other.m_dataChange;
    m_changeType = CHANGE;
    notifyChange();
    return *this;
}

void PbBase::addConnection(const PoBase* kit) {
    m_connections = new Connection{const_cast<PoBase*>(kit), m_connections};
}

int PbBase::removeConnection(const PoBase* kit) {
    for (Connection** link = &m_connections; *link; link = &(*link)->next) {
        if ((*link)->kit == kit) {
            Connection* found = *link;
            *link = found->next;
            delete found;
            return 1;
        }
    }
    return 0;
}

void PbBase::removeAllConnection() {
    while (m_connections) {
        Connection* next = m_connections->next;
        delete m_connections;
        m_connections = next;
    }
}

void PbBase::touch() {
    m_changeType = CHANGE;
    notifyChange();
}

void PbBase::notifyChange() {
    if (m_changeType != DESTROYED && !m_connectionEnabled)
        return;
    // The next link is read after each call, so kits must not disconnect
    // from inside basicObjectChange.
    for (Connection* c = m_connections; c; c = c->next)
        c->kit->basicObjectChange(this);
}
