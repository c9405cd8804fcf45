#include <QObject>
#include <QtPlugin>

/// A plugin of another program.
class ForeignPlugin : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.example.pictures.filter")
};

#include "foreigninterface.moc"
