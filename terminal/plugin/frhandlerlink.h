#pragma once

#include <molvacore/frhandler.h>

#include <QPointer>

/// The register as it is handed to a plugin.
///
/// A plugin becomes the parent of the register it is given and deletes it with itself, while the
/// terminal's register must outlive every plugin. So each plugin gets a link of its own; it answers
/// "not connected" once the register is gone.
class FrHandlerLink final : public FrHandler
{
    Q_OBJECT

public:
    explicit FrHandlerLink(FrHandler &target);
    ~FrHandlerLink() override;

    bool getFiscalStatus(QSharedPointer<FsStatus> &status) override;
    bool doReceipt(const QVariantMap &document, const QString &documentNumber, QVariantMap &result,
                   QString &error) override;

private:
    QPointer<FrHandler> m_target;
};
