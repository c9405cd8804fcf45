#include <molvacore/provider.h>

#include <QTest>

namespace {

Provider sample()
{
    Provider provider;
    provider.setId(18722);
    provider.setWorkProviderId(28722);
    provider.setGroupId(5);
    provider.setCheckName(QStringLiteral("Водоканал"));
    provider.setName(QStringLiteral("Водоканал (ФЛ)"));
    provider.setLegalName(QStringLiteral("АО «Водоканал»"));
    provider.setInn(QStringLiteral("7700000000"));
    provider.setPhones(QStringLiteral("84950000001, 84950000002"));
    provider.addParameter(
        ProviderParameter(QStringLiteral("account"), QStringLiteral("Лицевой счёт")));
    provider.addParameter(ProviderParameter(QStringLiteral("period"), QStringLiteral("Период"),
                                            QStringLiteral("01.2026")));
    return provider;
}

/// As payments are filled: the provider comes by value, and its parameters are set through the
/// list.
Provider filled(Provider provider, const QString &account)
{
    for (const QSharedPointer<ProviderParameter> &parameter : provider.parameters()) {
        if (parameter->name() == QLatin1String("account"))
            parameter->setValue(account);
    }
    return provider;
}

QString account(const Provider &provider)
{
    return provider.parameters().first()->value();
}

} // namespace

class tst_Provider : public QObject
{
    Q_OBJECT

private slots:
    void fields();
    void fillingChangesOnlyThatProvider();
    void copyMadeAfterTheListWasTaken();
    void assignedProvidersNeverShare();
    void selfAssignmentKeepsTheParameters();
    void setParametersCopies();
    void addParameterCopies();
    void equalNamesStayBoth();
    void changedCopyLeavesTheOriginal();
    void equality();
};

void tst_Provider::fields()
{
    const Provider provider = sample();
    QCOMPARE(provider.id(), 18722);
    QCOMPARE(provider.workProviderId(), 28722);
    QCOMPARE(provider.groupId(), 5);
    QCOMPARE(provider.checkName(), QStringLiteral("Водоканал"));
    QCOMPARE(provider.name(), QStringLiteral("Водоканал (ФЛ)"));
    QCOMPARE(provider.legalName(), QStringLiteral("АО «Водоканал»"));
    QCOMPARE(provider.inn(), QStringLiteral("7700000000"));
    QCOMPARE(provider.phones(), QStringLiteral("84950000001, 84950000002"));
    QCOMPARE(provider.parameters().size(), 2);
    QCOMPARE(provider.parameters().at(1)->title(), QStringLiteral("Период"));
    QCOMPARE(provider.parameters().at(1)->value(), QStringLiteral("01.2026"));
}

void tst_Provider::fillingChangesOnlyThatProvider()
{
    const Provider original = sample();
    const Provider first = filled(original, QStringLiteral("001"));
    const Provider second = filled(original, QStringLiteral("002"));
    QCOMPARE(account(original), QString());
    QCOMPARE(account(first), QStringLiteral("001"));
    QCOMPARE(account(second), QStringLiteral("002"));
}

void tst_Provider::copyMadeAfterTheListWasTaken()
{
    const Provider original = sample();
    const QList<QSharedPointer<ProviderParameter>> parameters = original.parameters();
    const Provider copy = original;
    parameters.first()->setValue(QStringLiteral("003"));
    QCOMPARE(account(original), QStringLiteral("003"));
    QCOMPARE(account(copy), QString());
}

void tst_Provider::assignedProvidersNeverShare()
{
    const Provider original = sample();
    Provider copy;
    copy = original;
    copy.parameters().first()->setValue(QStringLiteral("004"));
    QCOMPARE(account(original), QString());
    QList<Provider> list{original, original};
    list[0].parameters().first()->setValue(QStringLiteral("005"));
    QCOMPARE(account(list.at(1)), QString());
    QCOMPARE(account(original), QString());
}

void tst_Provider::selfAssignmentKeepsTheParameters()
{
    Provider provider = sample();
    const Provider &same = provider;
    provider = same;
    QCOMPARE(provider, sample());
}

void tst_Provider::setParametersCopies()
{
    const Provider source = sample();
    Provider provider;
    provider.setParameters(source.parameters() << QSharedPointer<ProviderParameter>());
    QCOMPARE(provider.parameters().size(), 2);
    provider.parameters().first()->setValue(QStringLiteral("006"));
    QCOMPARE(account(source), QString());
    provider.setParameters(provider.parameters());
    QCOMPARE(account(provider), QStringLiteral("006"));
}

void tst_Provider::addParameterCopies()
{
    ProviderParameter parameter(QStringLiteral("account"), QString());
    Provider provider;
    provider.addParameter(parameter);
    parameter.setValue(QStringLiteral("007"));
    QCOMPARE(account(provider), QString());
}

void tst_Provider::equalNamesStayBoth()
{
    Provider provider = sample();
    provider.addParameter(
        ProviderParameter(QStringLiteral("account"), QString(), QStringLiteral("second")));
    QCOMPARE(provider.parameters().size(), 3);
    QCOMPARE(provider.parameters().last()->value(), QStringLiteral("second"));
}

void tst_Provider::changedCopyLeavesTheOriginal()
{
    const Provider original = sample();
    Provider copy = original;
    copy.setName(QStringLiteral("другой"));
    copy.addParameter(ProviderParameter(QStringLiteral("new"), QString()));
    QCOMPARE(original, sample());
    QVERIFY(copy != original);
}

void tst_Provider::equality()
{
    QCOMPARE(sample(), sample());
    QVERIFY(filled(sample(), QStringLiteral("008")) != sample());
    Provider fewer = sample();
    fewer.setParameters(fewer.parameters().mid(0, 1));
    QVERIFY(fewer != sample());
    QVERIFY(sample() != fewer);
    QCOMPARE(Provider(), Provider());
}

QTEST_GUILESS_MAIN(tst_Provider)
#include "tst_provider.moc"
