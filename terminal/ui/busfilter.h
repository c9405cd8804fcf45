#pragma once

#include <QByteArray>
#include <QSortFilterProxyModel>
#include <QString>

/// The messages of a BusModel that hold a text: in the address or type and the headers whatever the
/// case, in the body as written.
class BusFilter final : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit BusFilter(QObject *parent = nullptr);

    /// Empty lets every message through.
    void setText(const QString &text);

protected:
    bool filterAcceptsRow(int row, const QModelIndex &parent) const override;

private:
    QString m_text;
    QByteArray m_bytes;
};
