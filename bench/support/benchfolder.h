#pragma once

#include <QString>

/// Where rows put files that are dear to make: a million payments serve every row and every process
/// of a run.
namespace BenchFolder {

/// Takes `path`, which its owner deletes. Without it the folder is one of the process's own.
void use(const QString &path);
QString filePath(const QString &name);

} // namespace BenchFolder
