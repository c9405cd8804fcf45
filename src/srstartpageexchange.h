#pragma once

#include "sranswer.h"
#include "srbillingexchange.h"
#include "srreplywait.h"

class QProgressBar;
class QTimer;
class QWizardPage;

/// What the two start pages share of asking billing: who asks, the pending requests and the visible
/// wait for the answer. What is asked for, and what becomes of the form and the account, is each
/// page's own.
class SrStartPageExchange
{
public:
    /// `page`, `timer` and `bar` stay the caller's and outlive this object; the timer's timeout()
    /// is the page's to connect.
    SrStartPageExchange(const QWizardPage *page, QTimer *timer, QProgressBar *bar);

    /// Begins a request and the wait for its answer; the body is to be sent to
    /// SRRequest::DESTINATION.
    QVariantMap begin(const QVector<SrBillingExchange::Parameter> &parameters,
                      const basix::FixNumber &sum);
    /// Reads a bus message. Only one that answers a pending request, while the page is the wizard's
    /// current one, is `matched`; the wait is over then.
    SrAnswer receive(const QVariantMap &headers, const QString &message);
    /// A tick of the timer. True when the wait has run out: nothing is pending any more then.
    bool ranOut();

private:
    const QWizardPage *m_page;
    SrReplyWait m_wait;
    SrBillingExchange m_billing;
};
