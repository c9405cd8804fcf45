#include "pluginhost.h"

#include <bus/messagebus.h>

#include <basixcore/currency.h>
#include <basixcore/fixnumber.h>
#include <molvacore/boxinfo.h>
#include <molvacore/frhandler.h>
#include <molvacore/ipaybyproviderplugin.h>
#include <molvacore/ipaydialog.h>
#include <molvacore/ipayscontrollerwrapper.h>
#include <molvacore/provider.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonObject>
#include <QPluginLoader>
#include <QPointer>
#include <QScopedValueRollback>
#include <QWidget>

namespace {

bool isElf(const QString &file)
{
    QFile content(file);
    return content.open(QIODevice::ReadOnly)
        && content.read(4)
        == QByteArrayLiteral("\x7f"
                             "ELF");
}

/// A copy that shares nothing with the module's read-only memory, where its string literals live.
QString ownCopy(const QString &text)
{
    return QString(text.constData(), text.size());
}

} // namespace

PluginHost::PluginHost(QObject *parent) : QObject(parent) {}

PluginHost::~PluginHost()
{
    m_dialogOpen = false;
    unload();
}

bool PluginHost::load(const QString &file)
{
    const QString shown = QDir::toNativeSeparators(file);
    if (m_plugin)
        return refuse(Refusal::AlreadyLoaded,
                      tr("Модуль «%1» уже подключён: сначала отключите его.").arg(m_file));
    m_file = file;
    m_refusal = Refusal::None;
    m_error.clear();
    m_details.clear();

    const QFileInfo info(file);
    if (file.isEmpty() || !info.isFile()) {
        return refuse(
            Refusal::NoFile,
            tr("Файла модуля «%1» нет. Проверьте путь или соберите модуль заново.").arg(shown));
    }
    if (!info.isReadable())
        return refuse(Refusal::NoFile,
                      tr("Файл модуля «%1» не читается: нет прав на чтение.").arg(shown));
    if (!isElf(file)) {
        return refuse(
            Refusal::NotALibrary,
            tr("Файл «%1» не библиотека и модулем быть не может. Укажите файл *.so.").arg(shown));
    }

    auto loader = std::make_unique<QPluginLoader>(info.absoluteFilePath());
    // Every symbol is looked for now: a symbol that is missing must not show in the middle of a
    // payment. The code stays mapped after unload(), since strings that the module made may still
    // live in the journal and on the bus.
    loader->setLoadHints(QLibrary::ResolveAllSymbolsHint | QLibrary::PreventUnloadHint);

    const QJsonObject metadata = loader->metaData();
    const QString interfaceId = metadata.value(QLatin1String("IID")).toString();
    if (interfaceId.isEmpty()) {
        return refuse(
            Refusal::NoMetadata,
            tr("«%1» — библиотека, но не модуль: в ней нет описания модуля. Укажите другой файл.")
                .arg(shown),
            loader->errorString());
    }
    if (interfaceId != QLatin1String(IPayByProviderPlugin_iid)) {
        return refuse(Refusal::ForeignInterface,
                      tr("«%1» — модуль для другой программы: его интерфейс «%2», а нужен «%3».")
                          .arg(shown, interfaceId, QLatin1String(IPayByProviderPlugin_iid)));
    }
    if (!loader->load()) {
        return refuse(Refusal::CannotLoad,
                      tr("Модуль «%1» не загрузился: он собран для других библиотек или ему не "
                         "хватает своих. "
                         "Установите модуль и рабочее место одной версии.")
                          .arg(shown),
                      loader->errorString());
    }
    auto *plugin = qobject_cast<IPayByProviderPlugin *>(loader->instance());
    if (!plugin) {
        const QString reason = loader->errorString();
        loader->unload();
        return refuse(
            Refusal::NoInstance,
            tr("Модуль «%1» загрузился, но платежей не принимает: в нём нет обещанного объекта. "
               "Обратитесь к поставщику модуля.")
                .arg(shown),
            reason);
    }

    m_loader = std::move(loader);
    m_plugin = plugin;
    readIdentity();
    return true;
}

void PluginHost::wire(const QFont &inputFont, const BoxInfo &box, MessageBus &bus,
                      std::unique_ptr<FrHandler> fiscalRegister,
                      std::unique_ptr<IPaysControllerWrapper> paysController)
{
    Q_ASSERT(m_plugin && fiscalRegister && paysController);
    m_plugin->setInputFont(inputFont);
    // The normalised form, without blanks, is what Qt looks up first.
    // clang-format off
    m_plugin->setMessageReciever(&bus, SIGNAL(incomingMessage(QVariantMap,QString)));
    m_plugin->setMessageSender(&bus, SLOT(sendMessage(QString,QVariant)));
    // clang-format on
    m_plugin->setPayStatusReciever(&bus, SIGNAL(paymentStatus(QVariant)));
    m_plugin->setPaysControllerWrapper(paysController.release());
    m_plugin->setFrHandler(fiscalRegister.release());
    m_plugin->startWorkers(box, box.currency());
    m_workersStarted = true;
}

PluginHost::Outcome PluginHost::start(const basix::FixNumber &prepay, const Provider &provider,
                                      QWidget *parent)
{
    Outcome outcome;
    if (!m_plugin || m_dialogOpen)
        return outcome;
    const QScopedValueRollback<bool> open(m_dialogOpen, true);

    IPayDialog *dialog = m_plugin->start(prepay, provider, parent);
    if (!dialog)
        return outcome;
    outcome.started = true;
    // The parent may be closed while the dialog runs and takes the dialog with it.
    const QPointer<QObject> object(dynamic_cast<QObject *>(dialog));
    const bool guarded = !object.isNull();
    const bool accepted = dialog->execute();
    if (guarded && object.isNull())
        return outcome;
    outcome.accepted = accepted;
    outcome.sent = dialog->paymentIsSended();
    outcome.providerId = dialog->providerId();
    delete dialog;
    return outcome;
}

bool PluginHost::unload()
{
    if (m_dialogOpen)
        return false;
    if (!m_loader)
        return true;
    if (m_workersStarted)
        m_plugin->stopWorkers();
    m_workersStarted = false;
    m_plugin = nullptr;
    m_loader->unload();
    m_loader.reset();
    return true;
}

bool PluginHost::refuse(Refusal refusal, const QString &error, const QString &details)
{
    m_refusal = refusal;
    m_error = error;
    m_details = details;
    return false;
}

void PluginHost::readIdentity()
{
    m_identity.name = ownCopy(m_plugin->pluginName());
    m_identity.caption = ownCopy(m_plugin->pluginCaption());
    m_identity.description = ownCopy(m_plugin->pluginDescription());
    m_identity.version = ownCopy(m_plugin->pluginVersion());
    m_identity.build = ownCopy(m_plugin->pluginBuild());
    m_identity.providers = m_plugin->supportedProviders();
}
