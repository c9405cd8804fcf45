#include "benchrows.h"

#include "support/generatedanswers.h"

#include "individual/srpersonalaccount.h"
#include "legal/srlegalaccount.h"
#include "srbillingexchange.h"

#include <QJsonDocument>
#include <QSharedPointer>

#include <malloc.h>
#include <type_traits>

namespace {

using GeneratedAnswers::Form;

QVariant parsed(const QString &text)
{
    return QJsonDocument::fromJson(text.toUtf8()).toVariant();
}

void bothTexts(benchmark::State &state, Form form, int lines)
{
    const QString message = GeneratedAnswers::message(form, lines);
    const QString inner = GeneratedAnswers::innerText(form, lines);
    for (auto _ : state) {
        const QVariant envelope = parsed(message);
        const QVariant description = parsed(inner);
        benchmark::DoNotOptimize(envelope.isNull() || description.isNull());
    }
}

/// A start page's exchange that waits for an answer, and the answer as it arrives.
struct Waiting
{
    SrBillingExchange exchange;
    QVariantMap headers{{QStringLiteral("msgType"), SRRequest::REPLY}};
    QString message;

    Waiting(Form form, int lines)
    {
        const QString uid = exchange.compose({77, 643, 18722}, {}).uid();
        message = GeneratedAnswers::message(form, lines);
        message.replace(GeneratedAnswers::uid(), uid);
    }
};

template<class Account>
void answerToAccount(benchmark::State &state, Form form, int lines)
{
    const Waiting waiting(form, lines);
    for (auto _ : state) {
        SrBillingExchange exchange = waiting.exchange;
        const SrAnswer answer = exchange.read(waiting.headers, waiting.message);
        Account account;
        if constexpr (std::is_same_v<Account, SrLegalAccount>)
            account.setContract(QStringLiteral("ВК-000001/2026"));
        account.parseCheckList(answer.payParamList);
        if (!account.isValid())
            state.SkipWithError("the answer gave no account");
    }
}

double bytesInUse()
{
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks) + static_cast<double>(info.hblkhd);
}

void treeMemory(benchmark::State &state, Form form, int lines)
{
    GeneratedAnswers::innerText(form, lines);
    for (auto _ : state) {
        const double before = bytesInUse();
        const QVariantList tree = GeneratedAnswers::description(form, lines);
        state.counters[BenchRow::bytesCounter] = bytesInUse() - before;
        benchmark::DoNotOptimize(tree.size());
    }
}

void accountMemory(benchmark::State &state, Form form, int lines)
{
    GeneratedAnswers::innerText(form, lines);
    for (auto _ : state) {
        const double before = bytesInUse();
        SrLegalAccount account;
        account.parseCheckList(GeneratedAnswers::description(form, lines));
        state.counters[BenchRow::bytesCounter] = bytesInUse() - before;
    }
}

template<class Account>
BenchRow answerRow(const QString &id, const QString &subject, Form form)
{
    BenchRow row;
    row.id = id;
    row.subject = subject;
    row.floorText = QStringLiteral("QJsonDocument::fromJson и toVariant тех же двух текстов");
    row.sizeText = QStringLiteral("услуг");
    row.atMost = 1.25;
    row.sizes = {10, 100, 1000, 10000, 50000};
    row.measured = [form](benchmark::State &state, int size) {
        answerToAccount<Account>(state, form, size);
    };
    row.bare = [form](benchmark::State &state, int size) { bothTexts(state, form, size); };
    return row;
}

BenchRow memoryRow(const QString &id, const QString &subject, Form form)
{
    BenchRow row;
    row.id = id;
    row.subject = subject;
    row.floorText = QStringLiteral("дерево QVariant ответа");
    row.sizeText = QStringLiteral("услуг");
    row.atMost = 1.3;
    row.unit = BenchRow::Unit::Bytes;
    row.sizes = {10, 100, 1000, 10000, 50000};
    row.measured = [form](benchmark::State &state, int size) { accountMemory(state, form, size); };
    row.bare = [form](benchmark::State &state, int size) { treeMemory(state, form, size); };
    return row;
}

} // namespace

QVector<BenchRow> answerRows()
{
    return {
        answerRow<SrPersonalAccount>(QStringLiteral("answer-personal"),
                                     QStringLiteral("Ответ биллинга -> лицевой счёт"),
                                     Form::Personal),
        answerRow<SrLegalAccount>(QStringLiteral("answer-contract"),
                                  QStringLiteral("Ответ биллинга -> договор с документами"),
                                  Form::Contract),
        answerRow<SrLegalAccount>(QStringLiteral("answer-document"),
                                  QStringLiteral("Ответ биллинга -> договор с одним документом"),
                                  Form::OneDocument),
        memoryRow(QStringLiteral("memory-contract"),
                  QStringLiteral("Память договора с документами"), Form::Contract),
        memoryRow(QStringLiteral("memory-document"),
                  QStringLiteral("Память договора с одним документом"), Form::OneDocument),
    };
}
