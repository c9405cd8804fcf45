#pragma once

#include <QSharedPointer>
#include <QString>

class SRAccount;

/// What a page of either wizard offers to the page that follows it.
class ISrIWizardPage
{
public:
    /// How showMsg() of a page shows a text; every value above MsgWarning is shown as information.
    /// Of a fixed type, so that a page may be given a kind that it does not know.
    enum MsgType : int { MsgError = 0, MsgWarning = 1, MsgInformation = 2 };

    virtual ~ISrIWizardPage();

    /// HTML of the page's own preview; empty for a page without one.
    virtual QString preview() const = 0;
    /// The account with everything that the cashier changed on this page; empty when the page has
    /// none.
    virtual QSharedPointer<SRAccount> outputData() const = 0;
};
