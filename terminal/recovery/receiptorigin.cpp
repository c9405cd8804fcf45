#include <recovery/receiptorigin.h>

#include <molvacore/fiscaltag.h>

#include <QVariantList>

namespace {

const QString LABEL_ACCOUNT = QStringLiteral("Лицевой счет");
const QString LABEL_CONTRACT = QStringLiteral("Договор №");
const QString LABEL_PERIOD = QStringLiteral("ПЕРИОД");
const QString LABEL_DOCUMENT = QStringLiteral("Документ №");

/// Seconds since 1970 have ten digits from 2001 to 2286; what follows them is the account.
constexpr int SECONDS_DIGITS = 10;

qint64 kopecks(const QVariantMap &map, int tag)
{
    return map.value(FiscalTag::key(tag)).toLongLong();
}

/// "last/current" of a meter; false for any other text.
bool readReading(const QString &name, const QString &text, ReceiptOrigin *origin)
{
    const QStringList values = text.split(QLatin1Char('/'));
    if (values.size() != 2)
        return false;
    bool lastRead = false;
    bool currentRead = false;
    const ReceiptOrigin::Reading reading{name, values.at(0).toLongLong(&lastRead),
                                         values.at(1).toLongLong(&currentRead)};
    if (!lastRead || !currentRead)
        return false;
    origin->readings.append(reading);
    return true;
}

void readLine(const QString &line, ReceiptOrigin *origin)
{
    const int tab = line.lastIndexOf(QLatin1Char('\t'));
    if (tab < 0)
        return;
    const QString label = line.left(tab);
    const QString value = line.mid(tab + 1).trimmed();
    if (label == LABEL_ACCOUNT || label == LABEL_CONTRACT) {
        origin->payer =
            label == LABEL_ACCOUNT ? ReceiptOrigin::Payer::Individual : ReceiptOrigin::Payer::Legal;
        origin->account = value;
    } else if (label == LABEL_PERIOD) {
        origin->period = value;
    } else if (label == LABEL_DOCUMENT) {
        origin->documents.append(value);
    } else {
        readReading(label, value, origin);
    }
}

} // namespace

ReceiptOrigin ReceiptOrigin::of(const FiscalRecord &receipt)
{
    ReceiptOrigin origin;
    const QVariantMap &document = receipt.document;
    const QStringList lines = document.value(QStringLiteral("printable")).toStringList();
    for (const QString &line : lines)
        readLine(line, &origin);
    if (origin.account.isEmpty())
        origin.account = receipt.documentNumber.mid(SECONDS_DIGITS);
    const QVariantList items = document.value(FiscalTag::key(FiscalTag::Item)).toList();
    for (const QVariant &entry : items) {
        const QVariantMap item = entry.toMap();
        origin.items.append({item.value(FiscalTag::key(FiscalTag::ItemName)).toString(),
                             kopecks(item, FiscalTag::ItemCost)});
    }
    origin.total = basix::FixNumber(100, kopecks(document, FiscalTag::Total));
    origin.cash = basix::FixNumber(100, kopecks(document, FiscalTag::CashSum));
    origin.cashless = basix::FixNumber(100, kopecks(document, FiscalTag::CashlessSum));
    return origin;
}
