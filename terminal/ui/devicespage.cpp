#include "devicespage.h"

#include "devicebox.h"
#include "rowlist.h"
#include "shownreason.h"

#include <devices/devicecontrol.h>

#include <molvacore/cardreadersettings.h>
#include <molvacore/posactivity.h>
#include <molvacore/postestamount.h>

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {

QString outcomeText(PosTestAmount::Outcome outcome)
{
    using Outcome = PosTestAmount::Outcome;
    switch (outcome) {
    case Outcome::Approve:
        return DevicesPage::tr("одобрит, карта списана");
    case Outcome::ApproveSlowly:
        return DevicesPage::tr("одобрит через %1 с, карта списана")
            .arg(PosActivity::slowTime() / 1000);
    case Outcome::Decline:
        return DevicesPage::tr("откажет, карта не списана");
    case Outcome::LostBeforeCharge:
        return DevicesPage::tr("потеряет связь, карта не списана");
    case Outcome::LostAfterCharge:
        return DevicesPage::tr("потеряет связь, карта списана");
    case Outcome::Timeout:
        return DevicesPage::tr("не дождётся карты, карта не списана");
    }
    return QString();
}

} // namespace

DevicesPage::DevicesPage(DeviceControl &control, QWidget *parent)
    : QWidget(parent),
      m_control(control),
      m_hint(new QLabel(this)),
      m_terminal(new QComboBox(this)),
      m_link(new QCheckBox(tr("С&вязь с биллингом есть"), this))
{
    m_hint->setObjectName(QStringLiteral("lDevicesHint"));
    m_hint->setWordWrap(true);
    auto *reset = new QPushButton(tr("Всё &исправно"), this);
    reset->setObjectName(QStringLiteral("pbDevicesReset"));
    auto *top = new QHBoxLayout;
    top->addWidget(m_hint, 1);
    top->addWidget(reset);

    auto *boxes = new QHBoxLayout;
    boxes->addWidget(makeRegister(), 1);
    boxes->addWidget(makeCard(), 1);
    boxes->addWidget(makeBilling(), 1);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addLayout(boxes, 3);
    layout->addWidget(makeAmounts(), 2);

    connect(reset, &QPushButton::clicked, this, [this] {
        if (!m_control.reset())
            showWarning(this, tr("Устройства"), m_control.error());
    });
    connect(&control, &DeviceControl::changed, this, &DevicesPage::follow);
    connect(PosActivity::instance(), &PosActivity::busyChanged, this, &DevicesPage::showBusy);
    follow();
    showBusy(PosActivity::busy());
}

DeviceBox *DevicesPage::makeRegister()
{
    auto *box = new DeviceBox(m_control, Device::Register, this);
    auto *once = new QCheckBox(tr("Только на &один чек"), box);
    once->setObjectName(QStringLiteral("cbRegisterOnce"));
    once->setToolTip(tr("Выбранное после этого состояние пройдёт само после следующего чека."));
    box->addControl(once);
    connect(once, &QCheckBox::toggled, box, &DeviceBox::setOnce);
    return box;
}

DeviceBox *DevicesPage::makeCard()
{
    auto *box = new DeviceBox(m_control, Device::Card, this);
    m_terminal->setObjectName(QStringLiteral("cbCardTerminal"));
    for (const int type : {int(CardReaderSettings::IngericoLib),
                           int(CardReaderSettings::SberPosLib), int(CardReaderSettings::QEftPos)})
        m_terminal->addItem(tr("Терминал вида %1").arg(type), type);
    m_terminal->addItem(tr("Терминала нет"), int(CardReaderSettings::None));
    m_terminal->setToolTip(
        tr("Вид действует со следующего списания; появился терминал или нет, страница оплаты "
           "узнаёт, когда открывается."));
    box->addControl(m_terminal);
    connect(m_terminal, QOverload<int>::of(&QComboBox::activated), this, [this](int index) {
        if (m_control.setCardTerminal(m_terminal->itemData(index).toInt()))
            return;
        const QString error = m_control.error();
        follow();
        showWarning(this, tr("Устройства"), error);
    });
    return box;
}

DeviceBox *DevicesPage::makeBilling()
{
    auto *box = new DeviceBox(m_control, Device::Billing, this);
    m_link->setObjectName(QStringLiteral("cbBillingLink"));
    m_link->setEnabled(m_control.controls(Device::Billing));
    box->addControl(m_link);
    connect(m_link, &QCheckBox::clicked, &m_control, &DeviceControl::setBillingLink);
    return box;
}

QWidget *DevicesPage::makeAmounts()
{
    auto *group =
        new QGroupBox(tr("Суммы для пробы: состояние терминала «По копейкам суммы»"), this);
    const QVector<PosTestAmount> rows = PosTestAmount::table();
    auto *table = new QTableWidget(rows.size() + 1, 3, group);
    table->setObjectName(QStringLiteral("twTestAmounts"));
    table->setHorizontalHeaderLabels(
        {tr("Сумма кончается на"), tr("Что сделает терминал"), tr("Что прочтёт кассир")});
    RowList::prepare(*table);
    table->setWordWrap(true);
    table->verticalHeader()->setMinimumSectionSize(table->fontMetrics().height() + 6);
    table->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    for (int row = 0; row < rows.size(); ++row) {
        const PosTestAmount &amount = rows.at(row);
        RowList::put(*table, row,
                     {QStringLiteral(",%1").arg(amount.digits, 2, 10, QLatin1Char('0')),
                      outcomeText(amount.outcome), amount.text});
    }
    RowList::put(*table, rows.size(),
                 {tr("любые другие"), outcomeText(PosTestAmount::Outcome::Approve), QString()});
    table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    table->horizontalHeader()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    auto *layout = new QVBoxLayout(group);
    layout->addWidget(table);
    return group;
}

void DevicesPage::follow()
{
    const QSignalBlocker blocker(m_terminal);
    m_terminal->setCurrentIndex(m_terminal->findData(m_control.cardTerminal()));
    m_link->setChecked(m_control.billingLink());
}

void DevicesPage::showBusy(bool busy)
{
    m_hint->setText(busy ? tr("<b>Карточный терминал ждёт карту…</b>")
                         : tr("Выбранное состояние действует со следующей операции, и при открытом "
                              "платеже тоже."));
}
