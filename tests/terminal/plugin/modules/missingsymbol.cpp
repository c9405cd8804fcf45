#include <molvacore/ipaybyproviderplugin.h>

#include <QObject>
#include <QtPlugin>

// Defined nowhere: the module was linked against a library that has changed since.
extern "C" int functionOfAnOlderLibrary();

class MissingSymbol : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID IPayByProviderPlugin_iid)

public:
    // Called from code that no test reaches: only a loader that looks for every symbol at once
    // notices.
    Q_INVOKABLE int late() { return functionOfAnOlderLibrary(); }
};

#include "missingsymbol.moc"
