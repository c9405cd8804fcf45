#include "agreement.h"

#include <QJsonArray>
#include <QStringList>

namespace {

constexpr qint64 DEBT_AT_FIRST = 150050;

qint64 number(const QJsonObject &figures, const char *key)
{
    return qint64(figures.value(QLatin1String(key)).toDouble());
}

QSet<QString> texts(const QJsonObject &figures, const char *key)
{
    QSet<QString> result;
    const QJsonArray list = figures.value(QLatin1String(key)).toArray();
    for (const QJsonValue &value : list)
        result.insert(value.toString());
    return result;
}

} // namespace

void Agreement::promise(const QByteArray &line)
{
    const int blank = line.indexOf(' ');
    if (blank > 0)
        m_promises[QString::fromLatin1(line.left(blank))].insert(
            QString::fromUtf8(line.mid(blank + 1)));
}

QString Agreement::disagreement() const
{
    const auto same = [](const char *what, qint64 a, qint64 b) {
        return a == b ? QString()
                      : QStringLiteral("%1: %2 and %3; ")
                            .arg(QLatin1String(what), QString::number(a), QString::number(b));
    };
    const QJsonObject &f = m_figures;
    const int receipts = f.value(QLatin1String("receipts")).toArray().size();
    const int packs = f.value(QLatin1String("packs")).toArray().size();
    QString result = f.isEmpty() ? QStringLiteral("no figures; ") : QString();
    result += same("card money taken and on receipts", number(f, "charged") - number(f, "refunded"),
                   number(f, "receiptCashless"));
    result += same("receipts and packs", receipts, packs);
    result += same("packs here and at billing", packs, number(f, "billedPacks"));
    result += same("receipts and packs, money", number(f, "receiptTotal"),
                   number(f, "packCash") + number(f, "packCard"));
    result +=
        same("card on receipts and in packs", number(f, "receiptCashless"), number(f, "packCard"));
    result += same("packs and billing, money", number(f, "packCash") + number(f, "packCard"),
                   number(f, "billed"));
    result +=
        same("billing and the account", number(f, "billed"), DEBT_AT_FIRST - number(f, "debt"));
    const auto kept = [&](const char *what, const char *where) {
        const QSet<QString> lost =
            QSet<QString>(m_promises.value(QLatin1String(what))).subtract(texts(f, where));
        QString names;
        for (const QString &name : lost)
            names += QLatin1Char(' ') + name;
        return lost.isEmpty() ? QString()
                              : QStringLiteral("%1 and lost:%2; ").arg(QLatin1String(what), names);
    };
    result += kept("charged", "charges") + kept("printed", "receipts") + kept("saved", "packs");
    return result;
}
