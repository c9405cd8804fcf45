#include "terminalcontext.h"

#include <billing/billingendpoint.h>
#include <hostdata/hostdataseeder.h>
#include <payments/payscontrollerwrapper.h>
#include <plugin/frhandlerlink.h>
#include <recovery/privatedata.h>

#include <molvacore/appsession.h>
#include <molvacore/boxinfocontroller.h>
#include <molvacore/dbconnector.h>
#include <molvacore/providerscontroller.h>
#include <molvacore/userscontroller.h>

#include <QDir>

#include <utility>

namespace {

QString fileIn(const QString &folder, const char *name)
{
    return QDir(folder).filePath(QLatin1String(name));
}

QString billingFile(const QString &folder)
{
    return fileIn(folder, "billing.sqlite");
}

QString fiscalFile(const QString &folder)
{
    return fileIn(folder, "fiscal.sqlite");
}

QString chargesFile(const QString &folder)
{
    return fileIn(folder, "charges.sqlite");
}

} // namespace

std::unique_ptr<TerminalContext> TerminalContext::open(const QString &dataFolder, QString *error,
                                                       std::unique_ptr<MessageBus> bus,
                                                       const Preparation &prepare)
{
    if (!PrivateData::closeFolder(dataFolder)) {
        *error = tr("Папку данных «%1» создать не удалось или не удалось закрыть её от других "
                    "пользователей. Проверьте путь и права на запись.")
                     .arg(QDir::toNativeSeparators(dataFolder));
        return nullptr;
    }
    std::unique_ptr<TerminalContext> context(new TerminalContext(QDir(dataFolder).absolutePath()));
    if (!context->m_lock.tryLock(0)) {
        *error = tr("Папкой данных «%1» уже пользуется другое открытое рабочее место. "
                    "Закройте его или укажите другую папку ключом --data.")
                     .arg(QDir::toNativeSeparators(dataFolder));
        return nullptr;
    }
    if (prepare && !prepare(context->m_dataFolder, error))
        return nullptr;
    if (!context->openStores(error) || !context->readHostData(error))
        return nullptr;

    context->m_bus = std::move(bus);
    if (context->billingIsOwn())
        BillingEndpoint::attach(context->m_ownBus, context->m_billingService);
    context->m_busJournal.follow(context->bus());
    context->m_register = std::make_unique<EmulatedRegister>(context->m_fiscalJournal);
    const bool own = context->billingIsOwn();
    context->m_devices = std::make_unique<DeviceControl>(*context->m_register,
                                                         own ? &context->m_billingService : nullptr,
                                                         own ? &context->m_ownBus : nullptr);
    if (!context->m_devices->reset()) {
        *error = context->m_devices->error();
        return nullptr;
    }
    context->m_paysController =
        std::make_unique<PaysController>(context->m_payments, context->m_box.boxId());
    context->m_paysController->follow(context->bus());
    context->makeReconciler();
    context->m_charges.follow(*CardChargeLog::instance());
    context->m_paysController->outbox().start(context->bus());
    return context;
}

void TerminalContext::makeReconciler()
{
    const auto billingKnows = [this](qint64 packId) -> std::optional<bool> {
        if (!billingIsOwn() || !m_billing.isOpen())
            return std::nullopt;
        return m_billing.hasPack(QString::number(packId));
    };
    m_reconciler = std::make_unique<PaymentReconciler>(
        PaymentReconciler::Sources{m_charges, m_fiscalJournal, m_payments, *m_paysController,
                                   billingKnows},
        PackRebuilder(m_providers, m_box.currency()));
    m_reconciler->follow(*m_register);
}

TerminalContext::TerminalContext(const QString &dataFolder)
    : m_dataFolder(dataFolder),
      m_lock(fileIn(dataFolder, "terminal.lock")),
      m_billingService(m_billing)
{
    // The lock of a workstation that was killed is recognised by its process, not by its age.
    m_lock.setStaleLockTime(0);
}

TerminalContext::~TerminalContext()
{
    m_pluginHost.unload();
}

bool TerminalContext::loadPlugin(const QString &file, const QFont &inputFont)
{
    if (!m_pluginHost.load(file))
        return false;
    m_pluginHost.wire(inputFont, m_box, bus(), std::make_unique<FrHandlerLink>(*m_register),
                      std::make_unique<PaysControllerWrapper>(m_paysController.get()));
    return true;
}

QString TerminalContext::paymentsFile(const QString &dataFolder)
{
    return fileIn(dataFolder, "payments.sqlite");
}

QStringList TerminalContext::storeFiles(const QString &dataFolder)
{
    return {billingFile(dataFolder), fiscalFile(dataFolder), paymentsFile(dataFolder),
            chargesFile(dataFolder)};
}

bool TerminalContext::openStores(QString *error)
{
    if (!m_billing.open(billingFile(m_dataFolder))) {
        *error = m_billing.lastError();
        return false;
    }
    if (!m_fiscalJournal.open(fiscalFile(m_dataFolder))) {
        *error = m_fiscalJournal.lastError();
        return false;
    }
    if (!m_payments.open(paymentsFile(m_dataFolder))) {
        *error = m_payments.lastError();
        return false;
    }
    if (!m_charges.open(chargesFile(m_dataFolder))) {
        *error = m_charges.lastError();
        return false;
    }
    return true;
}

bool TerminalContext::readHostData(QString *error)
{
    DbConnector::setDatabaseFile(fileIn(m_dataFolder, "host.sqlite"));
    m_hostDatabase = std::make_unique<DbConnector>();
    DbConnector &db = *m_hostDatabase;
    if (!db.isOpen()) {
        *error = db.lastError();
        return false;
    }
    HostDataSeeder seeder;
    if (!seeder.seed(error))
        return false;

    m_box = BoxInfoController(db).boxInfo(true);
    const QList<Provider> providers = ProvidersController(db).providers();
    m_providers = QVector<Provider>(providers.cbegin(), providers.cend());
    if (!UsersController(db).getUserFullName(AppSession::currentSession(), m_cashier))
        m_cashier.clear();
    return true;
}
