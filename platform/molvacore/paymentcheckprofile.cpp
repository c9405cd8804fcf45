#include <molvacore/paymentcheckprofile.h>

PaymentCheckProfile::PaymentCheckProfile(qint64 id, const QString &name) : m_id(id), m_name(name) {}
