#pragma once

#include "srservice.h"

#include <QVariant>

/// A service's row in the tables of both wizards: the same four cells, wherever their columns
/// stand.
namespace SrServiceCells {

enum Cell { Name, Charge, ToPay, Distributed };

/// The field that a cell shows; empty for no cell of these.
const QString &field(int cell);
/// What a cell shows: texts as billing sent them, amounts as FixNumber::toString() writes them.
QVariant text(const SrService &service, int cell);
/// What an editor of a cell starts with: the name, or an amount in rubles as a double.
QVariant value(const SrService &service, int cell);
/// Takes over what an editor of a cell ended with, where billing lets the field be edited; false
/// for no cell of these.
bool edit(SrService &service, int cell, const QVariant &value);

} // namespace SrServiceCells
