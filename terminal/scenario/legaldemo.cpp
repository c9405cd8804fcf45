#include "legaldemo.h"

#include <app/terminalcontext.h>
#include <hostdata/hostdataseeder.h>

#include <QAbstractItemView>

#include <algorithm>

namespace {

constexpr int documentColumn = 0;
constexpr int toPayColumn = 3;
constexpr int documentsToTick = 2;

} // namespace

qint64 LegalDemo::providerId() const
{
    return HostDataSeeder::PROVIDER_LEGAL;
}

QString LegalDemo::title() const
{
    return tr("Платёж юридического лица по договору %1").arg(SampleNumber::LEGAL_SEVERAL);
}

QString LegalDemo::obstacle()
{
    const auto contract =
        context().billing().account(SampleAccount::Payer::Legal, SampleNumber::LEGAL_SEVERAL);
    if (!contract)
        return tr("Договора %1 в базе биллинга нет.").arg(SampleNumber::LEGAL_SEVERAL);
    const auto owed =
        std::count_if(contract->documents.cbegin(), contract->documents.cend(),
                      [](const BillingDocument &document) { return document.topay > 0; });
    return owed >= documentsToTick ? QString()
                                   : tr("По договору %1 уже нет двух неоплаченных документов.")
                                         .arg(SampleNumber::LEGAL_SEVERAL);
}

void LegalDemo::planAccount()
{
    step(tr("Открылся мастер платежа"), pageWith(QStringLiteral("leAccount")),
         [this] { return hands().click(QStringLiteral("leAccount")); });
    picture(QStringLiteral("start"));
    step(tr("Сканер читает код со счёта"), pageWith(QStringLiteral("leAccount")),
         [this] { return hands().scan(billCode()); });
    step(tr("Биллинг ответил: документ на экране"), accountShown(), [] { return true; });
    picture(QStringLiteral("document"));
    step(tr("Номер документа стёрт, запрошен весь договор"), pageWith(QStringLiteral("leContract")),
         [this] { return askWholeContract(); });
    step(tr("Биллинг ответил: договор на экране"), accountShown(), [] { return true; });
    picture(QStringLiteral("contract"));
    clickNext();

    step(tr("Отмечены документы к оплате"), pageWith(QStringLiteral("tvServices")),
         [this] { return tickDocuments(); });
    step(tr("Распределить по сумме долга"), pageWith(QStringLiteral("pbByDebt")),
         [this] { return hands().click(QStringLiteral("pbByDebt")); });
    picture(QStringLiteral("documents"));
    clickNext();
    step(tr("Платит представитель по доверенности"), pageWith(QStringLiteral("cbAttornayDoc")),
         [this] { return hands().click(QStringLiteral("cbAttornayDoc")); });
}

QString LegalDemo::billCode()
{
    const auto contract =
        context().billing().account(SampleAccount::Payer::Legal, SampleNumber::LEGAL_SEVERAL);
    BillingDocument document;
    if (contract) {
        const auto owed = std::find_if(contract->documents.cbegin(), contract->documents.cend(),
                                       [](const BillingDocument &each) { return each.topay > 0; });
        document = owed == contract->documents.cend() ? contract->documents.value(0) : *owed;
    }
    return QStringLiteral("ST00012|Name=АО «Селмар "
                          "Ривенхолд»|PersonalAcc=40702810900000000001|BankName=Банк получателя|"
                          "BIC=044525000|CorrespAcc=0|PersAcc=%1|BarCode=%2|Sum=%3")
        .arg(SampleNumber::LEGAL_SEVERAL, document.number, QString::number(document.topay));
}

bool LegalDemo::askWholeContract()
{
    return hands().click(QStringLiteral("leContract"))
        && hands().press(Qt::Key_A, Qt::ControlModifier) && hands().press(Qt::Key_Delete)
        && hands().click(QStringLiteral("pbGetData"));
}

bool LegalDemo::tickDocuments()
{
    auto *view =
        qobject_cast<QAbstractItemView *>(CashierHands::find(QStringLiteral("tvServices")));
    if (!view)
        return false;
    const QAbstractItemModel &model = *view->model();
    int ticked = 0;
    for (int row = 0; row < model.rowCount() && ticked < documentsToTick; ++row) {
        const QModelIndex cell = model.index(row, documentColumn);
        const QVariant state = cell.data(Qt::CheckStateRole);
        const bool owed = model.index(row, toPayColumn).data().toString().toDouble() > 0;
        if (!state.isValid() || !owed || state.toInt() == Qt::Checked)
            continue;
        // One with the mouse and the next with the space bar: a cashier may use either.
        const bool done =
            ticked % 2 == 0 ? hands().tickCell(*view, cell) : hands().toggleCell(*view, cell);
        if (!done)
            return false;
        say(tr("   %1: к оплате %2")
                .arg(cell.data().toString(), model.index(row, toPayColumn).data().toString()));
        ++ticked;
    }
    return ticked == documentsToTick;
}
