// Tics and texts of time axes: steps that a calendar and a clock have, from seconds to centuries.
//
// Times are days since 1970-01-01, a fraction being the time of the day; no time zone is known and
// no leap second. The calendar is the Gregorian one, also before 1582.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "varnel/foundation/export.h"

namespace varnel {

enum class CalendarUnit { kSecond, kMinute, kHour, kDay, kWeek, kMonth, kYear };

/// A number of units; seconds may be fractions. Weeks begin on Mondays; other steps count from the
/// beginning of the next larger unit.
struct CalendarStep {
    CalendarUnit unit = CalendarUnit::kDay;
    double count = 1.0;
};

struct CalendarOptions {
    bool tight = false;    ///< limits are the data's own
    bool round = false;    ///< limits fall on labelled tics
    double length = 30.0;  ///< of the axis, in heights of its labels
    bool across = true;    ///< labels stand beside each other
    /// How every label is written, as FormatTime understands it; empty: by the step, with the
    /// context (the day, month or year) told apart.
    std::string format;
};

struct CalendarScale {
    double min = 0.0;
    double max = 1.0;
    CalendarStep step;               ///< of the labelled tics
    std::vector<double> majors;      ///< where labelled tics stand, ascending, inside the limits
    std::vector<double> minors;      ///< the tics between them
    std::vector<std::string> texts;  ///< one for each major: "12:30", "3 Mar", "Mar", "2024"
    /// One for each major: what its text leaves out ("3 Mar 2024", "2024"), at the first tic and
    /// where it changes; empty elsewhere and throughout with a format.
    std::vector<std::string> contexts;
};

/// Limits, tics and texts for times from `min` to `max`. Without a finite range: the first day of
/// 1970; beyond the years -30000 .. 30000 there are no tics.
VARNEL_API CalendarScale AutoCalendar(double min, double max, const CalendarOptions& options = {});

/// The tics and texts for limits that are given and kept.
VARNEL_API CalendarScale CalendarInside(double min, double max,
                                        const CalendarOptions& options = {});

/// A time by a format: %Y year, %y its last two digits, %m %d month and day with two digits, %e day
/// without a zero, %b %B short and full month, %a %A short and full day of the week, %j day of the
/// year, %H %M %S hour, minute, second, %f milliseconds, %% a percent sign; other text as it is.
VARNEL_API std::string FormatTime(double days, std::string_view format);

/// The days since 1970-01-01 of a date and a time of the day in seconds.
VARNEL_API double DaysOf(int year, int month, int day, double seconds = 0.0);

}  // namespace varnel
