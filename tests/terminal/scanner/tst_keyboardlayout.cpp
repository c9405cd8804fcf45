#include <scanner/keyboardlayout.h>

#include <QTest>

Q_DECLARE_METATYPE(KeyboardLayout::Mishap)

class TestKeyboardLayout : public QObject
{
    Q_OBJECT

private slots:
    void typed_data()
    {
        using KeyboardLayout::Mishap;
        QTest::addColumn<QString>("text");
        QTest::addColumn<Mishap>("mishap");
        QTest::addColumn<QString>("expected");
        const QString code =
            QStringLiteral("ST00012|Name=АО \"Вода\"|PersAcc=7|PaymPeriod=10.2026");
        QTest::newRow("as it is") << code << Mishap::None << code;
        QTest::newRow("Russian layout")
            << code << Mishap::RussianLayout
            << QStringLiteral("ЫЕ00012/Тфьу=АО ЭВодаЭ/ЗукыФсс=7/ЗфньЗукшщв=10ю2026");
        QTest::newRow("receipt under the Russian layout")
            << QStringLiteral("t=20261121T1200&s=1.50") << Mishap::RussianLayout
            << QStringLiteral("е=20261121Е1200?ы=1ю50");
        QTest::newRow("small letters")
            << QStringLiteral("qwertyuiop[]asdfghjkl;'zxcvbnm,./`") << Mishap::RussianLayout
            << QStringLiteral("йцукенгшщзхъфывапролджэячсмитьбю.ё");
        QTest::newRow("capitals") << QStringLiteral("QWERTYUIOP{}ASDFGHJKL:\"ZXCVBNM<>?~")
                                  << Mishap::RussianLayout
                                  << QStringLiteral("ЙЦУКЕНГШЩЗХЪФЫВАПРОЛДЖЭЯЧСМИТЬБЮ,Ё");
        QTest::newRow("signs") << QStringLiteral("!@#$%^&*()_+-=\\| 0") << Mishap::RussianLayout
                               << QStringLiteral("!\"№;%:?*()_+-=\\/ 0");
        QTest::newRow("dropped Cyrillic")
            << code << Mishap::DroppedCyrillic
            << QStringLiteral("ST00012|Name= \"\"|PersAcc=7|PaymPeriod=10.2026");
        QTest::newRow("empty") << QString() << Mishap::RussianLayout << QString();
    }

    void typed()
    {
        QFETCH(QString, text);
        QFETCH(KeyboardLayout::Mishap, mishap);
        QTEST(KeyboardLayout::typed(text, mishap), "expected");
    }
};

QTEST_GUILESS_MAIN(TestKeyboardLayout)
#include "tst_keyboardlayout.moc"
