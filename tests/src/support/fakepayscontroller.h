#pragma once

#include <molvacore/ipayscontrollerwrapper.h>
#include <molvacore/paypack.h>

#include <QSharedPointer>
#include <QVariantMap>
#include <QVector>

#include <functional>

/// A payments controller that does as the test says. What it is told to do and what it was asked
/// stands in a record that outlives it, since the plugin owns and deletes a controller.
class FakePaysController : public IPaysControllerWrapper
{
public:
    struct Record
    {
        bool saves = true;
        bool atOnce = true;
        bool handsOn = true;
        QString handOnError = QStringLiteral("Нет связи с процессингом");
        QVariantMap message = {{QStringLiteral("pack"), QStringLiteral("as handed on")}};
        std::function<void()> whileSaving;    ///< runs inside savePack()
        std::function<void()> whileHandingOn; ///< runs inside handOn()

        QVector<PayPack> packs;     ///< of every savePack(), failed ones included
        QVector<bool> complete;     ///< second argument of every savePack()
        QVector<qint64> handedOn;   ///< argument of every handOn()
        QVector<QVariantMap> taken; ///< message that every handOn() was given
        int alive = 0;              ///< controllers with this record
    };

    explicit FakePaysController(const QSharedPointer<Record> &record);
    ~FakePaysController() override;
    FakePaysController(const FakePaysController &) = delete;
    FakePaysController &operator=(const FakePaysController &) = delete;

    bool savePack(const PayPack &pack, bool complete) override;
    bool handOnAtOnce() const override;
    bool handOn(qint64 packId, QVariantMap &message, QString &error) override;

private:
    QSharedPointer<Record> m_record;
};
