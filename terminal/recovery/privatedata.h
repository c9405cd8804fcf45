#pragma once

#include <QString>

/// Keeps payers' data to the person who runs the workstation.
namespace PrivateData {

/// For the start of the process, before it opens a file: what it makes from now on is its owner's
/// alone, and its memory goes into no core file and to no debugger of another user's.
void hardenProcess();

/// Makes the folder, or takes the others' rights off an existing one that holds nothing but what a
/// workstation put there; and off the databases in it. A folder with other people's files keeps
/// its mode: the databases in it are closed by theirs. False when the folder cannot be made, or a
/// database stays readable by others.
bool closeFolder(const QString &folder);

} // namespace PrivateData
