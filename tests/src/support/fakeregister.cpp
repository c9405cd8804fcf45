#include "fakeregister.h"

#include <molvacore/fsstatus.h>

bool FakeRegister::getFiscalStatus(QSharedPointer<FsStatus> &status)
{
    ++statusCalls;
    if (oldStatus || (answers && !withoutStatus))
        status = QSharedPointer<FsStatus>::create(ready);
    return answers;
}

bool FakeRegister::doReceipt(const QVariantMap &document, const QString &documentNumber,
                             QVariantMap &result, QString &error)
{
    receipts.append({document, documentNumber});
    if (whilePrinting)
        whilePrinting();
    if (!printError.isEmpty()) {
        error = printError;
        return false;
    }
    const QVariantMap qr{{QStringLiteral("tag"), 1196}, {QStringLiteral("value"), qrText}};
    result = {{QStringLiteral("fiscprops"), QVariantList{qr}},
              {QStringLiteral("data"), QVariantMap{{QStringLiteral("number"), 7}}},
              {QStringLiteral("document"), document}};
    return true;
}
