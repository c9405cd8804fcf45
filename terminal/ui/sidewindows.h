#pragma once

#include <QObject>

#include <memory>

class QByteArray;
class QMenu;
class QWidget;
class ScannerPage;
class TerminalContext;

/// The windows beside the cashier's own: what crosses the bus, the states of the devices, and the
/// scanner.
///
/// They have no parent, so no dialog of a payment holds them up, and their keys work wherever the
/// keyboard is. Each is made when it is first opened and kept from then on; what crossed the bus
/// before is in its journal.
class SideWindows final : public QObject
{
    Q_OBJECT

public:
    /// `context` must outlive the windows.
    explicit SideWindows(TerminalContext &context);
    ~SideWindows() override;

    /// Adds what opens the windows.
    void addActions(QMenu &menu);
    void showBus();
    void showDevices();
    void showScanner();
    /// Opens the scanner with the bytes of a code, ready to be typed in.
    void scan(const QByteArray &code);
    void close();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    ScannerPage &scanner();
    static void bringUp(QWidget &window);

    TerminalContext &m_context;
    std::unique_ptr<QWidget> m_bus;
    std::unique_ptr<QWidget> m_devices;
    std::unique_ptr<ScannerPage> m_scanner;
};
