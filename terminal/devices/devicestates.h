#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

/// What can be put into a state of trouble.
enum class Device { Register, Card, Billing };

/// A state that a device can be put into, under every name that it has: one table for the window,
/// the command line and scenario files.
struct DeviceState
{
    QString key;    ///< on the command line; unique for its device
    QString phrase; ///< in a scenario file, after the word for the device
    QString title;  ///< on the screen, a few words
    QString effect; ///< what happens at the next operation, one or two sentences
    int value = 0;  ///< of the register EmulatedRegister::Condition, of billing AnswerBehaviour
};

namespace DeviceStates {

const QVector<Device> &devices();
/// Name of the device on the command line.
QString option(Device device);
/// Word for the device in a scenario file.
QString word(Device device);
QString title(Device device);

/// The first is the state in which nothing is wrong.
const QVector<DeviceState> &of(Device device);
QStringList keys(Device device);
/// Null for a key that the device has not.
const DeviceState *find(Device device, const QString &key);

} // namespace DeviceStates
