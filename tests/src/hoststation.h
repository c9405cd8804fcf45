#pragma once

#include <basixcore/currency.h>
#include <molvacore/onlinekkminfo.h>
#include <molvacore/provider.h>

#include <QSharedPointer>
#include <QTemporaryDir>

/// A host with a database of its own in a temporary folder, with a logged-in cashier and a
/// register. One at a time.
class HostStation
{
public:
    HostStation();
    ~HostStation();
    HostStation(const HostStation &) = delete;
    HostStation &operator=(const HostStation &) = delete;

    static QString cashier() { return QStringLiteral("Кассирова Анна Львовна"); }
    static QString registerInn() { return QStringLiteral("7707654321"); }
    static QString registerNumber() { return QStringLiteral("0001234567012345"); }

    static basix::Currency roubles();
    /// A profile in which everything is filled; agent sign "payment agent".
    static OnlineKkmInfo profile();
    /// A provider with the parameters "account", "period", "paydata", "qrcode", "numdoc" and a
    /// foreign one.
    static QSharedPointer<Provider> provider();

private:
    QTemporaryDir m_dir;
};
