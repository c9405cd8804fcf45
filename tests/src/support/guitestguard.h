#pragma once

#include "messagelog.h"
#include "modalanswers.h"

#include <QStringList>

/// What every test of a window is watched by, from init() to cleanup(): the log, the modal dialogs,
/// the windows left over.
class GuiTestGuard
{
public:
    /// Warnings whose text or function contains one of `expectedWarnings`, and the plugin's trace,
    /// are no problem.
    explicit GuiTestGuard(const QStringList &expectedWarnings = QStringList());

    MessageLog log;
    ModalAnswers answers;

    void expectWarning(const QString &part) { m_expected.append(part); }
    /// What went wrong beside the test's own checks; to be compared with an empty list when the
    /// test's objects are gone.
    QStringList problems() const;

private:
    bool isExpected(const MessageLog::Message &message) const;

    QStringList m_expected;
};
