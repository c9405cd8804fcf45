#include "individualdemo.h"

#include <app/terminalcontext.h>
#include <hostdata/hostdataseeder.h>

#include <QAbstractItemView>
#include <QDate>

namespace {

constexpr int lastReadingColumn = 1;
constexpr int currentReadingColumn = 2;

} // namespace

qint64 IndividualDemo::providerId() const
{
    return HostDataSeeder::PROVIDER_INDIVIDUAL;
}

QString IndividualDemo::title() const
{
    return tr("Платёж физического лица по лицевому счёту %1").arg(SampleNumber::ORDINARY);
}

QString IndividualDemo::obstacle()
{
    const auto account =
        context().billing().account(SampleAccount::Payer::Individual, SampleNumber::ORDINARY);
    if (!account)
        return tr("Счёта %1 в базе биллинга нет.").arg(SampleNumber::ORDINARY);
    return account->debt > 0 ? QString() : tr("Счёт %1 уже оплачен.").arg(SampleNumber::ORDINARY);
}

void IndividualDemo::planAccount()
{
    step(tr("Открылся мастер платежа"), pageWith(QStringLiteral("leAccount")),
         [this] { return hands().click(QStringLiteral("leAccount")); });
    picture(QStringLiteral("start"));
    step(tr("Сканер читает код с квитанции"), pageWith(QStringLiteral("leAccount")),
         [this] { return hands().scan(billCode()); });
    step(tr("Биллинг ответил: счёт на экране"), accountShown(), [] { return true; });
    picture(QStringLiteral("account"));
    clickNext();

    step(tr("Распределить по сумме долга"), pageWith(QStringLiteral("tvServices")),
         [this] { return hands().click(QStringLiteral("pbByDebt")); });
    step(tr("Показания счётчиков"), pageWith(QStringLiteral("tvCounters")),
         [this] { return enterReadings(); });
    picture(QStringLiteral("services"));
    clickNext();
}

QString IndividualDemo::billCode()
{
    const auto account =
        context().billing().account(SampleAccount::Payer::Individual, SampleNumber::ORDINARY);
    const qint64 sum = account ? account->debt : 0;
    return QStringLiteral("ST00012|Name=АО «Селмар "
                          "Ривенхолд»|PersonalAcc=40702810900000000001|BankName=Банк получателя|"
                          "BIC=044525000|CorrespAcc=0|PersAcc=%1|PaymPeriod=%2|Sum=%3")
        .arg(SampleNumber::ORDINARY, QDate::currentDate().toString(QStringLiteral("MM.yyyy")),
             QString::number(sum));
}

bool IndividualDemo::enterReadings()
{
    auto *view =
        qobject_cast<QAbstractItemView *>(CashierHands::find(QStringLiteral("tvCounters")));
    if (!view)
        return false;
    const QAbstractItemModel &model = *view->model();
    for (int row = 0; row < model.rowCount(); ++row) {
        const QModelIndex cell = model.index(row, currentReadingColumn);
        if (!(model.flags(cell) & Qt::ItemIsEditable))
            continue;
        const qint64 last = model.index(row, lastReadingColumn).data().toLongLong();
        const QString reading = QString::number(last + 7 + row);
        if (!hands().enterCell(*view, cell, reading))
            return false;
        say(tr("   %1: было %2, стало %3")
                .arg(model.index(row, 0).data().toString(), QString::number(last), reading));
    }
    return true;
}
