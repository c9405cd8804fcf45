#include "buspage.h"

#include "busfilter.h"
#include "busmodel.h"
#include "longwork.h"
#include "rowlist.h"
#include "shownreason.h"

#include <bus/busjournal.h>
#include <bus/messagebus.h>
#include <bus/messagetext.h>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSaveFile>
#include <QSplitter>
#include <QTableView>
#include <QVBoxLayout>

#include <memory>

namespace {

constexpr int searchDelay = 200; // ms

QPushButton *button(const QString &name, const QString &text, QWidget *parent)
{
    auto *made = new QPushButton(text, parent);
    made->setObjectName(name);
    made->setAutoDefault(false);
    return made;
}

} // namespace

BusPage::BusPage(BusJournal &journal, MessageBus &bus, QWidget *parent)
    : QWidget(parent),
      m_journal(journal),
      m_bus(bus),
      m_model(new BusModel(journal, this)),
      m_filter(new BusFilter(this)),
      m_search(new QLineEdit(this)),
      m_follow(new QCheckBox(tr("&Следить за новыми"), this)),
      m_pause(button(QStringLiteral("pbBusPause"), tr("&Пауза"), this)),
      m_clear(button(QStringLiteral("pbBusClear"), tr("О&чистить"), this)),
      m_count(new QLabel(this)),
      m_table(new QTableView(this)),
      m_text(new QPlainTextEdit(this)),
      m_partner(button(QStringLiteral("pbBusPartner"), tr("К &запросу"), this)),
      m_copy(button(QStringLiteral("pbBusCopy"), tr("&Копировать"), this)),
      m_replay(button(QStringLiteral("pbBusReplay"), tr("Повторить &ответ"), this)),
      m_save(button(QStringLiteral("pbBusSave"), tr("Сохранить соо&бщение…"), this)),
      m_saveAll(button(QStringLiteral("pbBusSaveAll"), tr("Сохранить &журнал…"), this)),
      m_askFile([this](const QString &title, const QString &proposal) {
          return QFileDialog::getSaveFileName(this, title, QDir::home().filePath(proposal));
      })
{
    m_filter->setSourceModel(m_model);
    makeLayout();
    connectAll();
    showCount();
    followNewest();
    showChosen();
}

void BusPage::makeLayout()
{
    m_search->setObjectName(QStringLiteral("leBusFilter"));
    m_search->setClearButtonEnabled(true);
    m_search->setPlaceholderText(tr("счёт, номер запроса, тип…"));
    m_follow->setObjectName(QStringLiteral("cbBusFollow"));
    m_follow->setChecked(true);
    m_count->setObjectName(QStringLiteral("lBusCount"));
    m_pause->setCheckable(true);

    m_table->setObjectName(QStringLiteral("tvBus"));
    m_table->setModel(m_filter);
    RowList::prepare(*m_table);
    m_table->verticalHeader()->setDefaultSectionSize(m_table->fontMetrics().height() + 6);
    QHeaderView *header = m_table->horizontalHeader();
    // Widths by content would measure every row at every message.
    const int digit = m_table->fontMetrics().horizontalAdvance(QLatin1Char('0'));
    const int widths[BusModel::ColumnCount] = {6, 14, 14, 28, 34, 11, 9};
    for (int column = 0; column < BusModel::ColumnCount; ++column)
        m_table->setColumnWidth(column, widths[column] * digit);
    header->setSectionResizeMode(BusModel::Relation, QHeaderView::Stretch);
    header->setMinimumSectionSize(40);

    auto *label = new QLabel(tr("&Найти:"), this);
    label->setBuddy(m_search);
    auto *bar = new QHBoxLayout;
    bar->addWidget(label);
    bar->addWidget(m_search, 1);
    bar->addWidget(m_follow);
    bar->addWidget(m_pause);
    bar->addWidget(m_clear);

    auto *splitter = new QSplitter(Qt::Vertical, this);
    splitter->addWidget(m_table);
    splitter->addWidget(makeDetails());
    splitter->setChildrenCollapsible(false);
    splitter->setStretchFactor(0, 1);
    splitter->setStretchFactor(1, 1);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(bar);
    layout->addWidget(m_count);
    layout->addWidget(splitter, 1);
}

QWidget *BusPage::makeDetails()
{
    m_text->setObjectName(QStringLiteral("teBusMessage"));
    m_text->setReadOnly(true);
    m_text->setTabChangesFocus(true);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    QFont font(QStringLiteral("monospace"));
    font.setStyleHint(QFont::Monospace);
    font.setPixelSize(m_text->fontInfo().pixelSize());
    m_text->setFont(font);

    auto *details = new QWidget(this);
    auto *buttons = new QHBoxLayout;
    for (QPushButton *each : {m_partner, m_replay, m_copy, m_save, m_saveAll})
        buttons->addWidget(each);
    buttons->addStretch();
    auto *layout = new QVBoxLayout(details);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_text, 1);
    layout->addLayout(buttons);
    return details;
}

void BusPage::connectAll()
{
    m_searchDelay.setSingleShot(true);
    m_searchDelay.setInterval(searchDelay);
    m_showDelay.setSingleShot(true);
    m_showDelay.setInterval(0);
    connect(m_search, &QLineEdit::textChanged, &m_searchDelay, QOverload<>::of(&QTimer::start));
    connect(m_search, &QLineEdit::returnPressed, this, &BusPage::applyFilter);
    connect(&m_searchDelay, &QTimer::timeout, this, &BusPage::applyFilter);
    connect(&m_showDelay, &QTimer::timeout, this, &BusPage::settle);
    connect(m_pause, &QPushButton::toggled, this, &BusPage::setPaused);
    connect(m_clear, &QPushButton::clicked, this, [this] {
        m_pause->setChecked(false);
        m_journal.clear();
    });
    connect(m_follow, &QCheckBox::toggled, this, &BusPage::followNewest);
    connect(m_partner, &QPushButton::clicked, this, &BusPage::goToPartner);
    connect(m_copy, &QPushButton::clicked, this, &BusPage::copyChosen);
    connect(m_replay, &QPushButton::clicked, this, &BusPage::replayChosen);
    connect(m_save, &QPushButton::clicked, this, &BusPage::saveChosen);
    connect(m_saveAll, &QPushButton::clicked, this, &BusPage::saveAll);
    connect(m_table->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &BusPage::showChosen);
    // Whoever looks at an older message is not torn away from it; see eventFilter() for the keys.
    m_table->installEventFilter(this);
    connect(m_table, &QTableView::clicked, this, [this](const QModelIndex &index) {
        if (index.row() + 1 < m_filter->rowCount())
            m_follow->setChecked(false);
    });
    const auto later = [this] { m_showDelay.start(); };
    connect(&m_journal, &BusJournal::appended, this, [this, later] {
        showCount();
        later();
    });
    connect(&m_journal, &BusJournal::dropped, this, later);
    connect(&m_journal, &BusJournal::changed, this, [this, later](qint64 number) {
        if (number == m_shown)
            m_shown = 0;
        later();
    });

    auto *copy = new QAction(tr("Копировать"), this);
    copy->setShortcut(QKeySequence::Copy);
    copy->setShortcutContext(Qt::WidgetShortcut);
    m_table->addAction(copy);
    connect(copy, &QAction::triggered, this, &BusPage::copyChosen);
}

bool BusPage::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_table && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Up || key == Qt::Key_PageUp || key == Qt::Key_Home)
            m_follow->setChecked(false);
    }
    return QWidget::eventFilter(watched, event);
}

void BusPage::applyFilter()
{
    m_searchDelay.stop();
    m_filter->setText(m_search->text());
    followNewest();
    showChosen();
    showCount();
}

void BusPage::setPaused(bool paused)
{
    m_pause->setText(paused ? tr("&Продолжить") : tr("&Пауза"));
    const BusJournalEntry *entry = chosen();
    const qint64 number = entry ? entry->number : 0;
    m_model->setPaused(paused);
    if (!paused) {
        choose(m_model->rowOf(number));
        followNewest();
    }
    m_shown = 0;
    showChosen();
    showCount();
}

void BusPage::settle()
{
    m_showDelay.stop();
    followNewest();
    showChosen();
    showCount();
}

void BusPage::followNewest()
{
    if (m_model->isPaused() || !m_follow->isChecked() || m_filter->rowCount() == 0)
        return;
    m_table->setCurrentIndex(m_filter->index(m_filter->rowCount() - 1, 0));
    m_table->scrollToBottom();
}

const BusJournalEntry *BusPage::chosen() const
{
    const QModelIndex index = m_filter->mapToSource(m_table->currentIndex());
    return index.isValid() ? &m_model->entry(index.row()) : nullptr;
}

void BusPage::choose(int sourceRow)
{
    const QModelIndex index =
        sourceRow < 0 ? QModelIndex() : m_filter->mapFromSource(m_model->index(sourceRow, 0));
    if (!index.isValid())
        return;
    m_table->setCurrentIndex(index);
    m_table->scrollTo(index);
}

void BusPage::showChosen()
{
    const BusJournalEntry *entry = chosen();
    const bool arrived = entry && entry->message.direction == BusMessage::Direction::Incoming;
    m_copy->setEnabled(entry);
    m_save->setEnabled(entry);
    m_replay->setEnabled(arrived);
    m_partner->setText(arrived ? tr("К &запросу") : tr("К о&твету"));
    m_partner->setEnabled(entry && m_model->rowOf(entry->partner) >= 0);
    if (!entry) {
        m_shown = 0;
        m_text->clear();
    } else if (entry->number != m_shown) {
        m_shown = entry->number;
        m_text->setPlainText(MessageText::shown(*entry));
    }
}

void BusPage::showCount()
{
    const qint64 newest = m_journal.size() > 0 ? m_journal.at(m_journal.size() - 1).number : 0;
    const int rows = m_model->rowCount();
    const qint64 waiting = newest - (rows > 0 ? m_model->entry(rows - 1).number : 0);
    QString text =
        tr("Показано %1 из %2")
            .arg(QString::number(m_filter->rowCount()), QString::number(m_model->rowCount()));
    if (m_model->isPaused())
        text += tr(". Список остановлен")
            + (waiting > 0 ? tr(", за это время пришло: %1").arg(waiting) : QString());
    m_count->setText(text);
    m_saveAll->setEnabled(m_model->rowCount() > 0);
}

void BusPage::goToPartner()
{
    const BusJournalEntry *entry = chosen();
    if (!entry)
        return;
    const int row = m_model->rowOf(entry->partner);
    if (row < 0)
        return;
    m_follow->setChecked(false);
    if (!m_filter->mapFromSource(m_model->index(row, 0)).isValid()) {
        m_search->clear();
        applyFilter();
    }
    choose(row);
}

void BusPage::copyChosen()
{
    const BusJournalEntry *entry = chosen();
    if (!entry)
        return;
    const auto text = std::make_shared<QString>();
    const bool made = LongWork::run(
        this, tr("Копировать сообщение"),
        tr("Сообщение № %1 готовится для буфера обмена.").arg(entry->number),
        [text, kept = *entry](const LongWork::Step &) {
            *text = MessageText::whole(kept);
            return true;
        },
        LongWork::Stopping::LeavesBehind);
    if (made)
        QApplication::clipboard()->setText(*text);
}

void BusPage::replayChosen()
{
    // By value: what the answer causes may drop it from the journal.
    const BusJournalEntry *entry = chosen();
    if (entry)
        m_bus.replay(BusMessage(entry->message));
}

void BusPage::saveChosen()
{
    // By value: what arrives while the person looks for a folder may drop it from the journal.
    if (const BusJournalEntry *entry = chosen())
        save(tr("Сохранить сообщение"), tr("сообщение-%1.json").arg(entry->number), {*entry});
}

void BusPage::saveAll()
{
    QVector<BusJournalEntry> entries;
    for (int row = 0; row < m_model->rowCount(); ++row)
        entries.append(m_model->entry(row));
    save(tr("Сохранить журнал шины"), tr("шина.jsonl"), entries);
}

void BusPage::save(const QString &title, const QString &proposal,
                   const QVector<BusJournalEntry> &entries)
{
    const QString name = m_askFile(title, proposal);
    if (name.isEmpty())
        return;
    QString error;
    const auto write = [&](const LongWork::Step &step) {
        // What stood under the name stays unless commit() puts the whole file in its place.
        QSaveFile file(name);
        bool good = file.open(QIODevice::WriteOnly);
        for (int i = 0; good && i < entries.size(); ++i) {
            if (!step(i, entries.size()))
                return false;
            const QByteArray line = MessageText::jsonLine(entries.at(i)) + '\n';
            good = file.write(line) == line.size();
        }
        if (good && !step(entries.size(), entries.size()))
            return false;
        good = good && file.commit();
        if (!good)
            error = file.errorString();
        return good;
    };
    const bool written =
        LongWork::run(this, title, tr("Пишется файл «%1».").arg(QFileInfo(name).fileName()), write);
    if (!written && !error.isEmpty())
        showWarning(this, title,
                    tr("Файл «%1» записать не удалось: %2. Выберите другую папку.")
                        .arg(QDir::toNativeSeparators(name), error));
}
