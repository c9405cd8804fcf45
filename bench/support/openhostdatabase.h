#pragma once

/// Keeps the connection to the host's database, which a workstation holds open all day, until the
/// end of the program.
void keepHostDatabaseOpen();
