#pragma once
#include <Quillon/QuillonApi.h>

class PoBase;

// Base of the library's basic data objects.  Keeps the list of node kits
// that use the object and tells them, synchronously, when it changes or is
// destroyed.
class QUILLON_API PbBase {
public:
    enum ChangeType {
        CHANGE = 0,
        DESTROYED = 1,
        GEOMETRY = 2,
        VALUE_SETS = 3,
        STRING_SETS = 4,
        VECTOR_SETS = 5,
        DOMAIN_TRANSFORM_TYPE = 6
    };

    PbBase();
    PbBase(const PbBase& other);
    virtual ~PbBase();
    PbBase& operator=(const PbBase& other);

    // Prepends a connection; a kit connected twice is notified twice.
    void addConnection(const PoBase* kit);
    // Removes the first connection of the kit; returns 1 when one was found.
    int removeConnection(const PoBase* kit);

    void enableConnection(int flag) { m_connectionEnabled = flag; }
    int isConnectionEnabled() const { return m_connectionEnabled; }

    void touch();

    ChangeType getChangeType() const { return m_changeType; }
    int getDataChange() const { return m_dataChange; }

protected:
    void removeAllConnection();
    void notifyChange();
    void setChangeType(ChangeType type) { m_changeType = type; }
    void setDataChange(int flag) { m_dataChange = flag; }

private:
    struct Connection {
        PoBase* kit;
        Connection* next;
    };

    Connection* m_connections = nullptr;
    int m_connectionEnabled = 1;
    ChangeType m_changeType = CHANGE;
    int m_dataChange = 0;
};
