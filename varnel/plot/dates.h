// Dates as numbers: days since 1970-01-01 in the proleptic Gregorian calendar; fractions are the
// time of day. Years run from -9999 to 9999.
#pragma once

#include <string>
#include <string_view>

#include "varnel/foundation/export.h"

namespace varnel::plot {

/// Reads YYYY-MM-DD, YYYY-MM or YYYY (also with '/' instead of '-'), and after a whole date, behind
/// 'T' or a space, HH:MM, HH:MM:SS or HH:MM:SS.fff, then nothing, 'Z' or an offset such as +01:00,
/// which is taken off. False, and `days` stays, for anything else and for dates that do not exist.
VARNEL_API bool ParseDate(std::string_view text, double& days);

/// Reads a date by a format: %Y year, %y two digits of it (69..99 are 1969..1999), %m month, %b or
/// %B its English name or the first three letters, %d or %e day, %j day of the year, %H hour, %I
/// hour of 12 with %p AM or PM, %M minute, %S second with a fraction, %s seconds since 1970, %%.
/// A space matches any number of spaces, other characters themselves. What the format does not name
/// is January, 1, midnight. An unknown letter matches nothing.
VARNEL_API bool ParseDate(std::string_view text, std::string_view format, double& days);

/// A part of a date as a number and as a text.
struct DatePart {
    double number = 0.0;
    std::string text;
};

/// The names that FindDatePart knows: "year", "quarter" (1..4), "month" (1..12, "Jan".."Dec"),
/// "week" (of the year, by ISO 8601), "weekday" (1..7, "Mon".."Sun"), "day" (1..31), "yearday"
/// (1..366), "hour" (0..23) and "minute" (0..59).
VARNEL_API bool IsDatePart(std::string_view part);

/// The named part of a date; NaN and no text for an unknown part and for what is no date.
VARNEL_API DatePart FindDatePart(double days, std::string_view part);

/// A date as YYYY-MM-DD, or YYYY-MM-DD HH:MM[:SS] where it has a time; empty for what is no date.
VARNEL_API std::string FormatDate(double days);

}  // namespace varnel::plot
