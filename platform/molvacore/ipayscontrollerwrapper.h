#pragma once

#include <molvacore/molvacore_global.h>

#include <QString>
#include <QVariantMap>

class PayPack;

/// The host's controller of payments, as a plugin sees it. The plugin owns the wrapper it is given
/// and deletes it.
class MOLVACORE_EXPORT IPaysControllerWrapper
{
public:
    virtual ~IPaysControllerWrapper();

    /// True only when the pack is durably stored. Saving the same pack again changes nothing and is
    /// true.
    virtual bool savePack(const PayPack &pack, bool complete) = 0;
    /// A saved pack is to be handed on without waiting.
    virtual bool handOnAtOnce() const = 0;
    /// Fills `message` with what is to be posted to the bus for the saved pack; false fills `error`
    /// instead.
    virtual bool handOn(qint64 packId, QVariantMap &message, QString &error) = 0;
};
