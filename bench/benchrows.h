#pragma once

#include "benchrow.h"

#include <QVector>

/// All rows of the table in its order.
///
/// A row keeps what it prepares (generated answers, databases, loaded libraries) until its process
/// ends, so that no repetition pays for it.
QVector<BenchRow> allBenchRows();

// One function per file of rows.
QVector<BenchRow> answerRows();
QVector<BenchRow> htmlRows();
QVector<BenchRow> receiptRows();
QVector<BenchRow> tickRows();
QVector<BenchRow> tableRows();
QVector<BenchRow> pluginRows();
QVector<BenchRow> storeRows();
QVector<BenchRow> busRows();
QVector<BenchRow> journalRows();
QVector<BenchRow> startRows();
