#pragma once

#include <molvacore/frhandler.h>

#include <QVariantMap>
#include <QVector>

#include <functional>

/// A fiscal register that does as the test says and keeps what it was asked to print.
class FakeRegister : public FrHandler
{
    Q_OBJECT

public:
    struct Receipt
    {
        QVariantMap document;
        QString number;
    };

    using FrHandler::FrHandler;

    bool getFiscalStatus(QSharedPointer<FsStatus> &status) override;
    bool doReceipt(const QVariantMap &document, const QString &documentNumber, QVariantMap &result,
                   QString &error) override;

    bool answers = true;        ///< false: the status cannot be read
    bool withoutStatus = false; ///< true: says that it answers, but hands out no status
    bool oldStatus = false;     ///< true: hands out a status although none can be read
    bool ready = true;
    QString printError; ///< not empty: printing fails with it
    QString qrText = QStringLiteral("t=20261121T1000&s=150.50&fn=9999078900001234&i=7&fp=123&n=1");
    std::function<void()> whilePrinting; ///< runs inside doReceipt()

    int statusCalls = 0;
    QVector<Receipt> receipts; ///< failed ones included
};
