#pragma once

#include "benchrow.h"

#include <QVector>

/// All rows of the table in its order.
///
/// Rows keep what they prepare (generated answers, databases, loaded libraries) until the program
/// ends, so that one row does not pay for another.
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
