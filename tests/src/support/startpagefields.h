#pragma once

#include <QList>
#include <QString>
#include <QVariantMap>
#include <QWidget>

/// How a form and a request look, as texts to be compared in one go.
namespace StartPageFields {

/// "name: class" of every named widget and layout below `page`, in the order of their creation
/// names; Qt's own are left out.
QStringList widgets(const QWidget *page);
/// Names of the widgets that Tab visits from `first` on, until it leaves `page` or comes back to
/// the first.
QStringList tabOrder(QWidget *page, QWidget *first);
/// "key: type" of every entry, ordered by key.
QStringList types(const QVariantMap &map);

} // namespace StartPageFields
