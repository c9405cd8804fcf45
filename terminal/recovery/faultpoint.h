#pragma once

#include <QString>
#include <QVector>

/// Places in the workstation's work where a test lets it die as a power cut would.
///
/// The environment variable SELMAR_FAULT_POINT holds "name" or "name:n": the process raises SIGKILL
/// when it reaches that place, or reaches it for the n-th time. Without the variable nothing
/// happens; with a name that is none, the process ends at once with a message, so that a misspelled
/// test does not pass.
namespace FaultPoint {

enum class Place {
    ChargeBeforeCommit,
    ChargeAfterCommit,
    ShiftAfterCommit,
    ReceiptBeforeCommit,
    ReceiptAfterCommit,
    LinkBeforeCommit,
    LinkAfterCommit,
    PackBeforeCommit,
    PackAfterCommit,
    HandOnBeforeCommit,
    HandOnAfterCommit,
    OutboxBeforeSend,
    OutboxAfterSend,
    BillingAfterTaking,
    PostedAfterCommit,
    AcknowledgedBeforeCommit,
    AcknowledgedAfterCommit,
    RebuiltBeforeSave,
    RebuiltAfterSave,
    RefundBeforeCommit,
    RefundAfterCommit
};

QVector<Place> places();
/// The place's name in the environment variable.
QString name(Place place);
void pass(Place place);

} // namespace FaultPoint
