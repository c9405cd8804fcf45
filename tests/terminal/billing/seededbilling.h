#pragma once

#include <billing/billingdatabase.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

/// A billing file filled once for a test program and copied for every test function: filling takes
/// longer than the tests.
inline bool copySeededBilling(const QString &file)
{
    static QTemporaryDir folder;
    const QString master = folder.filePath(QStringLiteral("billing.sqlite"));
    if (!QFile::exists(master) && !BillingDatabase().open(master))
        return false;
    return QDir().mkpath(QFileInfo(file).path()) && QFile::copy(master, file);
}
