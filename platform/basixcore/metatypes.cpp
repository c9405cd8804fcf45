#include <basixcore/currency.h>
#include <basixcore/fixnumber.h>

#include <QMetaType>

namespace {

void registerNumbers()
{
    qRegisterMetaType<basix::FixNumber>("basix::FixNumber");
    QMetaType::registerComparators<basix::FixNumber>();
    qRegisterMetaType<basix::Currency>("basix::Currency");
    QMetaType::registerEqualsComparator<basix::Currency>();
}

} // namespace

Q_CONSTRUCTOR_FUNCTION(registerNumbers)
