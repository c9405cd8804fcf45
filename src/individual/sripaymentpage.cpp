#include "sripaymentpage.h"

#include "sraccount.h"
#include "srdecimalinput.h"
#include "srfiscalreadiness.h"
#include "srmessagebox.h"
#include "srpagetransfer.h"
#include "srwizardcontext.h"
#include "ui_sripaymentpage.h"

#include <molvacore/cardreadersettings.h>
#include <molvacore/check.h>
#include <molvacore/ingericolibhandler.h>
#include <molvacore/logvariant.h>
#include <molvacore/onlinekkmprofile.h>
#include <molvacore/qeftposhandler.h>
#include <molvacore/sberposlibhandler.h>

#include <QApplication>
#include <QDateTime>
#include <QDebug>
#include <QInputDialog>
#include <QKeyEvent>
#include <QPointer>
#include <QScopeGuard>

namespace {

constexpr int moneyMultiplier = 100;

/// Terminal types of the host's card reader settings.
enum TerminalType { IngericoTerminal = 1, SberTerminal = 2, EftPosTerminal = 3 };

const QString payPackDestination = QStringLiteral("/app/add_pay_pack");

} // namespace

SrIPaymentPage::SrIPaymentPage(QWizard *wizard)
    : QWizardPage(wizard), m_ui(std::make_unique<Ui_SrIPaymentPage>())
{
    m_ui->setupUi(this);
    srAcceptBothDecimalSigns(m_ui->dsbCash);
    srAcceptBothDecimalSigns(m_ui->dsbCard);
    connect(m_ui->dsbCash, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
            &SrIPaymentPage::sumChanged);
    connect(m_ui->dsbCard, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
            &SrIPaymentPage::sumChanged);
    m_ui->dsbCash->installEventFilter(this);
    m_ui->dsbCard->installEventFilter(this);
    m_ui->pbCard->setEnabled(CardReaderSettings().configured());
    connect(m_ui->pbCard, &QPushButton::released, this, &SrIPaymentPage::payByCard);
}

SrIPaymentPage::~SrIPaymentPage() = default;

void SrIPaymentPage::initializePage()
{
    m_account = srAccountOfPreviousPage(wizard());
    if (!m_account)
        return;
    m_ui->tbSummary->showAccount(m_account->toSummaryHtml());
    // A card amount typed for another account must not stay when the cashier comes back with this
    // one.
    m_ui->dsbCard->setValue(0.0);
    m_ui->dsbCash->setValue(m_account->amount().toDouble());
    m_ui->cbAttornayDoc->setVisible(m_account->isLegal());
}

basix::FixNumber SrIPaymentPage::cashAmount() const
{
    return basix::FixNumber(moneyMultiplier, m_ui->dsbCash->value());
}

basix::FixNumber SrIPaymentPage::cardAmount() const
{
    return basix::FixNumber(moneyMultiplier, m_ui->dsbCard->value());
}

bool SrIPaymentPage::isComplete() const
{
    return QWizardPage::isComplete() && m_account
        && cashAmount() + cardAmount() == m_account->amount();
}

void SrIPaymentPage::sumChanged()
{
    if (sender() != m_ui->dsbCash && m_account)
        m_ui->dsbCash->setValue((m_account->amount() - cardAmount()).toDouble());
    if (m_ui->dsbCash->value() < 0.0)
        m_ui->dsbCash->setValue(0.0);
    emit completeChanged();
}

std::optional<basix::FixNumber> SrIPaymentPage::askCardAmount()
{
    // No more than the card field can show: what is charged must be what the receipt says.
    const double amount = qMin(m_account->amount().toDouble(), m_ui->dsbCard->maximum());
    // Not on the stack: a host that destroys the wizard meanwhile destroys the dialog with it.
    const QPointer<QInputDialog> dialog = new QInputDialog(this);
    dialog->setWindowTitle(tr("Payment by card"));
    dialog->setLabelText(tr("Introduction"));
    dialog->setDoubleDecimals(2);
    dialog->setDoubleRange(0.0, amount);
    dialog->setDoubleValue(amount);
    srAcceptBothDecimalSigns(dialog->findChild<QDoubleSpinBox *>());
    const bool accepted = dialog->exec() == QDialog::Accepted;
    std::optional<basix::FixNumber> entered;
    if (dialog && accepted)
        entered = basix::FixNumber(moneyMultiplier, dialog->doubleValue());
    delete dialog.data();
    return entered;
}

PosHandler *SrIPaymentPage::createTerminal(int type)
{
    switch (type) {
    case IngericoTerminal:
        return new IngericoLibHandler(this);
    case SberTerminal:
        return new SberPosLibHandler(this);
    case EftPosTerminal:
        return new QEftPosHandler(this);
    }
    return nullptr;
}

void SrIPaymentPage::payByCard()
{
    // Pending events are processed below; a second press of the button in there must not charge the
    // card twice.
    if (m_takingCard || !m_account)
        return;
    m_takingCard = true;
    // The host may destroy the wizard while one of the dialogs below is open.
    const QPointer<SrIPaymentPage> self(this);
    const auto done = qScopeGuard([self] {
        if (self)
            self->m_takingCard = false;
    });

    const CardReaderSettings settings;
    m_ui->pbCard->setEnabled(settings.configured());
    const bool wasShown = isVisible();
    const auto amount = askCardAmount();
    QCoreApplication::processEvents();
    // Nor may a card be charged for a payment that was closed or finished meanwhile, or whose
    // receipt was printed.
    const auto isOver = [self, wasShown] {
        return !self || self->isVisible() != wasShown || self->m_unsavedPack.has_value();
    };
    if (!amount || isOver())
        return;

    m_ui->pbCard->setEnabled(false);
    QString error = tr("Pos terminal initialization error");
    bool charged = false;
    // A terminal may keep the events going while it gets ready and while it waits for the card.
    if (const QPointer<PosHandler> terminal = createTerminal(settings.type())) {
        QString reason;
        QStringList slip;
        const bool ready = terminal->init(reason);
        if (ready && isOver()) {
            delete terminal.data();
            // The cashier may come back to a page that was only left.
            if (self)
                self->m_ui->pbCard->setEnabled(!self->m_unsavedPack);
            return;
        }
        if (ready) {
            charged = terminal->pay(*amount, reason, slip);
            error = reason;
        }
        delete terminal.data();
    }
    if (!self)
        return;
    if (charged) {
        self->cardCharged(*amount);
        return;
    }
    SrMessageBox::showError(self, tr("Payment by card"), error);
    if (self)
        self->m_ui->pbCard->setEnabled(true);
}

void SrIPaymentPage::cardCharged(const basix::FixNumber &amount)
{
    lockWizard();
    m_ui->dsbCard->setValue(amount.toDouble());
    m_ui->dsbCard->setEnabled(false);
    const basix::FixNumber rest = m_account->amount() - amount;
    m_ui->dsbCash->setMaximum(rest.toDouble());
    m_ui->dsbCash->setEnabled(rest.value() != 0);
    // The button that had the focus is disabled now; the cashier goes on by keyboard.
    if (m_ui->dsbCash->isEnabled())
        m_ui->dsbCash->setFocus();
    else
        wizard()->button(QWizard::FinishButton)->setFocus();
}

void SrIPaymentPage::lockWizard()
{
    QWizard *owner = wizard();
    // The framework enables Back again at every completeChanged(), except behind a commit page.
    const QList<int> visited = owner->visitedIds();
    if (visited.size() > 1)
        owner->page(visited.at(visited.size() - 2))->setCommitPage(true);
    owner->button(QWizard::BackButton)->setEnabled(false);
    owner->button(QWizard::CancelButton)->setEnabled(false);
    // Esc is Cancel by another key.
    owner->installEventFilter(this);
}

bool SrIPaymentPage::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_ui->dsbCash || watched == m_ui->dsbCard)
        // The framework hides and shows the page at every completeChanged(), and a spin box that is
        // shown writes its value anew: "1" becomes "1.00" under the cashier's hands, and hundredths
        // could not be typed at all.
        return event->type() == QEvent::Show;
    return event->type() == QEvent::KeyPress
        && static_cast<QKeyEvent *>(event)->matches(QKeySequence::Cancel);
}

bool SrIPaymentPage::validatePage()
{
    QWizard *owner = wizard();
    const QPointer<SrIPaymentPage> self(this);
    const QPointer<QWidget> focus = owner->focusWidget();
    owner->setEnabled(false);
    // Without an account, and without a profile below, the wizard stays disabled on purpose:
    // nothing that the cashier could do on it would be right.
    if (!m_account)
        return false;
    const SrWizardContext context = SrWizardContext::of(owner);
    if (!m_unsavedPack) {
        const OnlineKkmProfile profile = SrFiscalReadiness::currentProfile(this);
        if (!profile.isValid()) {
            showMsg(MsgError, SrFiscalReadiness::noProfileText());
            return false;
        }
        const std::optional<PayPack> pack = print(context, profile);
        if (!self) {
            // A printed receipt is a payment, whatever has become of the window it was made in.
            if (pack && context.paysController && !context.paysController->savePack(*pack, true))
                qWarning() << Q_FUNC_INFO << pack->id();
            return false;
        }
        m_unsavedPack = pack;
    }
    owner->setEnabled(true);
    const bool finished = m_unsavedPack && saveAndPost(context);
    // Disabling the wizard took the focus away; the field that had it may be gone by now.
    if (focus)
        focus->setFocus();
    return finished;
}

std::optional<PayPack> SrIPaymentPage::print(const SrWizardContext &context,
                                             const OnlineKkmProfile &profile)
{
    const OnlineKkmInfo info =
        profile.getKkmInfo(context.provider->groupId(), context.provider->id());
    const bool byAttorney = m_account->isLegal() && m_ui->cbAttornayDoc->isChecked();
    // The host may destroy the wizard while the register prints; what the pack is made of must not
    // go with it.
    const QPointer<SrIPaymentPage> self(this);
    const QSharedPointer<SRAccount> account = m_account;
    const basix::FixNumber card = cardAmount();
    const basix::FixNumber cash = cashAmount();
    const Check check = account->createCheck(context.provider, info, card, cash, byAttorney);
    const QVariantMap document = check.toDocument(false, MoneyType::Cash, true);
    // A register that printed and whose answer was lost knows the receipt again by its number; so
    // another attempt at the same receipt keeps the number of the first.
    if (m_attempted.document != document)
        m_attempted = {document,
                       QString::number(QDateTime::currentSecsSinceEpoch())
                           + account->accountNumber()};
    const QString number = m_attempted.number;

    QString error = SrFiscalReadiness::noRegisterText();
    QVariantMap result;
    const bool printed = context.fiscalRegister
        && context.fiscalRegister->doReceipt(document, number, result, error);
    if (self) {
        self->m_printed = result;
        self->wizard()->setEnabled(true);
    }
    if (!printed) {
        qWarning() << Q_FUNC_INFO << logvariant(document);
        if (self)
            self->showMsg(MsgError, error);
        if (self)
            self->showMsg(MsgError, tr("Ошибка сохранения платежа"));
        return std::nullopt;
    }

    // A printed receipt cannot be taken back, so neither can what it says.
    if (self) {
        self->lockWizard();
        self->m_ui->groupBox_2->setEnabled(false);
    }
    const QVariantList fiscalProperties = result.value(QStringLiteral("fiscprops")).toList();
    PayPack pack =
        account->createPack(*context.provider, fiscalProperties, *context.currency, card, cash);
    pack.setFiscProps(fiscalProperties);
    pack.setFiscData(result.value(QStringLiteral("data")).toMap());
    pack.setFiscDocument(result.value(QStringLiteral("document")).toMap());
    qWarning() << Q_FUNC_INFO << logvariant(PayPack::packToFullMap(pack));
    return pack;
}

bool SrIPaymentPage::saveAndPost(const SrWizardContext &context)
{
    // The host may destroy the wizard while it saves, and the page's own pack with it.
    const QPointer<SrIPaymentPage> self(this);
    const PayPack pack = *m_unsavedPack;
    const bool saved = context.paysController && context.paysController->savePack(pack, true);
    if (!self)
        return false;
    if (!saved) {
        self->showMsg(MsgError, tr("Ошибка сохранения платежа"));
        return false;
    }
    self->m_unsavedPack.reset();

    if (context.paysController->handOnAtOnce()) {
        QString error;
        QVariantMap message = self->m_printed;
        const bool handedOn = context.paysController->handOn(pack.id(), message, error);
        if (!self)
            return false;
        if (handedOn)
            emit self->sendMessage(payPackDestination, message);
        else
            qWarning() << Q_FUNC_INFO << pack.id() << error;
    }
    // Whoever takes the message may close and destroy the wizard at once.
    if (self)
        self->showMsg(MsgInformation, tr("Платеж отправлен на проведение"));
    // The framework closes a wizard whose last page is done; one that was destroyed behind the
    // message box is closed already.
    return !self.isNull();
}

QString SrIPaymentPage::preview() const
{
    return {};
}

QSharedPointer<SRAccount> SrIPaymentPage::outputData() const
{
    return m_account;
}

void SrIPaymentPage::showMsg(ISrIWizardPage::MsgType type, const QString &text)
{
    SrMessageBox::show(this, SrWizardContext::of(wizard()).checkName(), type, text);
}
