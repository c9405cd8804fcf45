#pragma once

#include "agreement.h"

#include <QByteArray>
#include <QJsonObject>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>

/// A data folder and the station processes that work on it one after another; remembers what they
/// promised before they died.
class FaultRun final
{
public:
    /// What a finished process left behind.
    struct Ending
    {
        bool killed = false;
        int code = -1;
        QByteArray output;
    };

    FaultRun();

    QString folder() const { return m_folder->path(); }
    bool isReady() const { return m_ready; }

    /// From now on the station's billing stands behind this broker (an address with its password),
    /// and its figures come from `billingFile`.
    void setBroker(const QString &address, const QString &billingFile);

    /// Runs the station to its end, with a fault point when one is named.
    Ending run(const QStringList &arguments, const QString &faultPoint = QString());
    Ending runProgram(const QString &program, const QStringList &arguments,
                      const QString &faultPoint = QString());
    /// Starts the station; end it with finish().
    std::unique_ptr<QProcess> start(const QStringList &arguments);
    Ending finish(QProcess &process, bool kill);

    /// Figures of the last process that told any.
    QJsonObject figures() const { return m_agreement.figures(); }
    /// Empty when the figures agree with each other and with every promise; else what does not.
    QString disagreement() const { return m_agreement.disagreement(); }
    int promised(const QString &what) const { return m_agreement.promised(what); }

    static QString stationProgram();

private:
    QStringList stationArguments(const QStringList &arguments) const;
    void remember(const QByteArray &output);

    std::unique_ptr<QTemporaryDir> m_folder;
    bool m_ready = false;
    QStringList m_brokerArguments;
    QProcessEnvironment m_environment = QProcessEnvironment::systemEnvironment();
    Agreement m_agreement;
};
