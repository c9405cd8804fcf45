#pragma once

#include <billing/billingdatabase.h>
#include <billing/billingservice.h>
#include <bus/busjournal.h>
#include <bus/inprocessbus.h>
#include <devices/devicecontrol.h>
#include <fiscal/emulatedregister.h>
#include <fiscal/fiscaljournal.h>
#include <payments/chargejournal.h>
#include <payments/paymentsstore.h>
#include <payments/payscontroller.h>
#include <plugin/pluginhost.h>
#include <recovery/paymentreconciler.h>

#include <molvacore/boxinfo.h>
#include <molvacore/provider.h>

#include <QFont>
#include <QLockFile>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>
#include <memory>

class DbConnector;

/// One cashier's workstation: its databases, bus, register, payments and plugin, put together and
/// taken apart in order.
///
/// Everything lives in one data folder, which belongs to one running workstation at a time.
class TerminalContext final : public QObject
{
    Q_OBJECT

public:
    /// Readies the files of the folder before they are opened; false keeps the workstation closed,
    /// with a Russian text.
    using Preparation = std::function<bool(const QString &dataFolder, QString *error)>;

    /// Opens the folder, closes it to other users, creates what is missing in it with sample data,
    /// and sends again the payments that an earlier run could not post. Null, with a Russian text,
    /// when anything of this fails; files that were there stay as they were.
    ///
    /// Messages go over `bus`, behind which billing lives elsewhere; without one over ownBus(),
    /// with billing inside this program.
    static std::unique_ptr<TerminalContext> open(const QString &dataFolder, QString *error,
                                                 std::unique_ptr<MessageBus> bus = nullptr,
                                                 const Preparation &prepare = Preparation());
    /// Where a data folder keeps its pay packs.
    static QString paymentsFile(const QString &dataFolder);
    /// Every store of a data folder that grows with the payments, in the order of opening.
    static QStringList storeFiles(const QString &dataFolder);
    ~TerminalContext() override;

    /// Loads the plugin and wires it to this workstation. False: see pluginHost() for the reason.
    bool loadPlugin(const QString &file, const QFont &inputFont);

    QString dataFolder() const { return m_dataFolder; }
    BoxInfo box() const { return m_box; }
    /// Full name of the cashier of the current session; empty when unknown.
    QString cashier() const { return m_cashier; }
    /// The host's catalogue, in its order.
    QVector<Provider> providers() const { return m_providers; }

    PluginHost &pluginHost() { return m_pluginHost; }
    /// The bus that carries this workstation's messages.
    MessageBus &bus() { return m_bus ? *m_bus : m_ownBus; }
    /// The bus inside this program; it carries nothing when open() was given another.
    InProcessBus &ownBus() { return m_ownBus; }
    /// True when this program's billing() is the one that payments go to.
    bool billingIsOwn() const { return !m_bus; }
    /// Everything that crossed the bus, from opening on.
    BusJournal &busJournal() { return m_busJournal; }
    EmulatedRegister &fiscalRegister() { return *m_register; }
    /// Faults of the register, the card terminal and billing.
    DeviceControl &devices() { return *m_devices; }
    FiscalJournal &fiscalJournal() { return m_fiscalJournal; }
    /// Billing's data in this folder: where payments go, or, when billing lives elsewhere, no more
    /// than sample accounts.
    BillingDatabase &billing() { return m_billing; }
    PaysController &paysController() { return *m_paysController; }
    PaymentsStore &payments() { return m_payments; }
    ChargeJournal &charges() { return m_charges; }
    PaymentReconciler &reconciler() { return *m_reconciler; }

private:
    explicit TerminalContext(const QString &dataFolder);
    bool openStores(QString *error);
    bool readHostData(QString *error);
    void makeReconciler();

    // Declared in the order of dependence: what stands below uses what stands above and goes first.
    QString m_dataFolder;
    QLockFile m_lock;
    /// Keeps the host's database open: profiles and settings are read from it for every payment,
    /// and opening it anew takes longer than everything that is read.
    std::unique_ptr<DbConnector> m_hostDatabase;
    BoxInfo m_box;
    QString m_cashier;
    QVector<Provider> m_providers;
    BillingDatabase m_billing;
    FiscalJournal m_fiscalJournal;
    PaymentsStore m_payments;
    ChargeJournal m_charges;
    BillingService m_billingService;
    BusJournal m_busJournal;
    InProcessBus m_ownBus;
    std::unique_ptr<MessageBus> m_bus;
    std::unique_ptr<EmulatedRegister> m_register;
    std::unique_ptr<DeviceControl> m_devices;
    std::unique_ptr<PaysController> m_paysController;
    std::unique_ptr<PaymentReconciler> m_reconciler;
    PluginHost m_pluginHost;
};
