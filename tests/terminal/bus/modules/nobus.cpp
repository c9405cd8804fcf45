#include <bus/ibrokermodule.h>

#include <QObject>

/// Its metadata promise a module for a broker, its object is none.
class NoBus : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID IBrokerModule_iid)
};

#include "nobus.moc"
