#include <basixcore/basesqlitedbconnector.h>

namespace basix {

BaseSqliteDbConnector::BaseSqliteDbConnector(ConnectionMode mode, QObject *parent)
    : QObject(parent), m_mode(mode)
{
}

BaseSqliteDbConnector::~BaseSqliteDbConnector() = default;

} // namespace basix
