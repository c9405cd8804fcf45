#include "scannerpage.h"

#include "longwork.h"
#include "scannerresult.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QUrl>
#include <QVBoxLayout>

#include <algorithm>
#include <memory>

namespace {

constexpr Qt::Key triggerKey = Qt::Key_F9;
constexpr int burstPause = 400;        // milliseconds
constexpr int shownOfAnotherCode = 16; // letters

/// Bytes in UTF-8: the biggest code holds so many digits, or 2953 bytes, which are Russian letters
/// of two bytes each in UTF-8 at most.
constexpr int longestText = 7089;

bool tooLong(const QString &text)
{
    return text.size() > longestText || text.toUtf8().size() > longestText;
}

QString tooLongText()
{
    return ScannerPage::tr("Текст длиннее, чем вмещает код, и не взят. Скопируйте и вставьте "
                           "только текст кода.");
}

QVector<QImage> grabScreens()
{
    QVector<QImage> pictures;
    const QList<QScreen *> screens = QGuiApplication::screens();
    for (QScreen *screen : screens)
        pictures.append(screen->grabWindow(0).toImage());
    return pictures;
}

} // namespace

ScannerPage::ScannerPage(QWidget *parent)
    : QWidget(parent),
      m_grabScreens(grabScreens),
      m_file(new QPushButton(tr("Из &файла…"), this)),
      m_clipboard(new QPushButton(tr("Из &буфера обмена"), this)),
      m_screen(new QPushButton(tr("С &экрана"), this)),
      m_which(new QComboBox(this)),
      m_result(new ScannerResult(this)),
      m_text(new QPlainTextEdit(this)),
      m_suffix(new QComboBox(this)),
      m_pause(new QSpinBox(this)),
      m_burst(new QComboBox(this)),
      m_mishap(new QComboBox(this)),
      m_delay(new QSpinBox(this)),
      m_type(new QPushButton(tr("&Напечатать в окно"), this)),
      m_stop(new QPushButton(tr("О&становить"), this)),
      m_progress(new QProgressBar(this)),
      m_status(new QLabel(this))
{
    m_file->setObjectName(QStringLiteral("pbScannerFile"));
    m_clipboard->setObjectName(QStringLiteral("pbScannerClipboard"));
    m_screen->setObjectName(QStringLiteral("pbScannerScreen"));
    m_which->setObjectName(QStringLiteral("cbScannerCode"));
    m_text->setObjectName(QStringLiteral("pteScannerText"));
    m_suffix->setObjectName(QStringLiteral("cbScannerSuffix"));
    m_pause->setObjectName(QStringLiteral("sbScannerPause"));
    m_burst->setObjectName(QStringLiteral("cbScannerBurst"));
    m_mishap->setObjectName(QStringLiteral("cbScannerLayout"));
    m_delay->setObjectName(QStringLiteral("sbScannerDelay"));
    m_type->setObjectName(QStringLiteral("pbScannerType"));
    m_stop->setObjectName(QStringLiteral("pbScannerStop"));
    m_progress->setObjectName(QStringLiteral("prScanner"));
    m_status->setObjectName(QStringLiteral("lScannerStatus"));

    m_suffix->addItem(tr("Enter"), int(KeyboardScanner::Suffix::Enter));
    m_suffix->addItem(tr("ничего"), int(KeyboardScanner::Suffix::None));
    m_suffix->addItem(tr("Tab"), int(KeyboardScanner::Suffix::Tab));
    m_suffix->addItem(tr("Enter дважды"), int(KeyboardScanner::Suffix::EnterTwice));
    m_pause->setRange(0, KeyboardScanner::MAXIMUM_PAUSE);
    m_pause->setValue(KeyboardScanner::Options().keyPause);
    m_pause->setSuffix(tr(" мс"));
    m_burst->addItem(tr("без остановки"), 0);
    m_burst->addItem(tr("с остановкой посередине"), burstPause);
    m_mishap->addItem(tr("верная"), int(KeyboardLayout::Mishap::None));
    m_mishap->addItem(tr("русская вместо латинской"), int(KeyboardLayout::Mishap::RussianLayout));
    m_mishap->addItem(tr("русские буквы теряются"), int(KeyboardLayout::Mishap::DroppedCyrillic));
    m_delay->setRange(1, 30);
    m_delay->setValue(5);
    m_delay->setSuffix(tr(" с"));
    m_text->setTabChangesFocus(true);
    m_text->setPlaceholderText(tr("Текст кода; его можно вписать или исправить."));
    m_text->setMaximumHeight(7 * fontMetrics().height());
    m_status->setTextFormat(Qt::PlainText);
    m_status->setWordWrap(true);
    // What the other codes are called must not make the window wider.
    m_which->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_which->setMinimumContentsLength(shownOfAnotherCode);
    m_which->hide();
    m_progress->setTextVisible(false);
    m_progress->hide();
    m_result->setNote(tr("Прочитайте код: из файла, из буфера обмена или прямо с экрана."));
    makeLayout();

    m_countdown.setInterval(1000);
    connect(&m_countdown, &QTimer::timeout, this, &ScannerPage::tick);
    connect(m_file, &QPushButton::clicked, this, &ScannerPage::chooseFile);
    connect(m_clipboard, &QPushButton::clicked, this, &ScannerPage::readClipboard);
    connect(m_screen, &QPushButton::clicked, this, &ScannerPage::readScreen);
    connect(m_which, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &ScannerPage::showCode);
    connect(m_text, &QPlainTextEdit::textChanged, this, &ScannerPage::takeEditedText);
    connect(m_type, &QPushButton::clicked, this, &ScannerPage::startCountdown);
    connect(m_stop, &QPushButton::clicked, this, &ScannerPage::stop);
    connect(&m_scanner, &KeyboardScanner::progress, m_progress, [this](int typed, int total) {
        m_progress->setMaximum(total);
        m_progress->setValue(typed);
    });
    connect(&m_scanner, &KeyboardScanner::finished, this, &ScannerPage::showFinished);
    qApp->installEventFilter(this);
    updateButtons();
}

ScannerPage::~ScannerPage()
{
    // Its farewell would reach labels that are gone by then.
    m_scanner.disconnect(this);
}

void ScannerPage::makeLayout()
{
    auto *sources = new QHBoxLayout;
    for (QPushButton *button : {m_file, m_clipboard, m_screen})
        sources->addWidget(button);
    sources->addWidget(m_which, 1);
    sources->addStretch();

    auto *textLabel = new QLabel(tr("Бу&дет напечатано:"), this);
    textLabel->setBuddy(m_text);
    auto *left = new QVBoxLayout;
    left->addWidget(m_result, 1);
    left->addWidget(textLabel);
    left->addWidget(m_text);

    auto *form = new QFormLayout;
    form->setRowWrapPolicy(QFormLayout::WrapAllRows);
    form->addRow(tr("В &конце кода:"), m_suffix);
    form->addRow(tr("&Пауза между клавишами:"), m_pause);
    form->addRow(tr("Печа&ть:"), m_burst);
    form->addRow(tr("Раск&ладка клавиатуры:"), m_mishap);
    form->addRow(tr("&Отсчёт перед печатью:"), m_delay);
    auto *hint = new QLabel(
        tr("За время отсчёта поставьте курсор в нужное поле. Без отсчёта: F9 прямо в поле, "
           "хоть в окне платежа."),
        this);
    hint->setWordWrap(true);
    auto *right = new QVBoxLayout;
    right->addLayout(form);
    right->addWidget(hint);
    right->addWidget(m_type);
    right->addWidget(m_stop);
    right->addWidget(m_progress);
    right->addWidget(m_status);
    right->addStretch();

    auto *columns = new QHBoxLayout;
    columns->addLayout(left, 1);
    auto *side = new QWidget(this);
    right->setContentsMargins(0, 0, 0, 0);
    side->setLayout(right);
    side->setFixedWidth(230);
    columns->addWidget(side);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(sources);
    layout->addLayout(columns, 1);
}

void ScannerPage::setCode(const QByteArray &bytes)
{
    m_newerCode = true;
    showCodes({{QString(), bytes}}, QString());
}

void ScannerPage::readFile(const QString &fileName)
{
    read([fileName](const CodeReader::Step &step, QString *error) {
        return CodeReader::readFile(fileName, error, step);
    });
}

void ScannerPage::readPictures(const QVector<QImage> &pictures)
{
    read([pictures](const CodeReader::Step &step, QString *error) {
        QVector<CodeReader::Code> codes;
        for (const QImage &picture : pictures)
            codes += CodeReader::read(picture, step);
        *error = CodeReader::nothingFoundText();
        return codes;
    });
}

void ScannerPage::read(const Reading &reading)
{
    struct Result
    {
        QVector<CodeReader::Code> codes;
        QString error;
    };
    const auto result = std::make_shared<Result>();
    if (m_countdown.isActive())
        stop();
    m_reading = true;
    m_newerCode = false;
    const bool whole = LongWork::run(
        this, window()->windowTitle(),
        tr("Код ищется на картинке. Большая картинка занимает до минуты."),
        [reading, result](const LongWork::Step &step) {
            bool stopped = false;
            result->codes = reading(
                [&](int done, int total) {
                    stopped = stopped || !step(done, total);
                    return !stopped;
                },
                &result->error);
            return !stopped;
        },
        LongWork::Stopping::LeavesBehind);
    m_reading = false;
    // Another window has sent a code meanwhile: that is the one its person expects here.
    if (m_newerCode)
        return;
    if (whole)
        showCodes(result->codes, result->error);
    else
        showCodes({},
                  tr("Чтение прервано, кода нет. Вырежьте код из картинки или уменьшите её и "
                     "прочитайте снова."));
}

void ScannerPage::chooseFile()
{
    const QString file =
        QFileDialog::getOpenFileName(this, tr("Картинка с кодом"), QString(),
                                     tr("Картинки (*.png *.jpg *.jpeg *.bmp);;Все файлы (*)"));
    if (!file.isEmpty())
        readFile(file);
}

void ScannerPage::readClipboard()
{
    const QMimeData *content = QGuiApplication::clipboard()->mimeData();
    const QString file = content && content->hasUrls() && !content->urls().isEmpty()
        ? content->urls().constFirst().toLocalFile()
        : QString();
    if (!file.isEmpty())
        readFile(file);
    else if (content && content->hasImage())
        readPictures({QGuiApplication::clipboard()->image()});
    else if (content && tooLong(content->text()))
        showCodes({}, tooLongText());
    else if (content && !content->text().isEmpty())
        setCode(content->text().toUtf8());
    else
        showCodes({},
                  tr("В буфере обмена нет ни картинки, ни текста. Скопируйте картинку с кодом и "
                     "повторите."));
}

void ScannerPage::readScreen()
{
    const QVector<QImage> pictures = m_grabScreens();
    const bool seen = std::any_of(pictures.cbegin(), pictures.cend(),
                                  [](const QImage &picture) { return !picture.isNull(); });
    if (seen)
        readPictures(pictures);
    else
        showCodes({},
                  tr("Эта система не даёт снять экран. Скопируйте картинку с кодом и прочитайте "
                     "её из буфера обмена."));
}

void ScannerPage::showCodes(const QVector<CodeReader::Code> &codes, const QString &nothing)
{
    m_codes = codes;
    const QSignalBlocker quiet(m_which);
    m_which->clear();
    int first = 0;
    for (int i = 0; i < codes.size(); ++i) {
        const ReadCode read = PaymentCodeReader::read(codes.at(i).bytes);
        m_which->addItem(tr("Код %1 из %2: %3")
                             .arg(QString::number(i + 1), QString::number(codes.size()),
                                  ReadCode::kindText(read.kind)));
        const bool better = read.kind == ReadCode::Kind::Payment
            && PaymentCodeReader::read(codes.at(first).bytes).kind != ReadCode::Kind::Payment;
        if (better)
            first = i;
    }
    m_which->setCurrentIndex(first);
    m_which->setVisible(codes.size() > 1);
    if (codes.isEmpty()) {
        // What was read before stays out: a text of another bill must not be typed by mistake.
        m_typedText.clear();
        const QSignalBlocker quietText(m_text);
        m_text->clear();
        m_result->setNote(nothing);
        updateButtons();
    } else {
        showCode(first);
    }
}

void ScannerPage::showCode(int index)
{
    if (index < 0 || index >= m_codes.size())
        return;
    const CodeReader::Code &code = m_codes.at(index);
    const ReadCode read = PaymentCodeReader::read(code.bytes);
    m_typedText = read.text;
    const QSignalBlocker quiet(m_text);
    m_text->setPlainText(read.text);
    m_result->setCode(read, code.format);
    m_status->clear();
    updateButtons();
}

void ScannerPage::takeEditedText()
{
    const QString edited = m_text->toPlainText();
    if (tooLong(edited)) {
        // The editor would be busy with it for seconds at every key.
        const QSignalBlocker quiet(m_text);
        m_text->setPlainText(m_typedText);
        m_status->setText(tooLongText());
        return;
    }
    m_typedText = edited;
    if (m_status->text() == tooLongText())
        m_status->clear();
    const ReadCode first = PaymentCodeReader::read(m_typedText.toUtf8());
    // A typed text has no bytes of its own yet: read it in the encoding it promises.
    const CodeEncoding encoding = first.declared.value_or(CodeEncoding::Utf8);
    const bool fits = CodeEncodings::lacking(m_typedText, encoding).isEmpty();
    m_result->setCode(fits ? PaymentCodeReader::read(CodeEncodings::encode(m_typedText, encoding))
                           : first,
                      QString());
    updateButtons();
}

KeyboardScanner::Options ScannerPage::options() const
{
    KeyboardScanner::Options result;
    result.suffix = KeyboardScanner::Suffix(m_suffix->currentData().toInt());
    result.keyPause = m_pause->value();
    result.burstPause = m_burst->currentData().toInt();
    result.mishap = KeyboardLayout::Mishap(m_mishap->currentData().toInt());
    return result;
}

void ScannerPage::startCountdown()
{
    m_secondsLeft = m_delay->value() + 1;
    m_countdown.start();
    tick();
    updateButtons();
}

void ScannerPage::tick()
{
    --m_secondsLeft;
    if (m_secondsLeft > 0) {
        m_status->setText(tr("Поставьте курсор в поле. Печать через %1 с.").arg(m_secondsLeft));
        return;
    }
    m_countdown.stop();
    startTyping();
}

void ScannerPage::startTyping()
{
    m_countdown.stop();
    const QWidget *focus = QApplication::focusWidget();
    if (focus && (focus == this || isAncestorOf(focus))) {
        m_status->setText(tr("Курсор остался на этой странице, печатать сюда незачем. Поставьте "
                             "его в поле, куда нужен код."));
    } else {
        m_status->setText(tr("Печатается…"));
        m_progress->setValue(0);
        m_scanner.type(m_typedText, options());
    }
    updateButtons();
}

void ScannerPage::stop()
{
    if (m_countdown.isActive()) {
        m_countdown.stop();
        m_status->setText(tr("Печать отменена, ничего не введено."));
    }
    m_scanner.cancel();
    updateButtons();
}

void ScannerPage::showFinished(KeyboardScanner::Outcome outcome)
{
    m_status->setText(KeyboardScanner::outcomeText(outcome));
    updateButtons();
}

void ScannerPage::updateButtons()
{
    const bool busy = m_countdown.isActive() || m_scanner.isTyping();
    m_type->setEnabled(!busy && !m_typedText.isEmpty());
    m_stop->setEnabled(busy);
    m_progress->setVisible(m_scanner.isTyping());
}

bool ScannerPage::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const auto *key = static_cast<QKeyEvent *>(event);
    const bool pulled =
        key->key() == triggerKey && key->modifiers() == Qt::NoModifier && !key->isAutoRepeat();
    if (!pulled || m_typedText.isEmpty() || m_scanner.isTyping() || m_reading)
        return QWidget::eventFilter(watched, event);
    startTyping();
    return true;
}
