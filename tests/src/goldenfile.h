#pragma once

#include <QString>

/// Expected texts kept beside the tests, in the folder golden/.
namespace GoldenFile {

/// Empty when `text` equals the golden file `name`; otherwise what differs, to be shown by the
/// test, and the text is left in the build tree as `name`.fail. A golden file that is missing
/// differs. With SELMAR_REFRESH_GOLDEN set in the environment the file is written instead of
/// compared.
QString difference(const QString &name, const QString &text);

} // namespace GoldenFile
