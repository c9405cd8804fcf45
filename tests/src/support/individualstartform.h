#pragma once

#include "individual/selmarindividualwizard.h"
#include "individual/sristartpage.h"
#include "sampleproviders.h"
#include "startpageform.h"

#include <QComboBox>
#include <QDate>
#include <QLabel>
#include <QSpinBox>

/// The individual's start page, open.
class IndividualStartForm : public StartPageForm<SelmarIndividualWizard>
{
public:
    IndividualStartForm()
        : StartPageForm(SampleProviders::individuals()),
          start(qobject_cast<SrIStartPage *>(page)),
          cbPeriod(page->findChild<QCheckBox *>(QStringLiteral("cbPeriod"))),
          cbMonth(page->findChild<QComboBox *>(QStringLiteral("cbMonth"))),
          sbYear(page->findChild<QSpinBox *>(QStringLiteral("sbYear")))
    {
        open();
    }

    QString label(const char *name) const
    {
        return page->findChild<QLabel *>(QString::fromLatin1(name))->text();
    }
    void answerData()
    {
        answer(BillingAnswers::data(host.lastUid(), BillingAnswers::individual()));
    }

    SrIStartPage *start;
    QCheckBox *cbPeriod;
    QComboBox *cbMonth;
    QSpinBox *sbYear;
};

/// "03-2024", as requests name a period.
inline QString monthAndYear(const QDate &date)
{
    return date.toString(QStringLiteral("MM-yyyy"));
}
