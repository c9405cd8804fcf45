#pragma once

#include <app/terminalcontext.h>

#include <QString>
#include <QTemporaryDir>

#include <memory>

/// A workstation in a temporary folder.
class TemporaryTerminal final
{
public:
    /// Opens one in a new folder; the former is closed and gone. False: error() says why.
    bool open();
    /// Closes the workstation and opens it again in the folder that it has.
    bool reopen();
    /// The folder stays until the next open().
    void close() { m_context.reset(); }

    /// In Russian, as a person would read it.
    QString error() const { return m_error; }
    /// The path of a file in the folder.
    QString file(const QString &name) const { return m_folder->filePath(name); }

    TerminalContext *operator->() const { return m_context.get(); }
    TerminalContext &operator*() const { return *m_context; }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<TerminalContext> m_context;
    QString m_error;
};
