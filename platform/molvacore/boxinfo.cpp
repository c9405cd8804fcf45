#include <molvacore/boxinfo.h>

#include <tuple>

class BoxInfo::Data : public QSharedData
{
public:
    qint64 boxId = 0;
    basix::Currency currency;
    QString name;
    QString address;

    auto tied() const { return std::tie(boxId, currency, name, address); }
};

BoxInfo::BoxInfo() : m_data(new Data) {}

BoxInfo::BoxInfo(const BoxInfo &other) = default;
BoxInfo &BoxInfo::operator=(const BoxInfo &other) = default;
BoxInfo::~BoxInfo() = default;

qint64 BoxInfo::boxId() const
{
    return m_data->boxId;
}

void BoxInfo::setBoxId(qint64 boxId)
{
    m_data->boxId = boxId;
}

basix::Currency BoxInfo::currency() const
{
    return m_data->currency;
}

void BoxInfo::setCurrency(const basix::Currency &currency)
{
    m_data->currency = currency;
}

QString BoxInfo::name() const
{
    return m_data->name;
}

void BoxInfo::setName(const QString &name)
{
    m_data->name = name;
}

QString BoxInfo::address() const
{
    return m_data->address;
}

void BoxInfo::setAddress(const QString &address)
{
    m_data->address = address;
}

bool BoxInfo::operator==(const BoxInfo &other) const
{
    return m_data == other.m_data || m_data->tied() == other.m_data->tied();
}
