#pragma once

#include <QDoubleSpinBox>
#include <QStandardItemModel>
#include <QStyleOptionViewItem>
#include <QStyledItemDelegate>
#include <QTest>

#include <memory>

/// What the amount delegates of both wizards must do alike: the editor that `Delegate` makes for an
/// edit value.
namespace SumEditorRows {

inline void add()
{
    QTest::addColumn<QVariant>("editValue");
    QTest::addColumn<double>("value");
    QTest::newRow("amount") << QVariant(150.25) << 150.25;
    QTest::newRow("third decimal is rounded") << QVariant(0.016) << 0.02;
    QTest::newRow("text") << QVariant(QStringLiteral("7.5")) << 7.5;
    QTest::newRow("nothing") << QVariant() << 0.0;
    QTest::newRow("no number") << QVariant(QStringLiteral("семь")) << 0.0;
    QTest::newRow("negative is cut off") << QVariant(-3.0) << 0.0;
    QTest::newRow("the largest") << QVariant(1000000.0) << 1000000.0;
    QTest::newRow("beyond the largest is cut off") << QVariant(1000000.01) << 1000000.0;
}

template<class Delegate>
void check(const QVariant &editValue, double value)
{
    QStandardItemModel model(1, 1);
    model.setData(model.index(0, 0), editValue, Qt::EditRole);
    QWidget parent;
    const Delegate delegate;
    QWidget *made = delegate.createEditor(&parent, QStyleOptionViewItem(), model.index(0, 0));
    auto *editor = qobject_cast<QDoubleSpinBox *>(made);
    QVERIFY(editor);
    QCOMPARE(editor->parentWidget(), &parent);
    QCOMPARE(editor->minimum(), 0.0);
    QCOMPARE(editor->maximum(), 1000000.0);
    QCOMPARE(editor->decimals(), 2);
    QCOMPARE(editor->value(), value);
    std::unique_ptr<QWidget> withoutModel(
        delegate.createEditor(nullptr, QStyleOptionViewItem(), QModelIndex()));
    QCOMPARE(qobject_cast<QDoubleSpinBox *>(withoutModel.get())->value(), 0.0);
}

} // namespace SumEditorRows
