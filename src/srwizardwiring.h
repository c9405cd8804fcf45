#pragma once

#include "individual/sripaymentpage.h"
#include "srscannerguard.h"
#include "srwizardheader.h"

#include <QObject>
#include <QWizard>

/// Connections of a wizard to host objects, by the signatures that the host passes (as SIGNAL() and
/// SLOT() make them). Each returns whether the connection was made; a null object is never
/// connected.
namespace SrHostWiring {

/// The host's signal drives the wizard's signal `wizardSignal`.
bool connectFromHost(QObject *host, const char *hostSignal, QObject *wizard,
                     const char *wizardSignal);
/// The wizard's signal `wizardSignal` drives the host's member.
bool connectToHost(QObject *wizard, const char *wizardSignal, QObject *host,
                   const char *hostMember);

} // namespace SrHostWiring

/// Page ids of both wizards.
enum SrPageId { SrStartPageId = 0, SrServicesPageId = 1, SrPaymentPageId = 2 };

/// Puts the three pages into `wizard`, which owns them, and joins them to its bus signals: only the
/// start page hears the bus, the start page and the payment page speak. `checkName` is the title of
/// both; the subtitles come in the wizard's own translation context. The page between them sets its
/// title itself when it has an account.
template<class Wizard, class StartPage, class ServicesPage>
void srAddPages(Wizard *wizard, StartPage *start, ServicesPage *services, const QString &checkName,
                const QString &startSubtitle, const QString &paymentSubtitle)
{
    srPrepareHeader(wizard);
    QObject::connect(wizard, &Wizard::incomingMessage, start, &StartPage::incomingMessage);
    QObject::connect(start, &StartPage::sendMessage, wizard, &Wizard::sendMessage);
    start->setTitle(checkName);
    start->setSubTitle(startSubtitle);
    wizard->setPage(SrStartPageId, start);

    wizard->setPage(SrServicesPageId, services);

    auto *payment = new SrIPaymentPage(wizard);
    QObject::connect(payment, &SrIPaymentPage::sendMessage, wizard, &Wizard::sendMessage);
    payment->setTitle(checkName);
    payment->setSubTitle(paymentSubtitle);
    wizard->setPage(SrPaymentPageId, payment);

    wizard->setStartId(SrStartPageId);
    new SrScannerGuard(wizard);
}
