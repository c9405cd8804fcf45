#pragma once

class QDoubleSpinBox;

/// Lets an amount be typed or pasted with a point or a comma, whichever the station's language
/// writes.
///
/// A spin box of Qt drops the sign that is not its language's own and goes on with the digits
/// behind it: "12.34" would become 1234 rubles where a comma is the decimal sign.
void srAcceptBothDecimalSigns(QDoubleSpinBox *amount);
