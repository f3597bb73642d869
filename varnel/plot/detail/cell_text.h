// What the text of one cell of a table means: nothing, a number, other text.
#pragma once

#include <string>
#include <string_view>

namespace varnel::plot::detail {

/// Without spaces and tabs at both ends.
std::string_view Trim(std::string_view text);

/// Whether the text stands for a missing value: "", "-", and NA, N/A, NaN, null in any case.
bool IsMissing(std::string_view trimmed);

/// Reads a whole trimmed text as a number with the given decimal sign, '.' or ','. Thousands may
/// be set apart, in groups of exactly three digits, by the other of these two signs, by ', ' or by
/// (no-break, thin) spaces; a percent sign at the end is dropped, so that "12 %" is 12; "inf" and
/// "-inf" are read. False, and `number` stays, for anything else. Correctly rounded.
bool ParseNumber(std::string_view trimmed, char decimal, double& number);

/// Whether bytes are valid UTF-8 as a whole.
bool IsUtf8(std::string_view bytes);

/// Windows-1252 as UTF-8. Its five unused bytes become the control characters of their numbers.
std::string Windows1252ToUtf8(std::string_view bytes);

}  // namespace varnel::plot::detail
