#include "samplebill.h"

#include "billwriter.h"

#include <billing/samplecatalogue.h>

#include <QDate>
#include <QStringList>

#include <algorithm>
#include <optional>

namespace {

std::optional<BillingDocument> chosen(const BillingAccount &contract, const QString &number)
{
    const auto found =
        std::find_if(contract.documents.cbegin(), contract.documents.cend(),
                     [&number](const BillingDocument &candidate) {
                         return number.isEmpty() ? candidate.topay > 0 : candidate.number == number;
                     });
    return found == contract.documents.cend() ? std::nullopt
                                              : std::optional<BillingDocument>(*found);
}

} // namespace

bool writeSampleBill(const QString &account, CodeEncoding encoding, const QString &fileName,
                     QString *error, const QString &document)
{
    const QVector<BillingAccount> samples = SampleCatalogue::accounts();
    const auto found =
        std::find_if(samples.cbegin(), samples.cend(),
                     [&account](const BillingAccount &sample) { return sample.number == account; });
    if (found == samples.cend()) {
        QStringList known;
        for (const BillingAccount &sample : samples)
            known.append(sample.number);
        *error = QStringLiteral("Образца со счётом или договором «%1» нет. Есть: %2.")
                     .arg(account, known.join(QStringLiteral(", ")));
        return false;
    }
    Bill::Wish wish;
    wish.period = QDate::currentDate().addMonths(-1);
    Bill bill;
    if (found->payer == SampleAccount::Payer::Individual) {
        bill = Bill::forPerson(*found, wish);
    } else if (const auto sample = chosen(*found, document)) {
        bill = Bill::forDocument(*found, *sample, wish);
    } else {
        *error = QStringLiteral("В договоре «%1» нет документа «%2».").arg(account, document);
        return false;
    }
    const PaymentCode code = bill.code(encoding);
    const QStringList problems = code.problems(encoding);
    if (!problems.isEmpty()) {
        *error = problems.join(QLatin1Char('\n'));
        return false;
    }
    return BillWriter(bill, code.toBytes(encoding)).save(fileName, error);
}
