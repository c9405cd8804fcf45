#pragma once

#include <billing/samplecatalogue.h>
#include <bills/bill.h>

#include <algorithm>

inline BillingAccount sampleAccount(const QString &number)
{
    const QVector<BillingAccount> accounts = SampleCatalogue::accounts();
    const auto found =
        std::find_if(accounts.cbegin(), accounts.cend(),
                     [&number](const BillingAccount &account) { return account.number == number; });
    Q_ASSERT(found != accounts.cend());
    return *found;
}

inline Bill::Wish wishFor(int year, int month)
{
    Bill::Wish wish;
    wish.period = QDate(year, month, 15);
    return wish;
}

inline Bill personBill(const QString &number = SampleNumber::ORDINARY)
{
    return Bill::forPerson(sampleAccount(number), wishFor(2026, 10));
}

inline Bill firmBill(const QString &number = SampleNumber::LEGAL_ONE_DOCUMENT)
{
    const BillingAccount contract = sampleAccount(number);
    return Bill::forDocument(contract, contract.documents.constFirst(), wishFor(2026, 10));
}
