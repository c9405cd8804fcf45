#pragma once

#include <QAbstractItemModel>
#include <QColor>
#include <QString>
#include <QStringList>

/// A table as text, so that a test compares all of it at once and shows what differs.
namespace TableText {

/// First the horizontal captions, then a line per row: display texts joined with " | ".
inline QStringList shown(const QAbstractItemModel &model)
{
    QStringList lines;
    QStringList cells;
    for (int column = 0; column < model.columnCount(); ++column)
        cells << model.headerData(column, Qt::Horizontal).toString();
    lines << cells.join(QLatin1String(" | "));
    for (int row = 0; row < model.rowCount(); ++row) {
        cells.clear();
        for (int column = 0; column < model.columnCount(); ++column)
            cells << model.index(row, column).data().toString();
        lines << cells.join(QLatin1String(" | "));
    }
    return lines;
}

/// A line per row: the values of `role` with their type, "-" for an invalid one.
inline QStringList values(const QAbstractItemModel &model, int role)
{
    QStringList lines;
    for (int row = 0; row < model.rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < model.columnCount(); ++column) {
            const QVariant value = model.index(row, column).data(role);
            const QString text = value.userType() == QMetaType::QColor
                ? value.value<QColor>().name()
                : value.toString();
            cells << (value.isValid()
                          ? QStringLiteral("%1 %2").arg(QLatin1String(value.typeName()), text)
                          : QStringLiteral("-"));
        }
        lines << cells.join(QLatin1String(" | "));
    }
    return lines;
}

/// A line per row: "s" selectable, "n" enabled, "e" editable, "c" checkable, per column.
inline QStringList flags(const QAbstractItemModel &model)
{
    QStringList lines;
    for (int row = 0; row < model.rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < model.columnCount(); ++column) {
            const Qt::ItemFlags of = model.index(row, column).flags();
            QString text;
            text += of & Qt::ItemIsSelectable ? QStringLiteral("s") : QString();
            text += of & Qt::ItemIsEnabled ? QStringLiteral("n") : QString();
            text += of & Qt::ItemIsEditable ? QStringLiteral("e") : QString();
            text += of & Qt::ItemIsUserCheckable ? QStringLiteral("c") : QString();
            const Qt::ItemFlags known = Qt::ItemIsSelectable | Qt::ItemIsEnabled
                | Qt::ItemIsEditable | Qt::ItemIsUserCheckable;
            text += of & ~known & ~Qt::ItemNeverHasChildren ? QStringLiteral("?") : QString();
            cells << text;
        }
        lines << cells.join(QLatin1Char(' '));
    }
    return lines;
}

} // namespace TableText
