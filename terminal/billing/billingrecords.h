#pragma once

#include <billing/sampleaccounts.h>

#include <QString>
#include <QVector>
#include <QtGlobal>

/// Rows of the billing database. Money is whole kopecks.

struct BillingServiceLine
{
    qint64 serviceId = 0;
    QString name;
    qint64 charge = 0;
    qint64 topay = 0;
};

struct BillingMeter
{
    qint64 meterId = 0;
    QString name;
    qint64 lastValue = 0;
};

struct BillingDocument
{
    qint64 documentId = 0;
    QString number;
    qint64 charge = 0;
    qint64 topay = 0;
    QVector<BillingServiceLine> services;
};

struct BillingAccount
{
    /// Where a legal payer's documents stand in the answer.
    enum class DocumentsForm {
        ParamList = 0,  ///< under "paramList" of the descriptor "documents"
        UnderValue = 1, ///< under "paramList" of that descriptor's "value"
        SingleWhenAsked =
            2 ///< as ParamList, but a request that names a document is answered without "documents"
    };

    SampleAccount::Payer payer = SampleAccount::Payer::Individual;
    QString number;
    QString fio;
    QString address;
    QString inn;
    qint64 charge = 0;
    qint64 debt = 0;
    /// Offered on top of what is distributed; negative for money that billing holds back.
    qint64 remainder = 0;
    qint64 tax = 0;
    AnswerBehaviour behaviour = AnswerBehaviour::Ordinary;
    DocumentsForm documentsForm = DocumentsForm::ParamList;
    /// The cashier may change what is paid for a service.
    bool distributedEditable = true;
    QVector<BillingServiceLine> services;
    QVector<BillingMeter> meters;
    QVector<BillingDocument> documents;
};

/// What billing tells about one field of a record besides its value.
struct BillingField
{
    QString name;
    QString title;
    QString type;
    QString mask;
    QString regexp;
    bool editable = false;
    bool visible = true;
};

/// One payment of a taken pack.
struct TakenPayment
{
    QString packId;
    qint64 providerId = 0;
    QString account;
    QString document;
    qint64 sum = 0;
    /// False for money that no account or document could be found for; it is kept and waits for a
    /// person.
    bool allocated = false;
};
