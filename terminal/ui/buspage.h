#pragma once

#include <QTimer>
#include <QVector>
#include <QWidget>

#include <functional>

class BusFilter;
class BusJournal;
class BusModel;
class MessageBus;
class QCheckBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QTableView;
struct BusJournalEntry;

/// What crosses the bus, live: the list of messages and the chosen one in full; messages can be
/// searched, copied, saved, and an answer delivered once more.
class BusPage final : public QWidget
{
    Q_OBJECT

public:
    /// Asks the person for a file to write; empty when they change their mind.
    using AskFile = std::function<QString(const QString &title, const QString &proposal)>;

    /// `journal`, which follows `bus`, and `bus` must outlive the page.
    BusPage(BusJournal &journal, MessageBus &bus, QWidget *parent = nullptr);

    /// Replaces the file dialog.
    void setAskFile(AskFile askFile) { m_askFile = std::move(askFile); }

    /// Shows at once what a burst of messages has left for later.
    void settle();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void makeLayout();
    QWidget *makeDetails();
    void connectAll();
    void applyFilter();
    void setPaused(bool paused);
    void followNewest();
    void showChosen();
    void showCount();
    void goToPartner();
    void copyChosen();
    void replayChosen();
    void saveChosen();
    void saveAll();
    void save(const QString &title, const QString &proposal,
              const QVector<BusJournalEntry> &entries);
    const BusJournalEntry *chosen() const;
    void choose(int sourceRow);

    BusJournal &m_journal;
    MessageBus &m_bus;
    BusModel *m_model;
    BusFilter *m_filter;
    QLineEdit *m_search;
    QCheckBox *m_follow;
    QPushButton *m_pause;
    QPushButton *m_clear;
    QLabel *m_count;
    QTableView *m_table;
    QPlainTextEdit *m_text;
    QPushButton *m_partner;
    QPushButton *m_copy;
    QPushButton *m_replay;
    QPushButton *m_save;
    QPushButton *m_saveAll;
    AskFile m_askFile;
    /// Typing does not search the whole journal at every key.
    QTimer m_searchDelay;
    /// A burst of messages shows its last one only.
    QTimer m_showDelay;
    qint64 m_shown = 0;
};
