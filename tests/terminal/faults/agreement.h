#pragma once

#include <QByteArray>
#include <QHash>
#include <QJsonObject>
#include <QSet>
#include <QString>

/// Whether all who know of payments tell the same: what was promised while they were made, and what
/// charges, receipts, packs and billing hold at the end.
class Agreement final
{
public:
    /// "charged RRN", "printed NUMBER", "saved ID": true from now on, whatever happens.
    void promise(const QByteArray &line);
    int promised(const QString &what) const { return m_promises.value(what).size(); }

    void setFigures(const QJsonObject &figures) { m_figures = figures; }
    QJsonObject figures() const { return m_figures; }

    /// Empty when the figures agree with each other and with every promise; else what does not.
    QString disagreement() const;

private:
    QHash<QString, QSet<QString>> m_promises;
    QJsonObject m_figures;
};
