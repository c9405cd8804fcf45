#include "sristartpage.h"

#include "srdecimalinput.h"
#include "srmessagebox.h"
#include "srpaymentqr.h"
#include "srrequest.h"
#include "srscanfield.h"
#include "srstartpageexchange.h"
#include "srwizardcontext.h"
#include "ui_sristartpage.h"

#include <QDate>
#include <QDebug>
#include <QTimer>

namespace {

constexpr int moneyMultiplier = 100;

} // namespace

SrIStartPage::SrIStartPage(QWizard *wizard)
    : QWizardPage(wizard), m_ui(std::make_unique<Ui_SrIStartPage>()), m_timer(new QTimer(this))
{
    m_ui->setupUi(this);
    m_exchange = std::make_unique<SrStartPageExchange>(this, m_timer, m_ui->progressBar);
    srAcceptBothDecimalSigns(m_ui->dsbAmount);
    registerField(QStringLiteral("account*"), m_ui->leAccount);
    const QDate today = QDate::currentDate();
    m_ui->sbYear->setMaximum(today.year());
    m_ui->sbYear->setValue(today.year());
    m_ui->cbMonth->setCurrentIndex(today.month() - 1);

    connect(m_ui->sbYear, QOverload<int>::of(&QSpinBox::valueChanged), this,
            &SrIStartPage::onYearChanged);
    connect(m_ui->cbMonth, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &SrIStartPage::onMonthChanged);
    connect(m_timer, &QTimer::timeout, this, &SrIStartPage::progress);
    connect(m_ui->pbGetData, &QPushButton::released, this, &SrIStartPage::getClientData);
    connect(m_ui->cbPeriod, &QCheckBox::toggled, this, &SrIStartPage::cleanAnswer);
    connect(m_ui->cbAmount, &QCheckBox::toggled, this, &SrIStartPage::cleanAnswer);
    connect(m_ui->leAccount, &QLineEdit::textEdited, this, &SrIStartPage::cleanAnswer);
    const auto lookForCode = QOverload<>::of(&SrIStartPage::parseQr);
    for (QLineEdit *field : {m_ui->leAccount, m_ui->lePhone}) {
        new SrScanField(field);
        connect(field, &QLineEdit::editingFinished, this, lookForCode);
    }
}

SrIStartPage::~SrIStartPage() = default;

bool SrIStartPage::isComplete() const
{
    return QWizardPage::isComplete() && m_account.isValid();
}

QString SrIStartPage::preview() const
{
    return {};
}

QSharedPointer<SRAccount> SrIStartPage::outputData() const
{
    const QSharedPointer<SRAccount> account = m_account.clone();
    // The receipt's address may be typed after the answer has come; a code scanned there is none.
    const QString address = m_ui->lePhone->text();
    if (!SrPaymentQr::isPaymentCode(address))
        account.staticCast<SrPersonalAccount>()->setClientPhoneOrEmail(address);
    return account;
}

void SrIStartPage::showMsg(ISrIWizardPage::MsgType type, const QString &text)
{
    SrMessageBox::show(this, SrWizardContext::of(wizard()).checkName(), type, text);
}

QString SrIStartPage::period() const
{
    return QStringLiteral("%1-%2").arg(
        QString::number(m_ui->cbMonth->currentIndex() + 1).rightJustified(2, QLatin1Char('0')),
        QString::number(m_ui->sbYear->value()));
}

basix::FixNumber SrIStartPage::amount() const
{
    return basix::FixNumber(moneyMultiplier, m_ui->dsbAmount->value());
}

void SrIStartPage::getClientData()
{
    disableInput(true);
    m_ui->tbSummary->clear();
    emit completeChanged();
    resetAccount();

    QVector<SrBillingExchange::Parameter> parameters;
    if (!m_ui->leAccount->text().isEmpty())
        parameters.append({QStringLiteral("account"), m_ui->leAccount->text().trimmed()});
    if (m_ui->cbPeriod->isChecked())
        parameters.append({QStringLiteral("period"), period()});
    emit sendMessage(
        SRRequest::DESTINATION,
        m_exchange->begin(parameters, m_ui->cbAmount->isChecked() ? amount() : basix::FixNumber()));
}

void SrIStartPage::progress()
{
    if (m_exchange->ranOut())
        showMsg(MsgError, tr("Connection timeout"));
}

void SrIStartPage::incomingMessage(QVariantMap headers, QString message)
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

void SrIStartPage::setAccount(const QVariantList &payParamList)
{
    m_account = SrPersonalAccount();
    m_account.parseCheckList(payParamList);
    m_account.setAccountNumber(m_ui->leAccount->text());
    // Period and amount go along even when their boxes are off: they are what the form shows.
    m_account.setPeriod(period());
    m_account.setStartAmount(amount());
    m_account.setClientPhoneOrEmail(m_ui->lePhone->text());
    m_ui->tbSummary->showAccount(m_account.toHtml());
    emit completeChanged();
}

void SrIStartPage::resetAccount()
{
    m_account = SrPersonalAccount();
    // Without it Next would stay enabled by an earlier answer while the new one is waited for.
    emit completeChanged();
}

void SrIStartPage::cleanAnswer()
{
    m_ui->tbSummary->clear();
    resetAccount();
}

void SrIStartPage::onMonthChanged(int index)
{
    cleanAnswer();
    const QDate today = QDate::currentDate();
    if (m_ui->sbYear->value() == today.year() && index >= today.month())
        m_ui->cbMonth->setCurrentIndex(today.month() - 1);
}

void SrIStartPage::onYearChanged(int year)
{
    cleanAnswer();
    const QDate today = QDate::currentDate();
    if (year == today.year() && m_ui->cbMonth->currentIndex() >= today.month())
        m_ui->cbMonth->setCurrentIndex(today.month() - 1);
}

void SrIStartPage::disableInput(bool disable)
{
    if (disable)
        // The focus would go on to a button, and a scanner's second Enter with it.
        m_ui->tbSummary->setFocus();
    m_ui->leAccount->setDisabled(disable);
    m_ui->lePhone->setDisabled(disable);
    m_ui->cbAmount->setDisabled(disable);
    // Month and year are enabled again even when the period is off, unlike the amount: cashiers set
    // them first and then switch the period on.
    m_ui->cbMonth->setDisabled(disable);
    m_ui->cbPeriod->setDisabled(disable);
    m_ui->sbYear->setDisabled(disable);
    m_ui->pbGetData->setDisabled(disable);
    m_ui->dsbAmount->setEnabled(!disable && m_ui->cbAmount->isChecked());
}

void SrIStartPage::parseQr()
{
    auto *field = qobject_cast<QLineEdit *>(sender());
    const QString code = SrScanField::takeCodeFrom(field);
    if (code.isEmpty())
        return;
    // A number from before the scan must not be asked for with the sum of the new bill.
    if (field == m_ui->leAccount)
        m_ui->leAccount->clear();
    parseQr(code);
}

void SrIStartPage::parseQr(const QString &text)
{
    if (!SrPaymentQr::isPaymentCode(text))
        return;
    const auto pairs = SrPaymentQr::pairs(text);
    for (const SrPaymentQr::Pair &pair : pairs) {
        if (pair.name == SrPaymentQr::NAME_ACCOUNT) {
            m_ui->leAccount->setText(pair.value);
        } else if (pair.name == SrPaymentQr::NAME_PERIOD) {
            if (const auto period = SrPaymentQr::period(pair.value, m_ui->sbYear->maximum())) {
                m_ui->cbPeriod->setChecked(true);
                m_ui->sbYear->setValue(period->year);
                m_ui->cbMonth->setCurrentIndex(period->month - 1);
            }
        } else if (pair.name == SrPaymentQr::NAME_SUM) {
            if (const auto sum = SrPaymentQr::sum(pair.value)) {
                m_ui->dsbAmount->setValue(sum->toDouble());
                m_ui->cbAmount->setChecked(true);
            }
        }
    }
    getClientData();
}
