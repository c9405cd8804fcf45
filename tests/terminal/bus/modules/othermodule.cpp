#include <QObject>
#include <QtPlugin>

class OtherModule : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "test.another.module")
};

#include "othermodule.moc"
