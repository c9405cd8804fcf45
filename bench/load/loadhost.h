#pragma once

#include "loadbox.h"

#include <molvacore/dbconnector.h>

#include <QString>

#include <memory>

/// The host's database that every box of this process reads: one file in a folder of its own.
class LoadHost final
{
public:
    /// Null, with a text, when the database cannot be made. It stays open as long as this lives.
    static std::unique_ptr<LoadHost> open(const QString &folder, QString *error);

    const LoadBox::Host &host() const { return m_host; }

private:
    LoadHost() = default;

    DbConnector m_held;
    LoadBox::Host m_host;
};
