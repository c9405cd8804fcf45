#pragma once

#include <QString>

/// What the payments store is asked at every start, for every payment and by the outbox. Each
/// answer is found through an index: it takes as long among a million packs as among a hundred.
///
/// Each names its placeholders in their order. Packs come in the order in which they were saved.
namespace PackQueries {

/// Numbers of the packs in the states from ? to ?.
QString numbersInStates();
/// Numbers of the packs whose receipt is the one of the fiscal storage ? and the document ?.
QString numbersOfReceipt();
/// Packs whose receipts are of the storage ?, from the document ? to the document ?.
QString ofReceipts();
/// Packs without a receipt, and those in the states from ? to ? whose receipt is in another storage
/// than ?.
QString withoutReceipt();

} // namespace PackQueries
