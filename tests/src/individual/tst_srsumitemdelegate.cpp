#include "individual/srsumitemdelegate.h"

#include "sumeditorrows.h"

#include <QTest>

class TestSrSumItemDelegate : public QObject
{
    Q_OBJECT

private slots:
    void isAStyledDelegate()
    {
        QCOMPARE(SrSumItemDelegate::staticMetaObject.superClass(),
                 &QStyledItemDelegate::staticMetaObject);
        QCOMPARE(SrSumItemDelegate::staticMetaObject.className(), "SrSumItemDelegate");
    }
    void editor_data() { SumEditorRows::add(); }
    void editor()
    {
        QFETCH(QVariant, editValue);
        QFETCH(double, value);
        SumEditorRows::check<SrSumItemDelegate>(editValue, value);
    }
};

QTEST_MAIN(TestSrSumItemDelegate)
#include "tst_srsumitemdelegate.moc"
