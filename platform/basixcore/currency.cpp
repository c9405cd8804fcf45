#include <basixcore/currency.h>

namespace basix {

Currency::Currency(int number3, const QString &code3, const QString &name)
    : m_number3(number3), m_code3(code3), m_name(name)
{
}

} // namespace basix
