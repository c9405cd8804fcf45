#pragma once

#include <QWidget>

class Provider;
class QLabel;
class QPushButton;
class QTableWidget;
class TerminalContext;

/// Where a payment begins: the providers that the plugin serves, and the sample accounts to try it
/// with.
class PaymentPage final : public QWidget
{
    Q_OBJECT

public:
    /// `context` must outlive the page.
    explicit PaymentPage(TerminalContext &context, QWidget *parent = nullptr);

    /// The chosen provider; a default one when none is chosen.
    Provider provider() const;
    /// Chooses the provider; false when the catalogue has none of this id.
    bool chooseProvider(qint64 id);
    /// Reads again what the plugin serves.
    void refresh();

signals:
    void paymentRequested();

private:
    void fillProviders();
    void fillSamples();
    void copySample();
    void request();

    TerminalContext &m_context;
    QTableWidget *m_providers;
    QPushButton *m_start;
    QLabel *m_hint;
    QTableWidget *m_samples;
};
