#include "legal/srlsumitemdelegate.h"

#include "sumeditorrows.h"

#include <QTest>

class TestSrLSumItemDelegate : public QObject
{
    Q_OBJECT

private slots:
    void isAStyledDelegate()
    {
        QCOMPARE(SrLSumItemDelegate::staticMetaObject.superClass(),
                 &QStyledItemDelegate::staticMetaObject);
        QCOMPARE(SrLSumItemDelegate::staticMetaObject.className(), "SrLSumItemDelegate");
    }
    void editor_data() { SumEditorRows::add(); }
    void editor()
    {
        QFETCH(QVariant, editValue);
        QFETCH(double, value);
        SumEditorRows::check<SrLSumItemDelegate>(editValue, value);
    }
};

QTEST_MAIN(TestSrLSumItemDelegate)
#include "tst_srlsumitemdelegate.moc"
