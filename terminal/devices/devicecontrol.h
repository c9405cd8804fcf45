#pragma once

#include <devices/devicestates.h>

#include <QObject>
#include <QString>

class BillingService;
class EmulatedRegister;
class InProcessBus;

/// Puts the emulated devices of one workstation into their states, also while a payment is open: a
/// state counts from the next operation on.
///
/// The card terminal's state stands in the workstation's settings, which outlive the program: a
/// workstation that opens resets it, so that no forgotten fault surprises the next cashier.
class DeviceControl final : public QObject
{
    Q_OBJECT

public:
    /// `service` and `bus` are null when billing is not in this program. All must outlive the
    /// object.
    DeviceControl(EmulatedRegister &fiscalRegister, BillingService *service, InProcessBus *bus,
                  QObject *parent = nullptr);

    /// False for billing that is not in this program: nothing here can change its state.
    bool controls(Device device) const;
    /// The key of the present state; of a device that is not controlled, that of the first one.
    QString state(Device device) const;
    /// The same in words.
    QString stateTitle(Device device) const;
    bool isFaulty(Device device) const;
    /// With `once` the register is ready again after the next receipt; the others know no such
    /// thing. False, with error(), for an unknown key, a device that is not controlled, or settings
    /// that could not be written; the state is then as it was.
    bool setState(Device device, const QString &key, bool once = false);
    /// Every device as if nothing had ever been wrong, the link to billing too.
    bool reset();

    /// CardReaderSettings::Type, or a type that nothing here knows; 0 for none.
    int cardTerminal() const;
    bool setCardTerminal(int type);

    bool billingLink() const;
    void setBillingLink(bool connected);

    QString error() const { return m_error; }

signals:
    void changed();

private:
    EmulatedRegister &m_register;
    BillingService *m_service;
    InProcessBus *m_bus;
    QString m_error;
};
