#pragma once

#include <payments/paymentrecord.h>

#include <QByteArray>
#include <QString>
#include <QWidget>

class QLabel;
class QPlainTextEdit;
class QPushButton;
class QTabWidget;
class ReceiptView;
class TerminalContext;

/// One payment of the journal: its receipt as the tape looks and as text, its pay pack, where the
/// buyer's electronic receipt goes, and files of all that.
class PaymentDetails final : public QWidget
{
    Q_OBJECT

public:
    /// `context` must outlive the widget.
    explicit PaymentDetails(TerminalContext &context, QWidget *parent = nullptr);

    /// A record without a pack id shows nothing but a hint.
    void setPayment(const PaymentRecord &payment);
    qint64 packId() const { return m_payment.packId; }

private:
    void showPack();
    void showReceipt();
    void showNoReceipt(const QString &reason);
    void saveReceipt();
    void savePack();

    TerminalContext &m_context;
    PaymentRecord m_payment;
    QString m_qr;
    QTabWidget *m_views;
    ReceiptView *m_receipt;
    QPlainTextEdit *m_text;
    QPlainTextEdit *m_pack;
    QByteArray m_packJson; ///< whole, however much of it is shown
    QLabel *m_address;
    QPushButton *m_saveReceipt;
    QPushButton *m_savePack;
};
