#pragma once

#include <molvacore/molvacore_global.h>

#include <basixcore/fixnumber.h>

#include <QObject>
#include <QString>
#include <QStringList>

/// A card terminal. The calls return when the terminal has answered or given up.
class MOLVACORE_EXPORT PosHandler : public QObject
{
    Q_OBJECT

public:
    explicit PosHandler(QObject *parent = nullptr);
    ~PosHandler() override;

    /// To be called before pay(). False fills `error`.
    virtual bool init(QString &error) = 0;
    /// Charges the card. True fills `slip` with the lines to print; false fills `error`, which says
    /// so when it is not known whether the card was charged.
    virtual bool pay(const basix::FixNumber &amount, QString &error, QStringList &slip) = 0;
};
