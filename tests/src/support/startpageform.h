#pragma once

#include "openwizard.h"

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTextBrowser>
#include <QTimer>
#include <QWizardPage>

/// An open wizard on its start page, with the widgets that both start pages have.
template<class Wizard>
class StartPageForm : public OpenWizard<Wizard>
{
public:
    explicit StartPageForm(const Provider &provider)
        : OpenWizard<Wizard>(provider),
          page(this->wizard.page(0)),
          leAccount(page->template findChild<QLineEdit *>(QStringLiteral("leAccount"))),
          lePhone(page->template findChild<QLineEdit *>(QStringLiteral("lePhone"))),
          pbGetData(page->template findChild<QPushButton *>(QStringLiteral("pbGetData"))),
          cbAmount(page->template findChild<QCheckBox *>(QStringLiteral("cbAmount"))),
          dsbAmount(page->template findChild<QDoubleSpinBox *>(QStringLiteral("dsbAmount"))),
          tbSummary(page->template findChild<QTextBrowser *>(QStringLiteral("tbSummary"))),
          progressBar(page->template findChild<QProgressBar *>(QStringLiteral("progressBar"))),
          timer(page->template findChild<QTimer *>(QString(), Qt::FindDirectChildrenOnly))
    {
    }

    void ask() { QTest::mouseClick(pbGetData, Qt::LeftButton); }
    void askFor(const QString &account)
    {
        leAccount->setText(account);
        ask();
    }
    bool waits() const
    {
        return !pbGetData->isEnabled() && !leAccount->isEnabled() && progressBar->isVisible()
            && timer->isActive();
    }
    /// Input is possible and nothing is waited for.
    bool isIdle() const
    {
        return pbGetData->isEnabled() && leAccount->isEnabled() && progressBar->isHidden()
            && !timer->isActive();
    }
    /// The account is on screen and the cashier may go on.
    bool showsAccount() const
    {
        return isIdle() && page->isComplete() && this->next()->isEnabled()
            && !tbSummary->toPlainText().isEmpty();
    }
    bool showsNothing() const
    {
        return !page->isComplete() && !this->next()->isEnabled()
            && tbSummary->toPlainText().isEmpty();
    }
    /// Parameters of the last request by name, values as texts.
    QMap<QString, QString> lastParameters() const
    {
        QMap<QString, QString> found;
        const QVariantMap params = this->host.lastBody().value(QStringLiteral("params")).toMap();
        for (const QVariant &parameter : params.value(QStringLiteral("payParamList")).toList())
            found.insert(parameter.toMap().value(QStringLiteral("name")).toString(),
                         parameter.toMap().value(QStringLiteral("value")).toString());
        return found;
    }

    QWizardPage *page;
    QLineEdit *leAccount;
    QLineEdit *lePhone;
    QPushButton *pbGetData;
    QCheckBox *cbAmount;
    QDoubleSpinBox *dsbAmount;
    QTextBrowser *tbSummary;
    QProgressBar *progressBar;
    QTimer *timer;
};
