#include <bills/codeencoding.h>

#include <QTest>

using Encoding = std::optional<CodeEncoding>;
Q_DECLARE_METATYPE(CodeEncoding)
Q_DECLARE_METATYPE(Encoding)

namespace {
const QString russian = QStringLiteral("АО Селмар Ривенхолд, ёлка и Щука");
}

class TestCodeEncoding : public QObject
{
    Q_OBJECT

private slots:
    void namesAreUnderstood_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<Encoding>("expected");
        QTest::newRow("windows") << QStringLiteral("windows-1251")
                                 << Encoding(CodeEncoding::Windows1251);
        QTest::newRow("number") << QStringLiteral("1251") << Encoding(CodeEncoding::Windows1251);
        QTest::newRow("utf") << QStringLiteral("UTF-8") << Encoding(CodeEncoding::Utf8);
        QTest::newRow("utf without hyphen")
            << QStringLiteral(" utf8 ") << Encoding(CodeEncoding::Utf8);
        QTest::newRow("koi") << QStringLiteral("KOI8-R") << Encoding(CodeEncoding::Koi8R);
        QTest::newRow("digit") << QStringLiteral("3") << Encoding(CodeEncoding::Koi8R);
        QTest::newRow("digit 0") << QStringLiteral("0") << Encoding();
        QTest::newRow("digit 4") << QStringLiteral("4") << Encoding();
        QTest::newRow("unknown") << QStringLiteral("utf-16") << Encoding();
        QTest::newRow("empty") << QString() << Encoding();
    }

    void namesAreUnderstood()
    {
        QFETCH(QString, name);
        QFETCH(Encoding, expected);
        QCOMPARE(CodeEncodings::fromName(name), expected);
    }

    void bytesOfALetter_data()
    {
        QTest::addColumn<CodeEncoding>("encoding");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("windows-1251") << CodeEncoding::Windows1251 << QByteArrayLiteral("\xd9\xb8");
        QTest::newRow("UTF-8") << CodeEncoding::Utf8 << QByteArrayLiteral("\xd0\xa9\xd1\x91");
        QTest::newRow("KOI8-R") << CodeEncoding::Koi8R << QByteArrayLiteral("\xfd\xa3");
    }

    void bytesOfALetter()
    {
        QFETCH(CodeEncoding, encoding);
        QTEST(CodeEncodings::encode(QStringLiteral("Щё"), encoding), "bytes");
        QFETCH(QByteArray, bytes);
        QCOMPARE(CodeEncodings::decode(bytes, encoding), QStringLiteral("Щё"));
    }

    void lackingCharacters_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<CodeEncoding>("encoding");
        QTest::addColumn<QString>("lacking");
        const QString names = QStringLiteral("АО «Ёж» № 5 — 1₽ é😀😀");
        QTest::newRow("windows-1251")
            << names << CodeEncoding::Windows1251 << QStringLiteral("₽é😀");
        QTest::newRow("KOI8-R") << names << CodeEncoding::Koi8R
                                << QStringLiteral("«»№—₽é😀");
        QTest::newRow("UTF-8") << names << CodeEncoding::Utf8 << QString();
        QTest::newRow("nothing") << QString() << CodeEncoding::Koi8R << QString();
    }

    void lackingCharacters()
    {
        QFETCH(QString, text);
        QFETCH(CodeEncoding, encoding);
        QTEST(CodeEncodings::lacking(text, encoding), "lacking");
    }

    void detected_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<Encoding>("declared");
        QTest::addColumn<CodeEncoding>("expected");
        const auto bytes = [](CodeEncoding encoding, const QString &text) {
            return CodeEncodings::encode(text, encoding);
        };
        for (const CodeEncoding real : CodeEncodings::all()) {
            for (const CodeEncoding promised : CodeEncodings::all()) {
                QTest::newRow(
                    qPrintable(QStringLiteral("%1 declared as %2")
                                   .arg(CodeEncodings::name(real), CodeEncodings::name(promised))))
                    << bytes(real, russian) << Encoding(promised) << real;
            }
            QTest::newRow(
                qPrintable(QStringLiteral("%1 undeclared").arg(CodeEncodings::name(real))))
                << bytes(real, russian) << Encoding() << real;
            QTest::newRow(
                qPrintable(QStringLiteral("%1 in capitals").arg(CodeEncodings::name(real))))
                << bytes(real, QStringLiteral("ВОДОКАНАЛ")) << Encoding(real) << real;
            QTest::newRow(
                qPrintable(QStringLiteral("ASCII declared as %1").arg(CodeEncodings::name(real))))
                << QByteArrayLiteral("PersAcc=1") << Encoding(real) << real;
        }
        QByteArray cut = bytes(CodeEncoding::Utf8, russian);
        cut.chop(1);
        QTest::newRow("UTF-8 cut inside a letter")
            << cut << Encoding(CodeEncoding::Utf8) << CodeEncoding::Utf8;
        QTest::newRow("ASCII undeclared")
            << QByteArrayLiteral("123") << Encoding() << CodeEncoding::Utf8;
        QTest::newRow("guillemets of windows-1251")
            << bytes(CodeEncoding::Windows1251, QStringLiteral("АО «Вода» № 5"))
            << Encoding(CodeEncoding::Utf8) << CodeEncoding::Windows1251;
    }

    void detected()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(Encoding, declared);
        QTEST(CodeEncodings::detect(bytes, declared), "expected");
    }

    void encodedTwiceIsRepaired_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        QTest::newRow("taken for windows-1251")
            << CodeEncodings::decode(russian.toUtf8(), CodeEncoding::Windows1251) << russian;
        QTest::newRow("taken for Latin-1") << QString::fromLatin1(russian.toUtf8()) << russian;
        const QString withNull = russian + QChar(QChar::Null) + russian;
        const QByteArray nullBytes = withNull.toUtf8();
        QTest::newRow("with a null character")
            << QString::fromLatin1(nullBytes.constData(), nullBytes.size()) << withNull;
        QTest::newRow("in order") << russian << QString();
        QTest::newRow("ASCII") << QStringLiteral("PersAcc=1") << QString();
        QTest::newRow("empty") << QString() << QString();
    }

    void encodedTwiceIsRepaired()
    {
        QFETCH(QString, text);
        QTEST(CodeEncodings::repaired(text).value_or(QString()), "expected");
    }
};

QTEST_GUILESS_MAIN(TestCodeEncoding)
#include "tst_codeencoding.moc"
