#pragma once

#include <QStyledItemDelegate>

/// Cells with texts of billing: shown bounded and cleaned (SrShownText), while the model keeps and
/// hands on what billing sent.
class SrTextItemDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QString displayText(const QVariant &value, const QLocale &locale) const override;
};
