#include "srlstartpage.h"

#include "srdecimalinput.h"
#include "srmessagebox.h"
#include "srpaymentqr.h"
#include "srrequest.h"
#include "srscanfield.h"
#include "srstartpageexchange.h"
#include "srwizardcontext.h"
#include "ui_srlstartpage.h"

#include <QDebug>
#include <QTimer>

namespace {

constexpr int moneyMultiplier = 100;

} // namespace

SrLStartPage::SrLStartPage(QWizard *wizard)
    : QWizardPage(wizard), m_ui(std::make_unique<Ui_SrLStartPage>()), m_timer(new QTimer(this))
{
    m_ui->setupUi(this);
    m_exchange = std::make_unique<SrStartPageExchange>(this, m_timer, m_ui->progressBar);
    srAcceptBothDecimalSigns(m_ui->dsbAmount);
    registerField(QStringLiteral("account*"), m_ui->leAccount);
    registerField(QStringLiteral("contract"), m_ui->leContract);
    accountChanged(QString());

    connect(m_timer, &QTimer::timeout, this, &SrLStartPage::progress);
    connect(m_ui->pbGetData, &QPushButton::released, this, &SrLStartPage::getClientData);
    connect(m_ui->cbAmount, &QCheckBox::toggled, this, &SrLStartPage::cleanAnswer);
    connect(m_ui->leAccount, &QLineEdit::textEdited, this, &SrLStartPage::cleanAnswer);
    connect(m_ui->leContract, &QLineEdit::textEdited, this, &SrLStartPage::cleanAnswer);
    connect(m_ui->leContract, &QLineEdit::textEdited, this, &SrLStartPage::accountChanged);
    const auto lookForCode = QOverload<>::of(&SrLStartPage::parseQr);
    for (QLineEdit *field : {m_ui->leAccount, m_ui->leContract, m_ui->lePhone}) {
        new SrScanField(field);
        connect(field, &QLineEdit::editingFinished, this, lookForCode);
    }
}

SrLStartPage::~SrLStartPage() = default;

bool SrLStartPage::isComplete() const
{
    return QWizardPage::isComplete() && m_account.isValid();
}

QString SrLStartPage::preview() const
{
    return {};
}

QSharedPointer<SRAccount> SrLStartPage::outputData() const
{
    const QSharedPointer<SRAccount> account = m_account.clone();
    // The receipt's address may be typed after the answer has come; a code scanned there is none.
    const QString address = m_ui->lePhone->text();
    if (!SrPaymentQr::isPaymentCode(address))
        account.staticCast<SrLegalAccount>()->setClientPhoneOrEmail(address);
    return account;
}

void SrLStartPage::showMsg(ISrIWizardPage::MsgType type, const QString &text)
{
    SrMessageBox::show(this, SrWizardContext::of(wizard()).checkName(), type, text);
}

basix::FixNumber SrLStartPage::amount() const
{
    return basix::FixNumber(moneyMultiplier, m_ui->dsbAmount->value());
}

void SrLStartPage::getClientData()
{
    // Input is disabled last here and first on the individual's page.
    m_ui->tbSummary->clear();
    emit completeChanged();
    disableInput(true);
    resetAccount();

    const QString document = m_ui->leContract->text().trimmed();
    QVector<SrBillingExchange::Parameter> parameters;
    if (!m_ui->leAccount->text().isEmpty())
        parameters.append({QStringLiteral("account"), m_ui->leAccount->text().trimmed()});
    if (!document.isEmpty())
        parameters.append({QStringLiteral("numdoc"), document});
    const bool withAmount = m_ui->cbAmount->isChecked() && !document.isEmpty();
    emit sendMessage(SRRequest::DESTINATION,
                     m_exchange->begin(parameters, withAmount ? amount() : basix::FixNumber()));
}

void SrLStartPage::progress()
{
    if (m_exchange->ranOut())
        showMsg(MsgError, tr("Connection timeout"));
}

void SrLStartPage::incomingMessage(QVariantMap headers, QString message)
{
    const SrAnswer answer = m_exchange->receive(headers, message);
    if (!answer.matched)
        return;
    disableInput(false);
    if (answer.outcome == SrAnswer::Outcome::Data) {
        setAccount(answer.payParamList);
        qDebug() << answer.data;
        return;
    }
    m_ui->leAccount->setFocus();
    m_ui->leAccount->selectAll();
    if (answer.outcome == SrAnswer::Outcome::Failure)
        showMsg(MsgError, answer.failureText);
}

void SrLStartPage::setAccount(const QVariantList &payParamList)
{
    m_account = SrLegalAccount();
    // Before the parse: an answer in the single-document format is numbered after it.
    m_account.setContract(m_ui->leContract->text());
    m_account.parseCheckList(payParamList);
    m_account.setAccountNumber(m_ui->leAccount->text());
    m_account.setStartAmount(amount());
    m_account.setClientPhoneOrEmail(m_ui->lePhone->text());
    m_ui->tbSummary->showAccount(m_account.toHtml());
    emit completeChanged();
}

void SrLStartPage::resetAccount()
{
    m_account = SrLegalAccount();
    // Without it Next would stay enabled by an earlier answer while the new one is waited for.
    emit completeChanged();
}

void SrLStartPage::cleanAnswer()
{
    m_ui->tbSummary->clear();
    resetAccount();
}

void SrLStartPage::accountChanged(QString text)
{
    m_ui->cbAmount->setVisible(!text.isEmpty());
    m_ui->dsbAmount->setVisible(!text.isEmpty());
}

void SrLStartPage::disableInput(bool disable)
{
    if (disable)
        // The focus would go on to a button, and a scanner's second Enter with it.
        m_ui->tbSummary->setFocus();
    m_ui->leAccount->setDisabled(disable);
    m_ui->leContract->setDisabled(disable);
    m_ui->lePhone->setDisabled(disable);
    m_ui->cbAmount->setDisabled(disable);
    m_ui->pbGetData->setDisabled(disable);
    m_ui->dsbAmount->setEnabled(!disable && m_ui->cbAmount->isChecked());
}

void SrLStartPage::parseQr()
{
    auto *field = qobject_cast<QLineEdit *>(sender());
    const QString code = SrScanField::takeCodeFrom(field);
    if (code.isEmpty())
        return;
    // A number from before the scan must not be asked for with the sum of the new bill.
    if (field != m_ui->lePhone)
        field->clear();
    parseQr(code);
}

void SrLStartPage::parseQr(const QString &text)
{
    if (!SrPaymentQr::isPaymentCode(text))
        return;
    const auto pairs = SrPaymentQr::pairs(text);
    for (const SrPaymentQr::Pair &pair : pairs) {
        if (pair.name == SrPaymentQr::NAME_ACCOUNT) {
            m_ui->leAccount->setText(pair.value);
        } else if (pair.name == SrPaymentQr::NAME_DOCUMENT) {
            m_ui->leContract->setText(pair.value);
        } else if (pair.name == SrPaymentQr::NAME_SUM) {
            if (const auto sum = SrPaymentQr::sum(pair.value)) {
                m_ui->dsbAmount->setValue(sum->toDouble());
                m_ui->cbAmount->setChecked(true);
            }
        }
    }
    // setText() is no edit of the cashier's; the planned amount follows the document's number all
    // the same.
    accountChanged(m_ui->leContract->text());
    getClientData();
}
