#include <fiscal/emulatedregister.h>

#include <fiscal/fiscalfindings.h>
#include <fiscal/fiscaljournal.h>

#include <molvacore/fiscaltag.h>
#include <molvacore/fsstatus.h>

#include <QCryptographicHash>
#include <QJsonDocument>
#include <QJsonObject>

#include <utility>

namespace {

constexpr int SHIFT_SECONDS = 24 * 60 * 60;
constexpr int FORMAT_1_05 = 2;

/// Tells the cashier that nothing is really broken.
QString simulated(const QString &text)
{
    return text + QStringLiteral(" (сбой задан в настройках эмулятора кассы)");
}

/// Ten digits, derived from what the document is and where it stands.
QString signOf(const QString &storage, qint64 number, const QVariantMap &document)
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    hash.addData(storage.toLatin1() + ':' + QByteArray::number(number) + ':');
    hash.addData(
        QJsonDocument(QJsonObject::fromVariantMap(document)).toJson(QJsonDocument::Compact));
    const QByteArray digest = hash.result();
    quint32 sign = 0;
    for (int i = 0; i < 4; ++i)
        sign = (sign << 8) | static_cast<unsigned char>(digest.at(i));
    return QStringLiteral("%1").arg(sign, 10, 10, QLatin1Char('0'));
}

/// What a receipt says, whenever it was said and by whichever numeric type.
QByteArray contentOf(QVariantMap document)
{
    document.remove(FiscalTag::key(FiscalTag::DateTime));
    const auto text = [](const QJsonObject &object) {
        return QJsonDocument(object).toJson(QJsonDocument::Compact);
    };
    return text(QJsonDocument::fromJson(text(QJsonObject::fromVariantMap(document))).object());
}

QString qrOf(const FiscalRecord &record)
{
    const QString sign =
        record.document.value(FiscalTag::key(FiscalTag::SettlementSign)).toString();
    return QStringLiteral("t=%1&s=%2&fn=%3&i=%4&fp=%5&n=%6")
        .arg(record.time.toString(QStringLiteral("yyyyMMddTHHmm")),
             FiscalFindings::rubles(record.total), record.storage, QString::number(record.number),
             record.sign, sign);
}

QVariantMap property(int tag, const QVariant &value)
{
    return {{QStringLiteral("tag"), tag}, {QStringLiteral("value"), value}};
}

/// A structure becomes a list of its own tags, a repeated tag one entry for each value.
QVariantList properties(const QVariantMap &map)
{
    QVariantList result;
    for (auto it = map.cbegin(); it != map.cend(); ++it) {
        bool isTag = false;
        const int tag = it.key().toInt(&isTag);
        if (!isTag)
            continue;
        const bool repeated = it.value().userType() == QMetaType::QVariantList
            || it.value().userType() == QMetaType::QStringList;
        const QVariantList values = repeated ? it.value().toList() : QVariantList{it.value()};
        for (const QVariant &value : values) {
            const bool structure = value.userType() == QMetaType::QVariantMap;
            result.append(property(tag, structure ? QVariant(properties(value.toMap())) : value));
        }
    }
    return result;
}

QVariantList registered(const FiscalRecord &record)
{
    QVariantList result = properties(record.document);
    // The register's clock counts seconds of its own local time, without a zone.
    const QDateTime asUtc(record.time.date(), record.time.time(), Qt::UTC);
    result.append(property(FiscalTag::FormatVersion, FORMAT_1_05));
    result.append(property(FiscalTag::DateTime, asUtc.toSecsSinceEpoch()));
    result.append(property(FiscalTag::ShiftNumber, record.shift));
    result.append(property(FiscalTag::ReceiptNumber, record.receipt));
    result.append(property(FiscalTag::DocumentNumber, record.number));
    result.append(property(FiscalTag::FiscalStorageNumber, record.storage));
    result.append(property(FiscalTag::FiscalSign, record.sign));
    result.append(property(FiscalTag::QrText, record.qr));
    return result;
}

QVariantMap dataOf(const FiscalRecord &record)
{
    return {{FiscalData::STORAGE, record.storage},
            {FiscalData::NUMBER, record.number},
            {FiscalData::SIGN, record.sign},
            {FiscalData::SHIFT, record.shift},
            {FiscalData::RECEIPT, record.receipt},
            {FiscalData::TIME, record.time.toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss"))},
            {FiscalData::QR, record.qr},
            {FiscalData::DOCUMENT_NUMBER, record.documentNumber}};
}

} // namespace

EmulatedRegister::EmulatedRegister(FiscalJournal &journal, RegisterClock clock, QObject *parent)
    : FrHandler(parent), m_journal(journal), m_clock(std::move(clock))
{
    qRegisterMetaType<QVector<FiscalFinding>>("QVector<FiscalFinding>");
}

EmulatedRegister::~EmulatedRegister() = default;

EmulatedRegister::Condition EmulatedRegister::condition() const
{
    return m_condition;
}

void EmulatedRegister::setCondition(Condition condition, bool once)
{
    m_once = once && condition != Condition::Ready;
    if (condition == m_condition)
        return;
    m_condition = condition;
    emit conditionChanged(condition);
}

QString EmulatedRegister::conditionText(Condition condition)
{
    switch (condition) {
    case Condition::Ready:
        return QStringLiteral("Исправна");
    case Condition::NoConnection:
        return QStringLiteral("Нет связи");
    case Condition::NotReady:
        return QStringLiteral("Не готова печатать чеки");
    case Condition::ShiftExpired:
        return QStringLiteral("Смена длиннее 24 часов");
    case Condition::PaperOut:
        return QStringLiteral("Кончилась бумага");
    case Condition::FailsWhilePrinting:
        return QStringLiteral("Сбой при печати, чек не пробит");
    case Condition::FailsAfterPrinting:
        return QStringLiteral("Сбой после печати, чек пробит");
    case Condition::StorageFull:
        return QStringLiteral("Фискальный накопитель заполнен");
    }
    return QString();
}

QVector<EmulatedRegister::Condition> EmulatedRegister::conditions()
{
    return {Condition::Ready,
            Condition::NoConnection,
            Condition::NotReady,
            Condition::ShiftExpired,
            Condition::PaperOut,
            Condition::FailsWhilePrinting,
            Condition::FailsAfterPrinting,
            Condition::StorageFull};
}

QDateTime EmulatedRegister::now() const
{
    return m_clock ? m_clock() : QDateTime::currentDateTime();
}

bool EmulatedRegister::shiftIsOpen() const
{
    return m_journal.openShift().has_value();
}

bool EmulatedRegister::shiftTooOld() const
{
    const std::optional<FiscalRecord> shift = m_journal.openShift();
    return shift && shift->time.secsTo(now()) >= SHIFT_SECONDS;
}

bool EmulatedRegister::getFiscalStatus(QSharedPointer<FsStatus> &status)
{
    if (m_condition == Condition::NoConnection || !m_journal.isOpen())
        return false;
    bool ready = !shiftTooOld();
    switch (m_condition) {
    case Condition::NoConnection:
    case Condition::NotReady:
    case Condition::ShiftExpired:
    case Condition::PaperOut:
    case Condition::StorageFull:
        ready = false;
        break;
    case Condition::Ready:
    case Condition::FailsWhilePrinting:
    case Condition::FailsAfterPrinting:
        break;
    }
    status = QSharedPointer<FsStatus>::create(ready);
    return true;
}

bool EmulatedRegister::refusal(QString &error) const
{
    switch (m_condition) {
    case Condition::Ready:
    case Condition::FailsWhilePrinting:
    case Condition::FailsAfterPrinting:
        break;
    case Condition::NoConnection:
        error = simulated(QStringLiteral(
            "Нет связи с кассой. Проверьте питание и кабель и повторите. Чек не пробит."));
        return true;
    case Condition::NotReady:
        error = simulated(QStringLiteral(
            "Касса не готова печатать чеки. Проверьте её состояние. Чек не пробит."));
        return true;
    case Condition::ShiftExpired:
        error = simulated(QStringLiteral(
            "Смена длится больше 24 часов. Закройте смену и повторите. Чек не пробит."));
        return true;
    case Condition::PaperOut:
        error = simulated(
            QStringLiteral("В кассе кончилась бумага. Вставьте рулон и повторите. Чек не пробит."));
        return true;
    case Condition::StorageFull:
        error = simulated(
            QStringLiteral("Фискальный накопитель заполнен. Вызовите мастера. Чек не пробит."));
        return true;
    }
    if (shiftTooOld()) {
        error = QStringLiteral(
            "Смена длится больше 24 часов. Закройте смену и повторите. Чек не пробит.");
        return true;
    }
    return false;
}

bool EmulatedRegister::ensureShift(QString &error)
{
    if (m_journal.openShift())
        return true;
    FiscalRecord report;
    report.form = FiscalRecord::Form::OpenShift;
    report.number = m_journal.nextNumber();
    report.storage = m_journal.storageNumber();
    report.shift = m_journal.lastShift() + 1;
    report.time = now();
    report.sign = signOf(report.storage, report.number, {});
    if (m_journal.append(report))
        return true;
    error = QStringLiteral("Смена не открыта. Чек не пробит. %1").arg(m_journal.lastError());
    return false;
}

bool EmulatedRegister::closeShift(QString &error)
{
    const std::optional<FiscalRecord> shift = m_journal.openShift();
    if (!shift) {
        error = QStringLiteral("Смена не открыта, закрывать нечего.");
        return false;
    }
    FiscalRecord report;
    report.form = FiscalRecord::Form::CloseShift;
    report.number = m_journal.nextNumber();
    report.storage = m_journal.storageNumber();
    report.shift = shift->shift;
    report.time = now();
    report.sign = signOf(report.storage, report.number, {});
    if (!m_journal.append(report)) {
        error = QStringLiteral("Смена не закрыта. %1").arg(m_journal.lastError());
        return false;
    }
    if (m_condition == Condition::ShiftExpired)
        setCondition(Condition::Ready);
    error.clear();
    return true;
}

FiscalRecord EmulatedRegister::makeReceipt(const QVariantMap &document,
                                           const QString &documentNumber) const
{
    FiscalRecord record;
    record.form = FiscalRecord::Form::Receipt;
    record.number = m_journal.nextNumber();
    record.storage = m_journal.storageNumber();
    record.shift = m_journal.lastShift();
    record.receipt = m_journal.lastReceiptInShift(record.shift) + 1;
    record.time = now();
    record.documentNumber = documentNumber;
    record.document = document;
    record.total = document.value(FiscalTag::key(FiscalTag::Total)).toLongLong();
    record.sign = signOf(record.storage, record.number, document);
    record.qr = qrOf(record);
    record.result = {{QStringLiteral("fiscprops"), registered(record)},
                     {QStringLiteral("data"), dataOf(record)},
                     {QStringLiteral("document"), document}};
    return record;
}

bool EmulatedRegister::doReceipt(const QVariantMap &document, const QString &documentNumber,
                                 QVariantMap &result, QString &error)
{
    result.clear();
    error.clear();
    const bool printed = print(document, documentNumber, result, error);
    if (m_once)
        setCondition(Condition::Ready);
    return printed;
}

bool EmulatedRegister::answerAgain(const FiscalRecord &known, const QVariantMap &document,
                                   QVariantMap &result, QString &error) const
{
    if (contentOf(known.document) != contentOf(document)) {
        error = QStringLiteral("Под номером документа %1 уже пробит чек № %2 смены %3 с другим "
                               "содержимым. Новый чек не пробит. Начните платёж заново.")
                    .arg(known.documentNumber, QString::number(known.receipt),
                         QString::number(known.shift));
        return false;
    }
    result = known.result;
    return true;
}

bool EmulatedRegister::print(const QVariantMap &document, const QString &documentNumber,
                             QVariantMap &result, QString &error)
{
    if (!m_journal.isOpen()) {
        error = QStringLiteral("Журнал фискального накопителя не открыт. Чек не пробит.");
        return false;
    }
    if (!documentNumber.isEmpty() && m_condition != Condition::NoConnection) {
        if (const auto known = m_journal.findByDocumentNumber(documentNumber))
            return answerAgain(*known, document, result, error);
        // Whoever does not know what it printed must not print.
        if (!m_journal.lastError().isEmpty()) {
            error = QStringLiteral("Чек не пробит. %1").arg(m_journal.lastError());
            return false;
        }
    }
    if (refusal(error))
        return false;
    const QVector<FiscalFinding> findings = FiscalDocumentChecker().check(document);
    emit checked(findings);
    if (!FiscalDocumentChecker::printable(findings)) {
        error = QStringLiteral("Касса не приняла чек, он не пробит:\n%1")
                    .arg(FiscalDocumentChecker::errorText(findings));
        return false;
    }
    if (m_condition == Condition::FailsWhilePrinting) {
        error = simulated(QStringLiteral("Сбой при печати чека. Чек не пробит, повторите."));
        return false;
    }
    if (!ensureShift(error))
        return false;
    FiscalRecord record = makeReceipt(document, documentNumber);
    record.answered = m_condition != Condition::FailsAfterPrinting;
    if (!m_journal.append(record)) {
        error = QStringLiteral("Чек не пробит. %1").arg(m_journal.lastError());
        return false;
    }
    emit receiptRegistered(record.number);
    if (!record.answered) {
        error = simulated(
            QStringLiteral("Касса не ответила после печати. Проверьте, вышел ли чек № %1 смены %2, "
                           "прежде чем повторять.")
                .arg(QString::number(record.receipt), QString::number(record.shift)));
        return false;
    }
    result = record.result;
    return true;
}
