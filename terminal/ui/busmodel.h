#pragma once

#include <bus/busjournalentry.h>

#include <QAbstractTableModel>

#include <deque>

class BusJournal;

/// The bus journal as a table, oldest message first.
///
/// Paused, it stands still and keeps what it shows, whatever the journal adds or drops meanwhile.
class BusModel final : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Number, Time, Direction, Address, Relation, RoundTrip, Size, ColumnCount };

    /// `journal` must outlive the model.
    explicit BusModel(const BusJournal &journal, QObject *parent = nullptr);

    bool isPaused() const { return m_paused; }
    void setPaused(bool paused);

    const BusJournalEntry &entry(int row) const { return m_entries.at(std::size_t(row)); }
    /// -1 for a message that is not shown.
    int rowOf(qint64 number) const;

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    void append();
    void drop(int count);
    void update(qint64 number);
    void reload();

    const BusJournal &m_journal;
    std::deque<BusJournalEntry> m_entries;
    bool m_paused = false;
};
