#pragma once

#include <molvacore/fsstatus.h>
#include <molvacore/molvacore_global.h>

#include <QObject>
#include <QSharedPointer>
#include <QVariantMap>

/// The host's access to the fiscal register. The host implements it; its calls return when the
/// register has answered.
class MOLVACORE_EXPORT FrHandler : public QObject
{
    Q_OBJECT

public:
    explicit FrHandler(QObject *parent = nullptr);
    ~FrHandler() override;

    /// True fills `status`; false says that the register does not answer and leaves `status` alone.
    virtual bool getFiscalStatus(QSharedPointer<FsStatus> &status) = 0;
    /// Registers and prints `document` (the form that Check::toDocument() makes) under the caller's
    /// `documentNumber`.
    ///
    /// True fills `result`: "fiscprops" (list of { "tag", "value" } maps of the document as
    /// registered; tag 1196 is the receipt's QR text), "data" (map: fiscal storage number, document
    /// number, fiscal sign, shift, time) and "document" (the document that was printed). False
    /// fills `error` with what the cashier is to know and do.
    virtual bool doReceipt(const QVariantMap &document, const QString &documentNumber,
                           QVariantMap &result, QString &error) = 0;
};
