#include "srstartpageexchange.h"

#include "srwizardcontext.h"

#include <QWizard>
#include <QWizardPage>

namespace {

/// QWizardPage keeps its way to the wizard to the pages themselves.
const QWizard *wizardOf(const QWidget *page)
{
    for (const QWidget *widget = page; widget; widget = widget->parentWidget()) {
        if (const auto *wizard = qobject_cast<const QWizard *>(widget))
            return wizard;
    }
    return nullptr;
}

} // namespace

SrStartPageExchange::SrStartPageExchange(const QWizardPage *page, QTimer *timer, QProgressBar *bar)
    : m_page(page), m_wait(timer, bar)
{
}

QVariantMap SrStartPageExchange::begin(const QVector<SrBillingExchange::Parameter> &parameters,
                                       const basix::FixNumber &sum)
{
    const SrWizardContext context = SrWizardContext::of(wizardOf(m_page));
    const SrBillingExchange::Sender sender = {context.info.boxId(), context.currency->number3(),
                                              context.provider->workProviderId()};
    const SRRequest request = m_billing.compose(sender, parameters, sum);
    m_wait.begin();
    return request.toMap();
}

SrAnswer SrStartPageExchange::receive(const QVariantMap &headers, const QString &message)
{
    const QWizard *wizard = wizardOf(m_page);
    if (!wizard || wizard->currentPage() != m_page)
        return {};
    const SrAnswer answer = m_billing.read(headers, message);
    if (answer.matched)
        m_wait.end();
    return answer;
}

bool SrStartPageExchange::ranOut()
{
    if (!m_wait.tick())
        return false;
    m_billing.clear();
    m_wait.end();
    return true;
}
