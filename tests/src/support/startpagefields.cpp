#include "startpagefields.h"

#include <QApplication>
#include <QLayout>
#include <QTest>

namespace StartPageFields {

QStringList widgets(const QWidget *page)
{
    QStringList found;
    const QList<QObject *> objects = page->findChildren<QObject *>();
    for (const QObject *object : objects) {
        const bool part =
            qobject_cast<const QWidget *>(object) || qobject_cast<const QLayout *>(object);
        if (part && !object->objectName().isEmpty()
            && !object->objectName().startsWith(QLatin1String("qt_")))
            found.append(object->objectName() + QStringLiteral(": ")
                         + QString::fromLatin1(object->metaObject()->className()));
    }
    found.sort();
    return found;
}

QStringList tabOrder(QWidget *page, QWidget *first)
{
    QStringList visited;
    first->setFocus();
    for (int step = 0; step < 50; ++step) {
        QWidget *focused = QApplication::focusWidget();
        if (!focused || !page->isAncestorOf(focused) || visited.contains(focused->objectName()))
            break;
        visited.append(focused->objectName());
        QTest::keyClick(focused, Qt::Key_Tab);
    }
    return visited;
}

QStringList types(const QVariantMap &map)
{
    QStringList found;
    for (auto entry = map.cbegin(); entry != map.cend(); ++entry)
        found.append(entry.key() + QStringLiteral(": ")
                     + QString::fromLatin1(entry.value().typeName()));
    return found;
}

} // namespace StartPageFields
