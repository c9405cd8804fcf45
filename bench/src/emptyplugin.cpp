#include <QObject>
#include <QtPlugin>

/// What a Qt plugin needs at least to be loaded.
class EmptyPlugin final : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "selmar.bench.emptyplugin")
};

#include "emptyplugin.moc"
