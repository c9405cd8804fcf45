#include "benchrows.h"

QVector<BenchRow> allBenchRows()
{
    QVector<BenchRow> rows;
    for (const auto part : {answerRows, htmlRows, receiptRows, tickRows, tableRows, pluginRows,
                            storeRows, busRows, journalRows, startRows})
        rows += part();
    return rows;
}
