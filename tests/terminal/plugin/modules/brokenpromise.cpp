#include <molvacore/ipaybyproviderplugin.h>

#include <QObject>
#include <QtPlugin>

/// Its metadata promise a payment plugin, its object is none.
class BrokenPromise : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID IPayByProviderPlugin_iid)
};

#include "brokenpromise.moc"
