// The texts of numbers at axis labels.
#pragma once

#include "varnel/foundation/types.h"

namespace varnel::detail {

/// A value as text. Formats: 0 fixed, 1 exponential, 2 engineering, 3 general, others fixed.
/// `decimals` counts digits after the point (significant digits for format 3): a negative number
/// means 6, more than 400 means 400. `suffixes` are the engineering suffixes by powers of 1000; a
/// missing one adds nothing.
CString LabelText(double value, int format, int decimals, const CString& suffixes);

/// Takes the third character from the end out of a text that contains an e or E: of exponents with
/// three digits the first one, whatever it is.
void RemoveExpZeros(CString& s);

}  // namespace varnel::detail
