#include "demorun.h"

#include "buspacks.h"
#include "democount.h"

#include <app/terminalcontext.h>
#include <fiscal/receipttext.h>
#include <ui/mainwindow.h>
#include <ui/receiptpicture.h>

#include <basixcore/fixnumber.h>

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QDoubleSpinBox>
#include <QEventLoop>
#include <QInputDialog>
#include <QJsonDocument>
#include <QLocale>
#include <QMessageBox>
#include <QProgressBar>
#include <QSaveFile>
#include <QTextBrowser>
#include <QTimer>

#include <algorithm>
#include <cstdio>

namespace {

/// A broker may be starting together with the demo.
constexpr int BUS_PATIENCE_MS = 30000;

bool wizardButtonEnabled(QWizard::WizardButton which)
{
    const auto *wizard = qobject_cast<QWizard *>(CashierHands::front());
    return wizard && wizard->button(which)->isEnabled();
}

} // namespace

DemoRun::DemoRun(TerminalContext &context, MainWindow &window, const Options &options)
    : m_context(context), m_window(window), m_options(options), m_runner(options.pause)
{
    connect(&m_runner, &StepRunner::stepStarted, this, [this](const QString &text) {
        say(QStringLiteral("%1. %2").arg(QString::number(++m_steps), text));
    });
}

DemoRun::~DemoRun() = default;

bool DemoRun::run()
{
    const auto &providers = m_context.providers();
    const auto provider =
        std::find_if(providers.cbegin(), providers.cend(),
                     [this](const Provider &each) { return each.id() == providerId(); });
    if (provider == providers.cend()) {
        say(tr("Поставщика %1 в базе рабочего места нет.").arg(providerId()));
        return false;
    }
    const QString reason = obstacle();
    if (!reason.isEmpty()) {
        say(tr("%1 Проведите показ в новой папке данных.").arg(reason));
        return false;
    }
    if (!m_options.outFolder.isEmpty() && !QDir().mkpath(m_options.outFolder)) {
        say(tr("Папку «%1» создать не удалось.").arg(m_options.outFolder));
        return false;
    }
    if (!waitForBus()) {
        say(tr("Показ не начат. %1").arg(m_context.bus().stateText()));
        return false;
    }
    removeOldPictures();
    say(title());
    // The window has just been shown and takes its sizes first.
    QApplication::processEvents();
    if (!savePicture(QStringLiteral("window"))) {
        say(tr("Картинку в папку «%1» записать не удалось.").arg(m_options.outFolder));
        return false;
    }
    const DemoCount before = DemoCount::now(m_context);
    const qint64 busMoment = BusPacks::moment(m_context.busJournal());
    planAccount();
    planPayment();
    planFinish();

    m_runner.start();
    const PluginHost::Outcome outcome = m_window.startPayment(*provider);
    if (!outcome.accepted)
        m_runner.fail(outcome.started ? tr("Мастер платежа закрылся раньше времени.")
                                      : tr("Модуль не открыл мастер платежа."));
    if (!m_runner.isFinished()) {
        QEventLoop loop;
        connect(&m_runner, &StepRunner::finished, &loop, &QEventLoop::quit);
        loop.exec();
    }

    const DemoVerdict verdict(m_context, DemoCount::now(m_context).since(before), busMoment);
    m_window.showJournal();
    // The page that was just shown takes its sizes first.
    QApplication::processEvents();
    bool written = savePicture(QStringLiteral("journal")) && showBillInScanner();
    if (verdict.fiscalNumber() > 0) {
        tellReceipt(verdict);
        written = writeFiles(verdict) && written;
    }
    if (m_runner.failed())
        say(tr("Показ остановился: %1").arg(m_runner.failure()));
    for (const QString &disagreement : verdict.disagreements())
        say(tr("Не сошлось: %1").arg(disagreement));
    const bool ok = !m_runner.failed() && verdict.agrees() && written;
    say(ok ? tr("Всё сошлось: %1")
                 .arg(QString::fromUtf8(
                     QJsonDocument(verdict.summary()).toJson(QJsonDocument::Compact)))
           : tr("Показ не удался."));
    return ok;
}

bool DemoRun::waitForBus()
{
    if (m_context.bus().connected())
        return true;
    QEventLoop loop;
    connect(&m_context.bus(), &MessageBus::stateChanged, &loop, [&loop](bool connected) {
        if (connected)
            loop.quit();
    });
    QTimer::singleShot(BUS_PATIENCE_MS, &loop, &QEventLoop::quit);
    loop.exec();
    return m_context.bus().connected();
}

void DemoRun::step(const QString &text, const std::function<bool()> &ready,
                   const std::function<bool()> &act)
{
    StepRunner::Step planned;
    planned.title = text;
    planned.ready = ready;
    planned.act = [this, act, text] {
        if (!act())
            m_runner.fail(tr("Шаг «%1» не вышел: %2").arg(text, m_hands.error()));
    };
    m_runner.add(planned);
}

void DemoRun::picture(const QString &name)
{
    StepRunner::Step planned;
    planned.ready = [] { return CashierHands::front() != nullptr; };
    planned.expectsMessage = true;
    planned.act = [this, name] {
        if (!savePicture(name))
            m_runner.fail(tr("Картинку «%1» записать не удалось.").arg(name));
    };
    m_runner.add(planned);
}

void DemoRun::clickNext()
{
    step(
        tr("«Далее»"), [] { return wizardButtonEnabled(QWizard::NextButton); },
        [this] { return m_hands.clickWizard(QWizard::NextButton); });
}

std::function<bool()> DemoRun::pageWith(const QString &objectName)
{
    return [objectName] {
        const QWidget *widget = qobject_cast<QWizard *>(CashierHands::front())
            ? CashierHands::find(objectName)
            : nullptr;
        return widget && widget->isEnabled();
    };
}

std::function<bool()> DemoRun::accountShown()
{
    return [] {
        const auto *summary =
            qobject_cast<QTextBrowser *>(CashierHands::find(QStringLiteral("tbSummary")));
        const bool waiting = CashierHands::find(QStringLiteral("progressBar")) != nullptr;
        return summary && !waiting && !summary->toPlainText().isEmpty()
            && wizardButtonEnabled(QWizard::NextButton);
    };
}

void DemoRun::planPayment()
{
    step(tr("Страница оплаты: сумма к оплате"), pageWith(QStringLiteral("dsbCash")), [this] {
        const auto *cash =
            qobject_cast<QDoubleSpinBox *>(CashierHands::find(QStringLiteral("dsbCash")));
        if (!cash)
            return false;
        // A round part of the amount: its last two digits are what the card emulator's table
        // approves.
        const basix::FixNumber amount(100, cash->value());
        const qint64 part = std::max<qint64>(100, amount.value() / 2 / 10000 * 10000);
        QLocale typed = cash->locale();
        typed.setNumberOptions(QLocale::OmitGroupSeparator);
        m_cardPart = typed.toString(double(part) / 100, 'f', 2);
        say(tr("   к оплате %1, из них картой %2").arg(amount.toString(), m_cardPart));
        return true;
    });
    picture(QStringLiteral("payment"));
    step(tr("«Оплата картой»"), pageWith(QStringLiteral("pbCard")),
         [this] { return m_hands.click(QStringLiteral("pbCard")); });
    step(
        tr("Сумма по карте"),
        [] { return qobject_cast<QInputDialog *>(CashierHands::front()) != nullptr; },
        [this] { return payPartByCard(); });
    step(
        tr("Карта принята, остаток наличными"),
        [] {
            const QWidget *card = CashierHands::find(QStringLiteral("dsbCard"));
            return card && !card->isEnabled() && wizardButtonEnabled(QWizard::FinishButton);
        },
        [this] { return savePicture(QStringLiteral("card-paid")); });
}

void DemoRun::planFinish()
{
    step(
        tr("«Завершить»: чек, сохранение, отправка"),
        [] { return wizardButtonEnabled(QWizard::FinishButton); },
        [this] { return m_hands.clickWizard(QWizard::FinishButton); });

    StepRunner::Step sent;
    sent.title = tr("Сообщение об отправке");
    sent.expectsMessage = true;
    sent.ready = [] { return qobject_cast<QMessageBox *>(CashierHands::front()) != nullptr; };
    sent.act = [this] {
        if (!confirmSent())
            m_runner.fail(m_hands.error());
    };
    m_runner.add(sent);

    step(
        tr("Мастер закрылся"), [] { return QApplication::activeModalWidget() == nullptr; },
        [] { return true; });
    step(
        tr("Биллинг подтвердил платёж"),
        [this] {
            const PaymentRecord pack = m_context.payments().records(PaymentFilter(), 0, 1).value(0);
            return pack.state == PackState::Acknowledged;
        },
        [] { return true; });
}

bool DemoRun::payPartByCard()
{
    return savePicture(QStringLiteral("card-amount")) && m_hands.enterAmount(m_cardPart);
}

bool DemoRun::confirmSent()
{
    const auto *box = qobject_cast<QMessageBox *>(CashierHands::front());
    const QString text = box->text();
    if (!savePicture(QStringLiteral("sent")))
        return false;
    if (box->icon() == QMessageBox::Critical) {
        m_runner.fail(tr("Вместо подтверждения показана ошибка: %1").arg(text));
        return true;
    }
    say(tr("   «%1»").arg(text));
    return m_hands.confirmMessage();
}

bool DemoRun::showBillInScanner()
{
    m_window.showBills();
    // The first account has just been paid; the next one still owes something.
    m_window.findChild<QComboBox *>(QStringLiteral("cbBillAccount"))->setCurrentIndex(1);
    QApplication::processEvents();
    if (!savePicture(QStringLiteral("bill")))
        return false;
    if (!m_hands.click(m_window.findChild<QWidget *>(QStringLiteral("pbBillSend")))) {
        say(m_hands.error());
        return false;
    }
    QApplication::processEvents();
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto scanner = std::find_if(windows.cbegin(), windows.cend(), [](const QWidget *window) {
        return window->isVisible() && window->objectName() == QLatin1String("scannerWindow");
    });
    return scanner != windows.cend() && savePicture(QStringLiteral("scanner"), *scanner);
}

void DemoRun::removeOldPictures()
{
    // Pages of an earlier demo among the new ones would tell a story that never happened.
    if (m_options.outFolder.isEmpty())
        return;
    QDir folder(m_options.outFolder);
    const QStringList files = folder.entryList({QStringLiteral("[0-9][0-9]-*.png")}, QDir::Files);
    for (const QString &file : files)
        folder.remove(file);
}

bool DemoRun::savePicture(const QString &name, QWidget *window)
{
    if (m_options.outFolder.isEmpty())
        return true;
    QWidget *modal = QApplication::activeModalWidget();
    QWidget *front = window ? window : modal ? modal : &m_window;
    const QString file =
        QStringLiteral("%1-%2.png").arg(++m_pictures, 2, 10, QLatin1Char('0')).arg(name);
    return front->grab().save(QDir(m_options.outFolder).filePath(file));
}

void DemoRun::say(const QString &text)
{
    std::fprintf(stdout, "%s\n", qUtf8Printable(text));
    std::fflush(stdout);
}

void DemoRun::tellReceipt(const DemoVerdict &verdict)
{
    const auto record = m_context.fiscalJournal().record(verdict.fiscalNumber());
    if (record)
        say(ReceiptText(record->document, record->result.value(QStringLiteral("data")).toMap())
                .text());
}

bool DemoRun::writeFiles(const DemoVerdict &verdict)
{
    if (m_options.outFolder.isEmpty())
        return true;
    const auto record = m_context.fiscalJournal().record(verdict.fiscalNumber());
    const auto pack = m_context.payments().pack(verdict.packId());
    if (!record || !pack) {
        say(tr("Чека или пачки этого платежа в хранилищах нет."));
        return false;
    }
    const ReceiptText receipt(record->document,
                              record->result.value(QStringLiteral("data")).toMap());
    const QString picture = QDir(m_options.outFolder).filePath(QStringLiteral("receipt.png"));
    const bool drawn = ReceiptPicture::draw(receipt.text(), record->qr).save(picture);
    return drawn && writeFile(QStringLiteral("receipt.txt"), receipt.text().toUtf8())
        && writeFile(QStringLiteral("pack.json"), QJsonDocument::fromVariant(*pack).toJson())
        && writeFile(QStringLiteral("summary.json"), QJsonDocument(verdict.summary()).toJson());
}

bool DemoRun::writeFile(const QString &name, const QByteArray &content)
{
    QSaveFile file(QDir(m_options.outFolder).filePath(name));
    if (file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.commit())
        return true;
    say(tr("Файл «%1» записать не удалось: %2").arg(file.fileName(), file.errorString()));
    return false;
}
