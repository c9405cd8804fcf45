#pragma once

#include <scanner/codereader.h>
#include <scanner/keyboardscanner.h>

#include <QByteArray>
#include <QImage>
#include <QTimer>
#include <QVector>
#include <QWidget>

#include <functional>

class QComboBox;
class QLabel;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;
class QSpinBox;
class ScannerResult;

/// A scanner without the device: reads codes from pictures and types their text where the cursor
/// is.
///
/// A payment's dialog keeps the mouse from this page, so typing starts in two ways: after a
/// countdown that leaves the time to go to the field, or by F9 in any window of the program, as a
/// person pulls a scanner's trigger.
class ScannerPage final : public QWidget
{
    Q_OBJECT

public:
    explicit ScannerPage(QWidget *parent = nullptr);
    ~ScannerPage() override;

    /// Takes the bytes of a code as if they had been read from a picture.
    void setCode(const QByteArray &bytes);
    void readFile(const QString &fileName);
    /// Where the pictures of the screens come from; by default from the screens themselves.
    void setScreenGrabber(const std::function<QVector<QImage>()> &grabber)
    {
        m_grabScreens = grabber;
    }
    /// What will be typed.
    QString text() const { return m_typedText; }

    /// Looks for the trigger key in the whole program.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void makeLayout();
    void chooseFile();
    void readClipboard();
    void readScreen();
    using Reading = std::function<QVector<CodeReader::Code>(const CodeReader::Step &, QString *)>;
    /// `reading` is done beside the window and owns what it reads; the text that it sets says why
    /// there is no code.
    void read(const Reading &reading);
    void readPictures(const QVector<QImage> &pictures);
    void showCodes(const QVector<CodeReader::Code> &codes, const QString &nothing);
    void showCode(int index);
    void takeEditedText();
    void startCountdown();
    void tick();
    void startTyping();
    void stop();
    void showFinished(KeyboardScanner::Outcome outcome);
    void updateButtons();
    KeyboardScanner::Options options() const;

    std::function<QVector<QImage>()> m_grabScreens;
    KeyboardScanner m_scanner;
    QTimer m_countdown;
    int m_secondsLeft = 0;
    bool m_reading = false;
    bool m_newerCode = false; ///< came while a picture was read
    QVector<CodeReader::Code> m_codes;
    /// Kept beside the editor, which would turn special blanks into ordinary ones.
    QString m_typedText;

    QPushButton *m_file;
    QPushButton *m_clipboard;
    QPushButton *m_screen;
    QComboBox *m_which;
    ScannerResult *m_result;
    QPlainTextEdit *m_text;
    QComboBox *m_suffix;
    QSpinBox *m_pause;
    QComboBox *m_burst;
    QComboBox *m_mishap;
    QSpinBox *m_delay;
    QPushButton *m_type;
    QPushButton *m_stop;
    QProgressBar *m_progress;
    QLabel *m_status;
};
