#pragma once

#include <QSharedPointer>

class QWizard;
class SRAccount;

/// The account that the page visited last hands on; to be asked from a page's initializePage(),
/// when the page itself is not among the visited ones yet. Empty when no page was visited or the
/// last one is none of ours.
QSharedPointer<SRAccount> srAccountOfPreviousPage(const QWizard *wizard);
