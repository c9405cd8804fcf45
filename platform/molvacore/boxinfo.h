#pragma once

#include <molvacore/molvacore_global.h>

#include <basixcore/currency.h>

#include <QMetaType>
#include <QSharedDataPointer>
#include <QString>

/// The cash box: the workplace that takes the payments.
class MOLVACORE_EXPORT BoxInfo
{
public:
    BoxInfo();
    BoxInfo(const BoxInfo &other);
    BoxInfo &operator=(const BoxInfo &other);
    ~BoxInfo();

    bool isValid() const { return boxId() > 0; }

    /// Above zero for a box that is set up.
    qint64 boxId() const;
    void setBoxId(qint64 boxId);
    /// The one currency that the box takes.
    basix::Currency currency() const;
    void setCurrency(const basix::Currency &currency);
    QString name() const;
    void setName(const QString &name);
    /// Where the box stands: the place of settlement on receipts.
    QString address() const;
    void setAddress(const QString &address);

    bool operator==(const BoxInfo &other) const;
    bool operator!=(const BoxInfo &other) const { return !(*this == other); }

private:
    class Data;
    QSharedDataPointer<Data> m_data;
};

Q_DECLARE_METATYPE(BoxInfo)
