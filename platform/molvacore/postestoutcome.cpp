#include <molvacore/postestoutcome.h>

namespace {

constexpr int approvalDigits = 0;
constexpr int declineDigits = 5;

} // namespace

QVector<PosTestOutcome> PosTestOutcome::table()
{
    using Outcome = PosTestAmount::Outcome;
    const auto like = [](const QString &outcome, int digits) {
        return PosTestOutcome{outcome, PosTestAmount::forKopecks(digits), true};
    };
    QVector<PosTestOutcome> list{like(QStringLiteral("approve"), approvalDigits)};
    QVector<PosTestOutcome> troubles;
    QVector<PosTestOutcome> declines;
    const QVector<PosTestAmount> rows = PosTestAmount::table();
    for (const PosTestAmount &row : rows) {
        switch (row.outcome) {
        case Outcome::Approve:
            break;
        case Outcome::ApproveSlowly:
            list.append(like(QStringLiteral("slow"), row.digits));
            break;
        case Outcome::Decline:
            declines.append(like(row.digits == declineDigits
                                     ? QStringLiteral("decline")
                                     : QStringLiteral("decline-%1").arg(row.digits),
                                 row.digits));
            break;
        case Outcome::LostBeforeCharge:
            troubles.append(like(QStringLiteral("connection-lost"), row.digits));
            break;
        case Outcome::LostAfterCharge:
            troubles.append(like(QStringLiteral("connection-lost-after"), row.digits));
            break;
        case Outcome::Timeout:
            troubles.append(like(QStringLiteral("timeout"), row.digits));
            break;
        }
    }
    list += declines;
    list += troubles;
    list.append({QStringLiteral("init-failed"), PosTestAmount(), false});
    return list;
}

std::optional<PosTestOutcome> PosTestOutcome::named(const QString &name)
{
    const QVector<PosTestOutcome> outcomes = table();
    for (const PosTestOutcome &outcome : outcomes) {
        if (outcome.name == name)
            return outcome;
    }
    return std::nullopt;
}
