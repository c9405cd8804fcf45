#include "busfilter.h"

#include "busmodel.h"

BusFilter::BusFilter(QObject *parent) : QSortFilterProxyModel(parent) {}

void BusFilter::setText(const QString &text)
{
    m_text = text.trimmed();
    m_bytes = m_text.toUtf8();
    invalidateFilter();
}

bool BusFilter::filterAcceptsRow(int row, const QModelIndex &) const
{
    const auto *model = qobject_cast<const BusModel *>(sourceModel());
    if (!model || m_text.isEmpty())
        return true;
    const BusMessage &message = model->entry(row).message;
    if (message.address.contains(m_text, Qt::CaseInsensitive)
        || message.body.bytes().contains(m_bytes))
        return true;
    for (auto it = message.headers.cbegin(); it != message.headers.cend(); ++it) {
        if (it.value().toString().contains(m_text, Qt::CaseInsensitive))
            return true;
    }
    return false;
}
