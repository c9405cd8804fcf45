#include <bus/ibrokermodule.h>
#include <bus/messagebus.h>

#include <QObject>

// Defined nowhere: the module was built for a program that offered more.
extern "C" int functionOfAnotherProgram();

class MissingBus : public QObject, public IBrokerModule
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID IBrokerModule_iid)
    Q_INTERFACES(IBrokerModule)

public:
    std::unique_ptr<MessageBus> open(const QString &, QString *) override { return nullptr; }
    // Called from code that no test reaches: only a loader that looks for every symbol at once
    // notices.
    Q_INVOKABLE int late() { return functionOfAnotherProgram(); }
};

#include "missingbus.moc"
