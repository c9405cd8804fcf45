#pragma once

#include "billinganswers.h"
#include "fakehost.h"
#include "hostdatabase.h"

#include <molvacore/provider.h>

#include <QAbstractButton>
#include <QFont>
#include <QTest>
#include <QWizard>

/// A wizard filled and joined to a host as the plugin's handler does it; `Wizard` is one of the
/// plugin's two.
///
/// Not shown until open(). The fiscal register and the payments controller are left to the test.
template<class Wizard>
class OpenWizard
{
public:
    explicit OpenWizard(const Provider &provider)
        : wizard(QFont(), HostDatabase::box().currency(), basix::FixNumber(100, 0), nullptr)
    {
        wizard.setProvider(provider);
        wizard.setComProfile(HostDatabase::commissionProfile());
        wizard.setPayCheckProfile(HostDatabase::receiptProfile());
        wizard.createPages(provider);
        wizard.setMessageReciever(&host, SIGNAL(incomingMessage(QVariantMap, QString)));
        wizard.setMessageSender(&host, SLOT(sendMessage(QString, QVariant)));
        wizard.setPayStatusReciever(&host, SIGNAL(paymentStatus(QVariant)));
        wizard.setInfo(HostDatabase::box());
        wizard.setWindowTitle(provider.checkName());
    }

    void open()
    {
        wizard.show();
        QVERIFY(QTest::qWaitForWindowActive(&wizard));
    }
    /// Billing answers over the host's bus.
    void answer(const QString &text) { emit host.incomingMessage(BillingAnswers::headers(), text); }
    QAbstractButton *next() const { return wizard.button(QWizard::NextButton); }
    /// A widget of the current page.
    template<class Widget>
    Widget *field(const char *name) const
    {
        return wizard.currentPage()->template findChild<Widget *>(QString::fromLatin1(name));
    }

    FakeHost host;
    Wizard wizard;
};
