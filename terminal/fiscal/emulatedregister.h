#pragma once

#include <fiscal/fiscaldocumentchecker.h>
#include <fiscal/fiscalrecord.h>
#include <fiscal/registerclock.h>

#include <molvacore/frhandler.h>

#include <QSharedPointer>
#include <QString>
#include <QVariantMap>
#include <QVector>

class FiscalJournal;

/// A fiscal register without the iron: checks, numbers, signs and stores receipts as one does, and
/// fails on request.
///
/// It keeps nothing of its own that matters: numbers and shifts live in the journal, so several
/// registers one after another work on one storage. A shift opens by itself with the first receipt
/// and must be closed before it is 24 hours old.
///
/// A receipt is printed once for each number that the workstation hands it in under. The same
/// receipt again, times aside, is answered with what the register answered the first time and
/// prints nothing: so a workstation that lost the answer may ask again. Another receipt under that
/// number is refused. An empty number identifies nothing.
class EmulatedRegister final : public FrHandler
{
    Q_OBJECT

public:
    enum class Condition {
        Ready,
        NoConnection,       ///< the status cannot be read
        NotReady,           ///< the status says that no receipt can be printed
        ShiftExpired,       ///< as after 24 hours
        PaperOut,           ///< found before printing; nothing is registered
        FailsWhilePrinting, ///< nothing is registered
        FailsAfterPrinting, ///< registered, but the workstation is told of an error
        StorageFull         ///< the fiscal storage takes no more documents
    };
    Q_ENUM(Condition)

    /// `journal` must be open and outlive the register.
    explicit EmulatedRegister(FiscalJournal &journal, RegisterClock clock = {},
                              QObject *parent = nullptr);
    ~EmulatedRegister() override;

    Condition condition() const;
    /// Stays until set again; with `once` it falls back to Ready after the next receipt.
    void setCondition(Condition condition, bool once = false);
    static QString conditionText(Condition condition);
    static QVector<Condition> conditions();

    bool shiftIsOpen() const;
    /// Prints the report that ends the shift; false with a Russian text when there is none to close
    /// or it cannot be stored.
    bool closeShift(QString &error);

    bool getFiscalStatus(QSharedPointer<FsStatus> &status) override;
    bool doReceipt(const QVariantMap &document, const QString &documentNumber, QVariantMap &result,
                   QString &error) override;

signals:
    /// A receipt was registered, whatever the workstation was told.
    void receiptRegistered(qint64 number);
    void conditionChanged(EmulatedRegister::Condition condition);
    /// Findings of the document handed in last.
    void checked(const QVector<FiscalFinding> &findings);

private:
    QDateTime now() const;
    bool print(const QVariantMap &document, const QString &documentNumber, QVariantMap &result,
               QString &error);
    /// What became of a receipt that is registered under the number of another attempt.
    bool answerAgain(const FiscalRecord &known, const QVariantMap &document, QVariantMap &result,
                     QString &error) const;
    /// True fills `error`: the register takes no receipt in its present condition.
    bool refusal(QString &error) const;
    bool shiftTooOld() const;
    bool ensureShift(QString &error);
    FiscalRecord makeReceipt(const QVariantMap &document, const QString &documentNumber) const;

    FiscalJournal &m_journal;
    RegisterClock m_clock;
    Condition m_condition = Condition::Ready;
    bool m_once = false;
};
