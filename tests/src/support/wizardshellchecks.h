#pragma once

#include "openwizard.h"

#include <molvacore/ipaydialog.h>

#include <QCoreApplication>
#include <QEvent>
#include <QMetaMethod>
#include <QSignalSpy>
#include <QTimer>

#include <memory>

/// What holds for the shells of both wizards. Each function is the body of a test of its own.
template<class Wizard>
struct WizardShellChecks
{
    static std::unique_ptr<Wizard> bare()
    {
        return std::make_unique<Wizard>(QFont(), HostDatabase::box().currency(),
                                        basix::FixNumber(100, 12345), nullptr);
    }

    static void metaObject(const char *className)
    {
        const QMetaObject &meta = Wizard::staticMetaObject;
        QCOMPARE(QByteArray(meta.className()), QByteArray(className));
        QCOMPARE(meta.superClass(), &QWizard::staticMetaObject);
        QCOMPARE(meta.propertyCount(), meta.propertyOffset());
        QCOMPARE(meta.enumeratorCount(), meta.enumeratorOffset());

        QStringList methods;
        for (int index = meta.methodOffset(); index < meta.methodCount(); ++index) {
            const QMetaMethod method = meta.method(index);
            QCOMPARE(method.methodType(), QMetaMethod::Signal);
            QByteArrayList names = method.parameterNames();
            methods.append(QString::fromLatin1(method.methodSignature() + ' ' + names.join(',')));
        }
        QCOMPARE(
            methods,
            (QStringList{QStringLiteral("incomingMessage(QVariantMap,QString) headers,message"),
                         QStringLiteral("sendMessage(QString,QVariant) destination,data"),
                         QStringLiteral("paymentStatus(QVariant) status"),
                         QStringLiteral("savePaymentAsTemplate(Payment) ")}));

        const auto wizard = bare();
        QVERIFY2(static_cast<void *>(static_cast<QWizard *>(wizard.get()))
                     == static_cast<void *>(wizard.get()),
                 "QWizard is the first base");
        QVERIFY(dynamic_cast<IPayDialog *>(static_cast<QWizard *>(wizard.get())));
    }

    static void startsEmpty()
    {
        const auto wizard = bare();
        QVERIFY(wizard->pageIds().isEmpty());
        QVERIFY(!wizard->provider());
        QVERIFY(!wizard->comProfile());
        QVERIFY(!wizard->payCheckProfile());
        QVERIFY(*wizard->currency() == HostDatabase::box().currency());
        QVERIFY(*wizard->prepay() == basix::FixNumber(100, 12345));
        QVERIFY(!wizard->info().isValid());
        QVERIFY(!wizard->pcWrapper());
        QVERIFY(wizard->providerParams().isEmpty());
        QCOMPARE(wizard->providerId(), qint64(-1));
        QCOMPARE(wizard->newProviderId(), qint64(-1));
        QFont large;
        large.setPixelSize(40);
        const Wizard withFont(large, HostDatabase::box().currency(), basix::FixNumber(), nullptr);
        QCOMPARE(withFont.inputFont(), large);
        QVERIFY(!wizard->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
        const QWizard plain;
        QCOMPARE(wizard->windowFlags(), plain.windowFlags());
    }

    static void dialogResults(const Provider &provider)
    {
        const auto wizard = bare();
        wizard->setProvider(provider);
        const IPayDialog &dialog = *wizard;
        QVERIFY(dialog.payment().isEmpty());
        QVERIFY(dialog.immidiatlyPost());
        QCOMPARE(dialog.providerId(), provider.id());
        QCOMPARE(dialog.newProviderId(), provider.id());
        QVERIFY(!dialog.needChangeProvider());
        QVERIFY(dialog.paymentIsSended());
    }

    static void form(const char *objectName, QSizePolicy::Policy vertical)
    {
        const auto wizard = bare();
        wizard->createPages(Provider());
        QCOMPARE(wizard->objectName(), QString::fromLatin1(objectName));
        QCOMPARE(wizard->size(), QSize(800, 600));
        QCOMPARE(wizard->sizePolicy().horizontalPolicy(), QSizePolicy::Fixed);
        QCOMPARE(wizard->sizePolicy().verticalPolicy(), vertical);
        QCOMPARE(wizard->sizePolicy().horizontalStretch(), 0);
        QCOMPARE(wizard->sizePolicy().verticalStretch(), 0);
        QCOMPARE(wizard->wizardStyle(), QWizard::ModernStyle);
        QCOMPARE(wizard->windowTitle(), QStringLiteral("Wizard"));

        const auto named = bare();
        named->setObjectName(QStringLiteral("named by the host"));
        QSizePolicy policy = named->sizePolicy();
        policy.setHeightForWidth(true);
        named->setSizePolicy(policy);
        named->createPages(Provider());
        QCOMPARE(named->objectName(), QStringLiteral("named by the host"));
        QVERIFY(named->sizePolicy().hasHeightForWidth());
    }

    static void pages(const QStringList &classNames, const Provider &provider)
    {
        const auto wizard = bare();
        wizard->setProvider(provider);
        wizard->createPages(provider);
        QCOMPARE(wizard->pageIds(), (QList<int>{0, 1, 2}));
        QCOMPARE(wizard->startId(), 0);
        QCOMPARE(wizard->titleFormat(), Qt::PlainText);
        QCOMPARE(wizard->subTitleFormat(), Qt::PlainText);
        QStringList found;
        for (const int id : wizard->pageIds()) {
            found.append(QString::fromLatin1(wizard->page(id)->metaObject()->className()));
            QVERIFY2(wizard->isAncestorOf(wizard->page(id)), "the wizard owns its pages");
        }
        QCOMPARE(found, classNames);
        QCOMPARE(wizard->page(0)->title(), provider.checkName());
        QCOMPARE(wizard->page(0)->subTitle(), QStringLiteral("Ввод данных абонента"));
        QCOMPARE(wizard->page(1)->title(), QString());
        QCOMPARE(wizard->page(1)->subTitle(), QString());
        QCOMPARE(wizard->page(2)->title(), provider.checkName());
        QCOMPARE(wizard->page(2)->subTitle(), QStringLiteral("Оплата услуг"));
    }

    static void recordsAreCopies(const Provider &provider)
    {
        const auto wizard = bare();
        wizard->setProvider(provider);
        wizard->setComProfile(BoxComProfile(3, QStringLiteral("A")));
        wizard->setPayCheckProfile(PaymentCheckProfile(4, QStringLiteral("B")));
        const auto held = wizard->provider();
        const auto heldCom = wizard->comProfile();
        const auto heldCheck = wizard->payCheckProfile();

        // What the caller does with its own record later changes nothing here.
        provider.parameters().first()->setValue(QStringLiteral("changed by the caller"));
        QCOMPARE(held->parameters().first()->value(), QString());

        Provider other = provider;
        other.setId(1);
        wizard->setProvider(other);
        wizard->setComProfile(BoxComProfile());
        wizard->setPayCheckProfile(PaymentCheckProfile());
        QCOMPARE(held->id(), provider.id());
        QCOMPARE(heldCom->id(), qint64(3));
        QCOMPARE(heldCheck->id(), qint64(4));
        QCOMPARE(wizard->provider()->id(), qint64(1));
        QVERIFY(!wizard->comProfile()->isValid());
        QVERIFY(!wizard->payCheckProfile()->isValid());
        QVERIFY(wizard->provider() != held);
    }

    static void parametersByName()
    {
        Provider provider;
        provider.addParameter(
            {QStringLiteral("account"), QStringLiteral("first"), QStringLiteral("1")});
        provider.addParameter({QStringLiteral("period"), QStringLiteral("Период"), QString()});
        provider.addParameter(
            {QStringLiteral("account"), QStringLiteral("second"), QStringLiteral("2")});
        const auto wizard = bare();
        wizard->setProvider(provider);
        QCOMPARE(wizard->providerParams().keys(),
                 (QStringList{QStringLiteral("account"), QStringLiteral("period")}));
        QCOMPARE(wizard->providerParams().value(QStringLiteral("account")).title(),
                 QStringLiteral("second"));

        // Another provider replaces the parameters of the first.
        Provider other;
        other.addParameter({QStringLiteral("numdoc"), QString(), QString()});
        wizard->setProvider(other);
        QCOMPARE(wizard->providerParams().keys(), QStringList{QStringLiteral("numdoc")});

        wizard->setProviderParams({{QStringLiteral("x"), ProviderParameter()}});
        QCOMPARE(wizard->providerParams().keys(), QStringList{QStringLiteral("x")});
    }

    static void nullHostObjects()
    {
        const auto wizard = bare();
        wizard->createPages(Provider());
        QVERIFY(
            !wizard->setMessageReciever(nullptr, SIGNAL(incomingMessage(QVariantMap, QString))));
        QVERIFY(!wizard->setMessageSender(nullptr, SLOT(sendMessage(QString, QVariant))));
        QVERIFY(!wizard->setPayStatusReciever(nullptr, SIGNAL(paymentStatus(QVariant))));
        QVERIFY(wizard->setTemplatesConnection(nullptr, SLOT(saveTemplate(Payment))));
        emit wizard->sendMessage(QString(), QVariant());
        emit wizard->savePaymentAsTemplate(Payment());
    }

    /// The string-based connect logs a warning each time.
    static void wrongSignatures()
    {
        const auto wizard = bare();
        wizard->createPages(Provider());
        FakeHost host;
        QVERIFY(!wizard->setMessageReciever(&host, SIGNAL(incomingMessages(QVariantMap, QString))));
        QVERIFY(!wizard->setMessageReciever(&host, SIGNAL(paymentStatus(QVariant))));
        QVERIFY(!wizard->setMessageReciever(&host, ""));
        QVERIFY(!wizard->setMessageSender(&host, SLOT(sendMessage(QVariant, QString))));
        QVERIFY(!wizard->setMessageSender(
            &host, "sendMessage(QString,QVariant)")); // without the code of SLOT()
        QVERIFY(!wizard->setPayStatusReciever(&host, SIGNAL(paymentStatus(int))));
        QVERIFY(wizard->setTemplatesConnection(&host, SLOT(noSuchSlot(Payment))));
        emit wizard->sendMessage(QString(), QVariant());
        emit wizard->savePaymentAsTemplate(Payment());
        QVERIFY(host.sent().isEmpty());
        QVERIFY(host.templates().isEmpty());
    }

    static void rightSignatures()
    {
        const auto wizard = bare();
        wizard->createPages(Provider());
        FakeHost host;
        QSignalSpy incoming(wizard.get(), &Wizard::incomingMessage);
        QSignalSpy status(wizard.get(), &Wizard::paymentStatus);
        QVERIFY(wizard->setMessageReciever(&host, SIGNAL(incomingMessage(QVariantMap, QString))));
        QVERIFY(wizard->setMessageSender(&host, SLOT(sendMessage(QString, QVariant))));
        QVERIFY(wizard->setPayStatusReciever(&host, SIGNAL(paymentStatus(QVariant))));
        QVERIFY(wizard->setTemplatesConnection(&host, SLOT(saveTemplate(Payment))));
        // Before anything happens the wizard emits nothing by itself.
        QCOMPARE(incoming.size() + status.size() + host.sent().size() + host.templates().size(), 0);

        emit host.incomingMessage({}, QStringLiteral("{}"));
        emit host.paymentStatus(5);
        emit wizard->sendMessage(QStringLiteral("/to"), 6);
        emit wizard->savePaymentAsTemplate(Payment());
        QCOMPARE(incoming.size(), 1);
        QCOMPARE(status.size(), 1);
        QCOMPARE(host.sent().size(), 1);
        QCOMPARE(host.templates().size(), 1);
    }

    static void relayPaths(const Provider &provider, const QVariantList &account)
    {
        OpenWizard<Wizard> open(provider);
        open.open();
        auto *start = open.wizard.page(0);
        QVERIFY(QMetaObject::invokeMethod(start, "getClientData"));
        QCOMPARE(open.host.sent().size(), 1);
        QCOMPARE(open.host.sent().first().destination, QStringLiteral("/app/box_plugin_check_pay"));

        QSignalSpy incoming(&open.wizard, &Wizard::incomingMessage);
        QSignalSpy completeChanged(start, SIGNAL(completeChanged()));
        open.answer(BillingAnswers::data(open.host.lastUid(), account));
        QCOMPARE(incoming.size(), 1);
        QVERIFY2(!completeChanged.isEmpty(), "the start page has heard the answer");

        // The payment page speaks to the host too, but the bus is not brought to it.
        auto *payment = open.wizard.page(2);
        QVERIFY(QMetaObject::invokeMethod(payment, "sendMessage",
                                          Q_ARG(QString, QStringLiteral("/app/add_pay_pack")),
                                          Q_ARG(QVariant, 1)));
        QCOMPARE(open.host.sent().size(), 2);
        QCOMPARE(open.host.sent().last().destination, QStringLiteral("/app/add_pay_pack"));
        QCOMPARE(payment->metaObject()->indexOfSlot("incomingMessage(QVariantMap,QString)"), -1);
        QCOMPARE(
            open.wizard.page(1)->metaObject()->indexOfSlot("incomingMessage(QVariantMap,QString)"),
            -1);
    }

    static void languageChangeTakesTheTitle(const Provider &provider)
    {
        OpenWizard<Wizard> open(provider);
        QCOMPARE(open.wizard.windowTitle(), provider.checkName());
        QEvent fontChange(QEvent::FontChange);
        QCoreApplication::sendEvent(&open.wizard, &fontChange);
        QCOMPARE(open.wizard.windowTitle(), provider.checkName());
        QEvent event(QEvent::LanguageChange);
        QCoreApplication::sendEvent(&open.wizard, &event);
        QCOMPARE(open.wizard.windowTitle(), QStringLiteral("Wizard"));
        QCOMPARE(open.wizard.page(0)->title(), provider.checkName());
        // Before the pages exist there is no form to translate; that must do no harm.
        const auto wizard = bare();
        QCoreApplication::sendEvent(wizard.get(), &event);
    }

    static void execute(int result, bool expected)
    {
        OpenWizard<Wizard> open(Provider{});
        QSignalSpy finished(&open.wizard, &QDialog::finished);
        QTimer::singleShot(0, &open.wizard, [&open, result] {
            if (result < 0)
                open.wizard.close();
            else
                QMetaObject::invokeMethod(&open.wizard, "done", Q_ARG(int, result));
        });
        QCOMPARE(open.wizard.execute(), expected);
        QCOMPARE(finished.size(), 1);
        QVERIFY(open.host.sent().isEmpty());
        QVERIFY(open.wizard.payment().isEmpty());
    }

    static void executeByEscape()
    {
        OpenWizard<Wizard> open(Provider{});
        QTimer::singleShot(0, &open.wizard,
                           [&open] { QTest::keyClick(&open.wizard, Qt::Key_Escape); });
        QVERIFY(!open.wizard.execute());
    }
};
