#include <bus/brokermodule.h>

#include <bus/ibrokermodule.h>
#include <bus/messagebus.h>

#include <QDir>
#include <QFileInfo>
#include <QJsonObject>
#include <QPluginLoader>

std::unique_ptr<MessageBus> BrokerModule::open(const QString &file, const QString &address,
                                               QString *error)
{
    const QString shown = QDir::toNativeSeparators(file);
    if (!QFileInfo(file).isFile()) {
        *error = QStringLiteral("Ключу --bus нужна часть рабочего места, которой нет: файл «%1». "
                                "Установите рабочее место заново.")
                     .arg(shown);
        return nullptr;
    }
    QPluginLoader loader(file);
    // A symbol that is missing must not show in the middle of a payment, and the bus outlives the
    // loader.
    loader.setLoadHints(QLibrary::ResolveAllSymbolsHint | QLibrary::PreventUnloadHint);
    const QString interfaceId = loader.metaData().value(QLatin1String("IID")).toString();
    auto *module = interfaceId == QLatin1String(IBrokerModule_iid)
        ? qobject_cast<IBrokerModule *>(loader.instance())
        : nullptr;
    if (!module) {
        *error = QStringLiteral("Связь с сервером сообщений не загрузилась из файла «%1»: он от "
                                "другой версии рабочего места или ему не хватает библиотек. "
                                "Установите рабочее место заново.\n%2")
                     .arg(shown, loader.errorString());
        return nullptr;
    }
    return module->open(address, error);
}
