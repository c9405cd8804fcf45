#pragma once

#include <QCommandLineOption>
#include <QList>
#include <QString>
#include <QStringList>

/// Why `arguments`, the program's name first, leave one of the options without its value: what is
/// missing and what there is to choose from, in Russian. Empty when nothing is missing.
///
/// An option where the value should stand is none: Qt's parser would swallow it, and complain of
/// the word that comes after.
QString missingOptionValue(const QList<QCommandLineOption> &options, const QStringList &arguments);
