#include "generators.h"
#include "property.h"

#include "individual/srservicesmodel.h"
#include "legal/srdocumentsmodel.h"
#include "srdocument.h"

#include <QSignalSpy>

#include <algorithm>

using basix::FixNumber;
using Generators::Service;
using Services = std::vector<Service>;

namespace {

/// What the rule says, from the amounts that were made up.
bool readyByRule(const Services &services)
{
    const auto any = [&services](auto condition) {
        return std::any_of(services.begin(), services.end(), condition);
    };
    const bool negative = any([](const Service &s) { return s.distributed < 0; });
    const bool distributed = any([](const Service &s) { return s.distributed > 0; });
    const bool due = any([](const Service &s) { return s.topay != 0; });
    return !negative && (distributed || !due);
}

void assign(Services &services, qint64 Service::*amount)
{
    for (Service &service : services) {
        if (service.editable)
            service.distributed = service.*amount;
    }
}

void clear(Services &services)
{
    for (Service &service : services) {
        if (service.editable)
            service.distributed = 0;
    }
}

qint64 total(const Services &services)
{
    qint64 sum = 0;
    for (const Service &service : services)
        sum += service.distributed;
    return sum;
}

QList<SrService> records(const Services &services)
{
    QList<SrService> list;
    for (const Service &service : services) {
        SrService record;
        record.parseCheckList(service.descriptors());
        list.append(record);
    }
    return list;
}

SrDocument document(const Services &services, int number)
{
    SrDocument record;
    record.parseCheckList(
        {QVariantMap{{QStringLiteral("name"), QStringLiteral("num")},
                     {QStringLiteral("value"), QStringLiteral("Д-%1").arg(number)}},
         Generators::listed(QStringLiteral("services"), services)});
    return record;
}

/// Exactly these amounts, and nothing else touched.
void assertDistributed(const QList<SrService> &found, const Services &expected)
{
    RC_ASSERT(found == records(expected));
}

QString totalShown(const QAbstractItemModel &model, int column)
{
    return model.index(model.rowCount() - 1, column).data().toString();
}

struct DocumentCase
{
    Services services;
    bool ticked = false;
};

/// The documents page with its rules written down the simple way.
struct DocumentsByRule
{
    std::vector<DocumentCase> documents;

    void recalculate(DocumentCase &one)
    {
        if (one.ticked)
            assign(one.services, &Service::topay);
        else
            clear(one.services);
    }
    bool ready() const
    {
        bool any = false;
        for (const DocumentCase &one : documents) {
            any = any || one.ticked;
            if (one.ticked && !readyByRule(one.services))
                return false;
        }
        return any;
    }
};

void assertSame(const SRDocumentsModel &model, const DocumentsByRule &rule)
{
    RC_ASSERT(model.isReady() == rule.ready());
    qint64 sum = 0;
    int ticked = 0;
    const QList<SrDocument> found = model.documents();
    for (const DocumentCase &one : rule.documents) {
        sum += total(one.services);
        if (one.ticked) {
            RC_ASSERT(ticked < found.size());
            assertDistributed(found.at(ticked++).services(), one.services);
        }
    }
    RC_ASSERT(ticked == found.size());
    RC_ASSERT(totalShown(model, SRDocumentsModel::DistributedColumn) == Generators::money(sum));
}

} // namespace

class TestDistributionProperties : public QObject
{
    Q_OBJECT

private slots:
    void servicesByChargeAndByDebt();
    void servicesReadiness();
    void documentByDebt();
    void documentReadiness();
    void documentsInAnyOrder();
};

void TestDistributionProperties::servicesByChargeAndByDebt()
{
    CHECK_PROPERTY("each editable service gets its charge, or its debt", [] {
        Services services = *Generators::services();
        SRServicesModel model;
        model.setServices(records(services), FixNumber(), FixNumber());
        const QSignalSpy changes(&model, &SRServicesModel::valueChanged);
        const auto steps = *rc::gen::container<std::vector<bool>>(rc::gen::arbitrary<bool>());
        for (const bool byDebt : steps) {
            if (byDebt)
                model.calcByDebt();
            else
                model.calcByCharge();
            assign(services, byDebt ? &Service::topay : &Service::charge);
            assertDistributed(model.services(), services);
            RC_ASSERT(model.isReady() == readyByRule(services));
            RC_ASSERT(totalShown(model, SRServicesModel::DistributedColumn)
                      == Generators::money(total(services)));
        }
        RC_ASSERT(changes.count() == static_cast<int>(steps.size()));
    });
}

void TestDistributionProperties::servicesReadiness()
{
    CHECK_PROPERTY("ready: nothing negative, something distributed if anything is due", [] {
        const Services services = *Generators::services();
        SRServicesModel model;
        model.setServices(records(services), FixNumber(), FixNumber());
        RC_ASSERT(model.isReady() == readyByRule(services));
        RC_ASSERT(SrService::areReadyToPay(records(services)) == readyByRule(services));
    });
}

void TestDistributionProperties::documentByDebt()
{
    CHECK_PROPERTY("a document takes its services' debts and gives them up again", [] {
        Services services = *Generators::services();
        SrDocument record = document(services, 1);
        const SrDocument untouched = record;
        const QString number = record.docNumber();
        SrDocument copy = record;

        copy.calcByDebt();
        assign(services, &Service::topay);
        assertDistributed(copy.services(), services);
        RC_ASSERT(copy.amount() == FixNumber(100, total(services)));
        RC_ASSERT(copy.isReady() == readyByRule(services));

        copy.cleanDebt();
        clear(services);
        assertDistributed(copy.services(), services);
        RC_ASSERT(copy.amount() == FixNumber(100, total(services)));
        RC_ASSERT(copy.docNumber() == number);
        RC_ASSERT(record == untouched);
    });
}

void TestDistributionProperties::documentReadiness()
{
    CHECK_PROPERTY("a document is ready by the rule of its services", [] {
        const Services services = *Generators::services();
        const SrDocument record = document(services, 7);
        RC_ASSERT(record.isReady() == readyByRule(services));
        RC_ASSERT(record.amount().value() == total(services));
        RC_ASSERT(record.isValid() == !services.empty());
    });
}

void TestDistributionProperties::documentsInAnyOrder()
{
    CHECK_PROPERTY("ticks, unticks, recalculations and edits in any order", [] {
        DocumentsByRule rule;
        SRDocumentsModel model;
        QList<SrDocument> list;
        std::vector<int> documentRows;
        int rows = 0;
        const int count = *rc::gen::inRange(0, 4);
        for (int i = 0; i < count; ++i) {
            const Services services = *Generators::services();
            rule.documents.push_back({services, count == 1});
            list.append(document(services, i));
            documentRows.push_back(rows);
            rows += 1 + static_cast<int>(services.size());
        }
        model.setDocuments(list, FixNumber(), FixNumber());
        RC_ASSERT(model.rowCount() == rows + 1);
        assertSame(model, rule);

        const int steps = *rc::gen::inRange(0, 8);
        for (int i = 0; i < steps && count > 0; ++i) {
            const auto chosen = static_cast<std::size_t>(*rc::gen::inRange(0, count));
            DocumentCase &one = rule.documents.at(chosen);
            const int row = documentRows.at(chosen);
            switch (*rc::gen::inRange(0, 3)) {
            case 0:
                one.ticked = *rc::gen::arbitrary<bool>();
                model.setData(model.index(row, SRDocumentsModel::NumberColumn),
                              one.ticked ? Qt::Checked : Qt::Unchecked, Qt::CheckStateRole);
                rule.recalculate(one);
                break;
            case 1:
                model.calcByDebt();
                for (DocumentCase &each : rule.documents)
                    rule.recalculate(each);
                break;
            case 2:
                if (!one.services.empty()) {
                    const int service = *rc::gen::inRange(0, static_cast<int>(one.services.size()));
                    const qint64 kopecks = *Generators::amount();
                    model.setData(
                        model.index(row + 1 + service, SRDocumentsModel::DistributedColumn),
                        FixNumber(100, kopecks).toDouble(), Qt::EditRole);
                    Service &edited = one.services.at(static_cast<std::size_t>(service));
                    edited.distributed = edited.editable ? kopecks : edited.distributed;
                }
                break;
            }
            assertSame(model, rule);
        }
    });
}

QTEST_GUILESS_MAIN(TestDistributionProperties)
#include "tst_distributionproperties.moc"
