#pragma once

#include "isriwizardpage.h"
#include "sraccount.h"

#include <QWizardPage>

/// A first page that hands on a ready account, in the place of a start page that has asked billing.
class AccountPage final : public QWizardPage, public ISrIWizardPage
{
public:
    explicit AccountPage(const QSharedPointer<SRAccount> &account) : m_account(account) {}

    QString preview() const override { return {}; }
    QSharedPointer<SRAccount> outputData() const override { return m_account->clone(); }

private:
    QSharedPointer<SRAccount> m_account;
};
