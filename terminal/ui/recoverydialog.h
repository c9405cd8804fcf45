#pragma once

#include <recovery/paymentcase.h>

#include <QDialog>
#include <QVector>

#include <functional>

class PaymentReconciler;
class PaysController;
class QLabel;
class QPushButton;
class QTableView;
class RecoveryDialogModel;
class TerminalContext;

/// Payments that did not come through: what happened to each and what can be done about it. The
/// buttons act on all selected payments; what cannot be done says why and leaves the payment
/// listed.
class RecoveryDialog final : public QDialog
{
    Q_OBJECT

public:
    /// Both must outlive the dialog.
    RecoveryDialog(PaymentReconciler &reconciler, PaysController &controller,
                   QWidget *parent = nullptr);
    ~RecoveryDialog() override;

    /// Compares the sources anew, with a progress that can be cancelled after a while. False when
    /// it was cancelled or a source could not be read; the list then holds what was found so far.
    bool load();
    int openCount() const;

    /// Shows the dialog once the outbox had its chance, if anything is open then. Waits for a
    /// plugin's dialog to close; `window` owns everything.
    static void offerAtStart(TerminalContext &context, QWidget *window);

private:
    using Action = std::function<bool(const PaymentCase &payment, QString *error)>;

    QPushButton *makeButton(const QString &name, const QString &text);
    QVector<int> selectedRows() const;
    /// Asks first when `question` is not empty; `fits` says which of the selected are meant.
    void act(const QString &question, bool (PaymentCase::*fits)() const, const Action &action);
    void refresh(const PaymentCase &payment);
    void postpone();
    void onPackChanged(qint64 packId);
    void showSelected();

    PaymentReconciler &m_reconciler;
    RecoveryDialogModel *m_model;
    QLabel *m_summary;
    QTableView *m_table;
    QLabel *m_details;
    QPushButton *m_save = nullptr;
    QPushButton *m_post = nullptr;
    QPushButton *m_refund = nullptr;
    QPushButton *m_postpone = nullptr;
    QString m_problem;
    int m_agreed = 0;
};
