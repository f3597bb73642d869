#include "varnel/scale/calendar.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <utility>

#include "varnel/scale/auto_scale.h"
#include "varnel/scale/detail/decimal.h"

namespace varnel {
namespace {

namespace chrono = std::chrono;

constexpr double kSecond = 1.0 / 86400.0;  // in days, as all of these
constexpr double kMinute = 60.0 * kSecond;
constexpr double kHour = 3600.0 * kSecond;
constexpr double kMonth = 365.2425 / 12.0;
constexpr double kYear = 365.2425;
/// The calendar's own years reach a little further.
constexpr double kMostDays = 30000.0 * kYear;

constexpr std::array<const char*, 12> kMonths = {"January",   "February", "March",    "April",
                                                 "May",       "June",     "July",     "August",
                                                 "September", "October",  "November", "December"};
constexpr std::array<const char*, 7> kWeekdays = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                  "Thursday", "Friday", "Saturday"};
constexpr std::size_t kShortName = 3;

/// Nested steps: the labelled one and the tics between. Steps below a second and above a thousand
/// years are decimal ones.
struct NaturalStep {
    CalendarStep major;
    CalendarStep minor;
};

constexpr CalendarUnit kS = CalendarUnit::kSecond;
constexpr CalendarUnit kMin = CalendarUnit::kMinute;
constexpr CalendarUnit kH = CalendarUnit::kHour;
constexpr CalendarUnit kD = CalendarUnit::kDay;
constexpr CalendarUnit kW = CalendarUnit::kWeek;
constexpr CalendarUnit kMon = CalendarUnit::kMonth;
constexpr CalendarUnit kY = CalendarUnit::kYear;

constexpr NaturalStep kSteps[] = {
    {{kS, 1}, {kS, 0.5}},     {{kS, 2}, {kS, 0.5}},     {{kS, 5}, {kS, 1}},
    {{kS, 10}, {kS, 2}},      {{kS, 15}, {kS, 5}},      {{kS, 30}, {kS, 5}},
    {{kMin, 1}, {kS, 15}},    {{kMin, 2}, {kS, 30}},    {{kMin, 5}, {kMin, 1}},
    {{kMin, 10}, {kMin, 2}},  {{kMin, 15}, {kMin, 5}},  {{kMin, 30}, {kMin, 5}},
    {{kH, 1}, {kMin, 15}},    {{kH, 2}, {kMin, 30}},    {{kH, 3}, {kH, 1}},
    {{kH, 6}, {kH, 1}},       {{kH, 12}, {kH, 3}},      {{kD, 1}, {kH, 6}},
    {{kD, 2}, {kD, 1}},       {{kW, 1}, {kD, 1}},       {{kW, 2}, {kW, 1}},
    {{kMon, 1}, {kW, 1}},     {{kMon, 2}, {kMon, 1}},   {{kMon, 3}, {kMon, 1}},
    {{kMon, 6}, {kMon, 1}},   {{kY, 1}, {kMon, 3}},     {{kY, 2}, {kMon, 6}},
    {{kY, 5}, {kY, 1}},       {{kY, 10}, {kY, 2}},      {{kY, 20}, {kY, 5}},
    {{kY, 50}, {kY, 10}},     {{kY, 100}, {kY, 20}},    {{kY, 200}, {kY, 50}},
    {{kY, 500}, {kY, 100}},   {{kY, 1000}, {kY, 200}},  {{kY, 2000}, {kY, 500}},
    {{kY, 5000}, {kY, 1000}}, {{kY, 10000}, {kY, 2000}}};

double LengthOf(const CalendarStep& step) {
    constexpr std::array<double, 7> kDays = {kSecond, kMinute, kHour, 1.0, 7.0, kMonth, kYear};
    return step.count * kDays[static_cast<std::size_t>(step.unit)];
}

// --- Dates -------------------------------------------------------------------------------------

struct Date {
    int year = 1970;
    int month = 1;
    int day = 1;
    int weekday = 4;       // 0 Sunday
    int yearDay = 1;       // 1 the first of January
    double seconds = 0.0;  // of the day
};

double FirstOf(int year, int month) {
    const chrono::year_month_day ymd{chrono::year{year},
                                     chrono::month{static_cast<unsigned>(month)}, chrono::day{1}};
    return static_cast<double>(chrono::sys_days(ymd).time_since_epoch().count());
}

Date DateOf(double days) {
    // Half a tenth of a millisecond: 12:30 computed as a fraction of a day may lie a hair before
    // it.
    constexpr double kHair = 5e-5 * kSecond;
    double day = std::floor(days + kHair);
    Date date;
    date.seconds = std::max(0.0, (days - day) / kSecond);
    const chrono::sys_days at{chrono::days(static_cast<int>(day))};
    const chrono::year_month_day ymd{at};
    date.year = static_cast<int>(ymd.year());
    date.month = static_cast<int>(static_cast<unsigned>(ymd.month()));
    date.day = static_cast<int>(static_cast<unsigned>(ymd.day()));
    date.weekday = static_cast<int>(chrono::weekday(at).c_encoding());
    date.yearDay = static_cast<int>(day - FirstOf(date.year, 1)) + 1;
    return date;
}

bool IsInCalendar(double days) {
    return std::abs(days) <= kMostDays;
}

// --- Steps -------------------------------------------------------------------------------------

/// Months and years by number: the month k has its first day at FirstOf.
double StartOfMonth(double k) {
    const double year = std::floor(k / 12.0);
    return FirstOf(static_cast<int>(year), static_cast<int>(k - 12.0 * year) + 1);
}

/// The last tic of a step at or before a time.
double StepBelow(const CalendarStep& step, double days) {
    const auto whole = [&](double unit) { return std::floor(days / unit * (1.0 + 1e-15)) * unit; };
    switch (step.unit) {
        case CalendarUnit::kSecond:
        case CalendarUnit::kMinute:
        case CalendarUnit::kHour: {
            // Within the day, which every such step divides; a hair early counts as on time.
            const double length = LengthOf(step) / kSecond;
            const double day = std::floor(days);
            const double k = std::floor((days - day) / kSecond / length + 1e-6);
            return day + k * length * kSecond;
        }
        case CalendarUnit::kWeek:
            // The Monday before 1970-01-01, a Thursday, is day -3.
            return std::floor((days + 3.0) / (7.0 * step.count)) * 7.0 * step.count - 3.0;
        case CalendarUnit::kMonth:
        case CalendarUnit::kYear: {
            const Date date = DateOf(days);
            const double months = step.unit == CalendarUnit::kYear ? 12.0 * step.count : step.count;
            return StartOfMonth(std::floor((12.0 * date.year + date.month - 1) / months) * months);
        }
        default:
            if (step.count == 1.0) return whole(1.0);
            // Every other day begins anew with each month.
            const Date date = DateOf(days);
            const double first = FirstOf(date.year, date.month);
            return first + std::floor((date.day - 1) / step.count) * step.count;
    }
}

/// The tic after one that StepBelow gave.
double StepAfter(const CalendarStep& step, double tic) {
    // A little more than a step, and back to the tic: no step is as long as one and a half others.
    const double next = StepBelow(step, tic + 1.5 * LengthOf(step));
    if (step.unit == CalendarUnit::kDay && step.count > 1.0) {
        // Not the last day of a month and the first of the next.
        const Date date = DateOf(next);
        if (DateOf(tic).month != date.month) return FirstOf(date.year, date.month);
    }
    return next;
}

std::vector<double> TicsOf(const CalendarStep& step, double min, double max) {
    constexpr std::size_t kMost = 2000;
    const double hair = 1e-6 * LengthOf(step);
    std::vector<double> tics;
    for (double tic = StepBelow(step, min); tic <= max + hair && tics.size() < kMost;) {
        if (tic >= min - hair) tics.push_back(std::clamp(tic, min, max));
        const double next = StepAfter(step, tic);
        if (!(next > tic)) break;  // the step is too small for numbers of that size
        tic = next;
    }
    return tics;
}

/// The coarsest step of which a range has a good number. Parts of a second, and what no natural
/// step is long enough for, come from the decimal scale.
NaturalStep ChooseStep(double range, const CalendarOptions& options) {
    // The room that "12:30:15" and "3 Mar" take with a gap, in heights of a label.
    const auto most = [&](const CalendarStep& step) {
        const double width = !options.across ? 1.6 : step.unit == kS ? 5.0 : 3.6;
        return std::clamp(options.length / width - 1.0, 1.0, 7.0);
    };
    for (const NaturalStep& step : kSteps) {
        if (range / LengthOf(step.major) <= most(step.major)) {
            if (&step != kSteps || range / LengthOf(step.major) > 3.0) return step;
            break;
        }
    }
    ScaleOptions decimal;
    decimal.length = options.length;
    if (range < 3.0 * kSecond) {
        const AxisScale scale = TicsInside(0.0, range / kSecond, decimal);
        return {{kS, scale.majorStep}, {kS, scale.majorStep / scale.minorsPerMajor}};
    }
    return kSteps[std::size(kSteps) - 1];
}

// --- Texts -------------------------------------------------------------------------------------

std::string TwoDigits(int n) {
    return {static_cast<char>('0' + n / 10 % 10), static_cast<char>('0' + n % 10)};
}

/// What stands for a code of FormatTime.
std::string Field(char code, const Date& date) {
    std::string month = kMonths[static_cast<std::size_t>(date.month - 1)];
    std::string weekday = kWeekdays[static_cast<std::size_t>(date.weekday)];
    const int milliseconds = static_cast<int>(std::floor(date.seconds * 1000.0 + 0.05));
    const int second = milliseconds / 1000;
    switch (code) {
        case 'Y':
            return std::to_string(date.year);
        case 'y':
            return TwoDigits((date.year % 100 + 100) % 100);
        case 'm':
            return TwoDigits(date.month);
        case 'd':
            return TwoDigits(date.day);
        case 'e':
            return std::to_string(date.day);
        case 'B':
            return month;
        case 'b':
            return month.substr(0, kShortName);
        case 'A':
            return weekday;
        case 'a':
            return weekday.substr(0, kShortName);
        case 'j':
            return std::to_string(date.yearDay);
        case 'H':
            return TwoDigits(second / 3600);
        case 'M':
            return TwoDigits(second / 60 % 60);
        case 'S':
            return TwoDigits(second % 60);
        case 'f':
            return std::to_string(1000 + milliseconds % 1000).substr(1);
        case '%':
            return "%";
        default:
            return {'%', code};
    }
}

/// The texts of the labels and of their context, by the unit of the step.
struct Formats {
    const char* label;
    const char* context;
};

Formats FormatsFor(const CalendarStep& step) {
    switch (step.unit) {
        case CalendarUnit::kSecond:
            if (step.count != std::floor(step.count)) return {"%H:%M:%S.%f", "%e %b %Y"};
            return {"%H:%M:%S", "%e %b %Y"};
        case CalendarUnit::kMinute:
        case CalendarUnit::kHour:
            return {"%H:%M", "%e %b %Y"};
        case CalendarUnit::kDay:
        case CalendarUnit::kWeek:
            return {"%e %b", "%Y"};
        case CalendarUnit::kMonth:
            return {"%b", "%Y"};
        default:
            return {"%Y", ""};
    }
}

void WriteTexts(CalendarScale& scale, const std::string& format) {
    const Formats formats = FormatsFor(scale.step);
    std::string told;
    for (const double tic : scale.majors) {
        scale.texts.push_back(FormatTime(tic, format.empty() ? formats.label : format));
        std::string context = format.empty() ? FormatTime(tic, formats.context) : std::string();
        const bool isNew = context != told;
        told = context;
        scale.contexts.push_back(isNew ? std::move(context) : std::string());
    }
}

void AddTics(CalendarScale& scale, const NaturalStep& step, const CalendarOptions& options) {
    scale.step = step.major;
    scale.majors = TicsOf(step.major, scale.min, scale.max);
    scale.minors = TicsOf(step.minor, scale.min, scale.max);
    const double hair = 1e-3 * LengthOf(step.minor);
    std::erase_if(scale.minors, [&](double v) {
        const auto near = std::lower_bound(scale.majors.begin(), scale.majors.end(), v - hair);
        return near != scale.majors.end() && *near <= v + hair;
    });
    WriteTexts(scale, options.format);
}

/// The step on which limits fall: the coarsest that is short against the range.
CalendarStep LimitStep(double range) {
    constexpr double kShort = 1.0 / 20.0;
    CalendarStep step{
        kS, detail::PowerOfTen(static_cast<int>(std::floor(std::log10(kShort * range / kSecond))))};
    for (const NaturalStep& natural : kSteps) {
        if (LengthOf(natural.major) <= kShort * range) step = natural.major;
    }
    return step;
}

}  // namespace

CalendarScale AutoCalendar(double min, double max, const CalendarOptions& options) {
    CalendarScale scale;
    scale.min = std::min(min, max);
    scale.max = std::max(min, max);
    if (!std::isfinite(min) || !std::isfinite(max)) {
        scale.min = 0.0;
        scale.max = 1.0;
    }
    // Doubles of today's days tell microseconds apart.
    constexpr double kOneMoment = 1e-5 * kSecond;
    if (scale.max - scale.min < kOneMoment) {
        scale.min -= 0.5;
        scale.max += 0.5;
    }
    if (!IsInCalendar(scale.min) || !IsInCalendar(scale.max)) return scale;
    const NaturalStep step = ChooseStep(scale.max - scale.min, options);
    if (!options.tight) {
        const CalendarStep limit = options.round ? step.major : LimitStep(scale.max - scale.min);
        scale.min = std::min(scale.min, StepBelow(limit, scale.min));
        const double below = StepBelow(limit, scale.max);
        if (below < scale.max) scale.max = std::max(scale.max, StepAfter(limit, below));
    }
    AddTics(scale, step, options);
    return scale;
}

CalendarScale CalendarInside(double min, double max, const CalendarOptions& options) {
    CalendarScale scale;
    const bool isRange = std::isfinite(min) && std::isfinite(max) && min != max;
    if (isRange && IsInCalendar(min) && IsInCalendar(max)) {
        scale.min = std::min(min, max);
        scale.max = std::max(min, max);
        AddTics(scale, ChooseStep(scale.max - scale.min, options), options);
    }
    scale.min = min;
    scale.max = max;
    return scale;
}

std::string FormatTime(double days, std::string_view format) {
    if (!std::isfinite(days) || !IsInCalendar(days)) return {};
    const Date date = DateOf(days);
    std::string text;
    for (std::size_t i = 0; i < format.size(); ++i) {
        if (format[i] == '%' && i + 1 < format.size())
            text += Field(format[++i], date);
        else
            text += format[i];
    }
    return text;
}

double DaysOf(int year, int month, int day, double seconds) {
    return FirstOf(year, std::clamp(month, 1, 12)) + (day - 1) + seconds * kSecond;
}

}  // namespace varnel
