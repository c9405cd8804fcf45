#pragma once

#include "isriwizardpage.h"
#include "sraccount.h"

#include <QSharedPointer>
#include <QWizardPage>

/// A first page that hands on whatever account a test gives it, in the place of a start page with
/// an answer from billing.
class AccountPage : public QWizardPage, public ISrIWizardPage
{
public:
    QString preview() const override { return {}; }
    QSharedPointer<SRAccount> outputData() const override { return account; }
    int nextId() const override { return next; }

    QSharedPointer<SRAccount> account;
    int next = 1;
};
