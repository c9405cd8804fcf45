#pragma once

#include <QJsonObject>

class BillingDatabase;
class TerminalContext;

/// Counts and sums of everything that knows of payments: charges, receipts, packs, and what
/// `billing` took; with the RRN of every charge and the numbers of receipts and packs.
QJsonObject stationFigures(TerminalContext &context, BillingDatabase &billing);
