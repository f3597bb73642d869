#include "varnel/plot/dates.h"

#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <limits>
#include <optional>

namespace varnel::plot {

namespace {

namespace chrono = std::chrono;

constexpr double kSecondsPerDay = 86400.0;
constexpr std::array<std::string_view, 12> kMonths = {
    "january", "february", "march",     "april",   "may",      "june",
    "july",    "august",   "september", "october", "november", "december"};
constexpr std::array<const char*, 12> kShortMonths = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                      "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
constexpr std::array<const char*, 7> kWeekdays = {"Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"};

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

/// The text that is still to be read.
struct Reader {
    std::string_view rest;

    bool Take(char c) {
        if (rest.empty() || rest.front() != c) return false;
        rest.remove_prefix(1);
        return true;
    }

    bool TakeEither(char a, char b) { return Take(a) || Take(b); }

    void SkipSpaces() {
        while (Take(' ')) {
        }
    }

    /// `least` to `most` digits.
    bool Number(int least, int most, int& out) {
        int value = 0, digits = 0;
        while (digits < most && !rest.empty() && IsDigit(rest.front())) {
            value = 10 * value + (rest.front() - '0');
            rest.remove_prefix(1);
            ++digits;
        }
        out = value;
        return digits >= least;
    }

    /// Digits behind a point, where there is one.
    bool Fraction(double& out) {
        if (!TakeEither('.', ',')) return true;
        double place = 0.1;
        bool any = false;
        for (; !rest.empty() && IsDigit(rest.front()); rest.remove_prefix(1), place /= 10) {
            out += place * (rest.front() - '0');
            any = true;
        }
        return any;
    }

    /// A month's whole English name or its first three letters, in any case: 1..12, 0 for neither.
    int MonthName() {
        std::size_t letters = 0;
        while (letters < rest.size() && Lower(rest[letters]) >= 'a' && Lower(rest[letters]) <= 'z')
            ++letters;
        for (std::size_t m = 0; m < kMonths.size(); ++m) {
            const std::string_view name = kMonths[m];
            if (letters != 3 && letters != name.size()) continue;
            std::size_t same = 0;
            while (same < letters && Lower(rest[same]) == name[same])
                ++same;
            if (same < letters) continue;
            rest.remove_prefix(letters);
            return static_cast<int>(m) + 1;
        }
        return 0;
    }
};

struct Fields {
    int year = 1970, month = 1, day = 1, yearDay = 0;
    int hour = 0, minute = 0;
    double second = 0.0;
    int half = -1;  ///< 0 AM, 1 PM
    int sign = 1;   ///< of the year
    std::optional<double> seconds1970;
};

bool ToDays(const Fields& f, double& days) {
    if (f.seconds1970) {
        days = *f.seconds1970 / kSecondsPerDay;
        return true;
    }
    int hour = f.hour;
    if (f.half >= 0) {
        if (hour < 1 || hour > 12) return false;
        hour = hour % 12 + 12 * f.half;
    }
    // 24:00 ends a day and 60 is a leap second.
    if (hour > 24 || f.minute > 59 || f.second >= 61.0) return false;
    const chrono::year_month_day date = chrono::year(f.sign * f.year) /
                                        chrono::month(static_cast<unsigned>(f.month)) /
                                        chrono::day(static_cast<unsigned>(f.day));
    if (!date.ok() || f.yearDay > 366) return false;
    const int day = static_cast<int>(chrono::sys_days(date).time_since_epoch().count()) +
                    (f.yearDay > 0 ? f.yearDay - 1 : 0);
    days = day + (3600.0 * hour + 60.0 * f.minute + f.second) / kSecondsPerDay;
    return true;
}

/// HH:MM[:SS[.fff]] and what follows it; `offset` in minutes.
bool ReadIsoTime(Reader& reader, Fields& f, int& offset) {
    if (!reader.Number(1, 2, f.hour) || !reader.Take(':') || !reader.Number(2, 2, f.minute))
        return false;
    if (reader.Take(':')) {
        int seconds = 0;
        if (!reader.Number(2, 2, seconds) || !reader.Fraction(f.second)) return false;
        f.second += seconds;
    }
    if (reader.TakeEither('Z', 'z') || reader.rest.empty()) return true;
    const int sign = reader.rest.front() == '-' ? -1 : 1;
    int hours = 0, minutes = 0;
    if (!reader.TakeEither('+', '-') || !reader.Number(2, 2, hours)) return false;
    reader.Take(':');
    if (!reader.rest.empty() && !reader.Number(2, 2, minutes)) return false;
    offset = sign * (60 * hours + minutes);
    return true;
}

std::string_view Trim(std::string_view text) {
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    return text;
}

bool ReadField(Reader& reader, char letter, Fields& f) {
    switch (letter) {
        case 'Y':
            f.sign = reader.Take('-') ? -1 : 1;
            return reader.Number(1, 4, f.year);
        case 'y':
            if (!reader.Number(2, 2, f.year)) return false;
            f.year += f.year < 69 ? 2000 : 1900;
            return true;
        case 'm':
            return reader.Number(1, 2, f.month);
        case 'b':
        case 'B':
        case 'h':
            f.month = reader.MonthName();
            return f.month > 0;
        case 'd':
        case 'e':
            reader.SkipSpaces();
            return reader.Number(1, 2, f.day);
        case 'j':
            return reader.Number(1, 3, f.yearDay) && f.yearDay > 0;
        case 'H':
        case 'I':
            return reader.Number(1, 2, f.hour);
        case 'M':
            return reader.Number(1, 2, f.minute);
        case 'S': {
            int seconds = 0;
            if (!reader.Number(1, 2, seconds) || !reader.Fraction(f.second)) return false;
            f.second += seconds;
            return true;
        }
        case 's': {
            const double sign = reader.Take('-') ? -1.0 : 1.0;
            double seconds = 0.0;
            std::size_t digits = 0;
            for (; !reader.rest.empty() && IsDigit(reader.rest.front()); ++digits) {
                seconds = 10 * seconds + (reader.rest.front() - '0');
                reader.rest.remove_prefix(1);
            }
            if (digits == 0 || digits > 15 || !reader.Fraction(seconds)) return false;
            f.seconds1970 = sign * seconds;
            return true;
        }
        case 'p': {
            const char c = reader.rest.empty() ? '\0' : Lower(reader.rest.front());
            f.half = c == 'p';
            if (c != 'a' && c != 'p') return false;
            reader.rest.remove_prefix(1);
            return reader.TakeEither('m', 'M');
        }
        case '%':
            return reader.Take('%');
        default:
            return false;
    }
}

/// A date taken apart.
struct Calendar {
    chrono::sys_days day;
    chrono::year_month_day date;
    int secondOfDay = 0;
};

std::optional<Calendar> ToCalendar(double days) {
    if (!(std::abs(days) < 4.4e6)) return std::nullopt;
    // Half a millisecond up, so that 12:30, stored as a fraction, is not 12:29:59.
    const double whole = std::floor(days + 0.0005 / kSecondsPerDay);
    Calendar c;
    c.day = chrono::sys_days(chrono::days(static_cast<int>(whole)));
    c.date = chrono::year_month_day(c.day);
    c.secondOfDay = static_cast<int>((days - whole) * kSecondsPerDay + 0.0005);
    return c;
}

/// 1 Monday .. 7 Sunday.
int Weekday(chrono::sys_days day) {
    return static_cast<int>(chrono::weekday(day).iso_encoding());
}

int YearDay(chrono::sys_days day) {
    const auto year = chrono::year_month_day(day).year();
    return static_cast<int>((day - chrono::sys_days(year / 1 / 1)).count()) + 1;
}

/// The week is that of its Thursday.
int Week(chrono::sys_days day) {
    return (YearDay(day + chrono::days(4 - Weekday(day))) - 1) / 7 + 1;
}

int PartNumber(const Calendar& c, std::string_view part) {
    const int month = static_cast<int>(static_cast<unsigned>(c.date.month()));
    if (part == "year") return static_cast<int>(c.date.year());
    if (part == "quarter") return (month - 1) / 3 + 1;
    if (part == "month") return month;
    if (part == "week") return Week(c.day);
    if (part == "weekday") return Weekday(c.day);
    if (part == "day") return static_cast<int>(static_cast<unsigned>(c.date.day()));
    if (part == "yearday") return YearDay(c.day);
    if (part == "hour") return c.secondOfDay / 3600;
    return c.secondOfDay / 60 % 60;
}

}  // namespace

bool ParseDate(std::string_view text, double& days) {
    Reader reader{Trim(text)};
    Fields f;
    f.sign = reader.Take('-') ? -1 : 1;
    if (!reader.Number(4, 4, f.year)) return false;
    int offset = 0;
    if (!reader.rest.empty()) {
        const char separator = reader.rest.front();
        if (!reader.TakeEither('-', '/') || !reader.Number(1, 2, f.month)) return false;
        if (!reader.rest.empty()) {
            if (!reader.Take(separator) || !reader.Number(1, 2, f.day)) return false;
            if (!reader.rest.empty() && (!(reader.TakeEither('T', 't') || reader.Take(' ')) ||
                                         !ReadIsoTime(reader, f, offset)))
                return false;
        }
    }
    double local = 0.0;
    if (!reader.rest.empty() || !ToDays(f, local)) return false;
    days = local - offset / 1440.0;
    return true;
}

bool ParseDate(std::string_view text, std::string_view format, double& days) {
    Reader reader{Trim(text)};
    Fields f;
    for (std::size_t i = 0; i < format.size(); ++i) {
        if (format[i] == ' ') {
            reader.SkipSpaces();
        } else if (format[i] == '%' && i + 1 < format.size()) {
            if (!ReadField(reader, format[++i], f)) return false;
        } else if (!reader.Take(format[i])) {
            return false;
        }
    }
    return reader.rest.empty() && ToDays(f, days);
}

bool IsDatePart(std::string_view part) {
    for (const char* known :
         {"year", "quarter", "month", "week", "weekday", "day", "yearday", "hour", "minute"})
        if (part == known) return true;
    return false;
}

DatePart FindDatePart(double days, std::string_view part) {
    const std::optional<Calendar> calendar = ToCalendar(days);
    if (!calendar || !IsDatePart(part)) return {std::numeric_limits<double>::quiet_NaN(), {}};
    const int number = PartNumber(*calendar, part);
    const auto index = static_cast<std::size_t>(number - 1);
    if (part == "month") return {double(number), kShortMonths[index]};
    if (part == "weekday") return {double(number), kWeekdays[index]};
    return {double(number), std::to_string(number)};
}

std::string FormatDate(double days) {
    const std::optional<Calendar> c = ToCalendar(days);
    if (!c) return {};
    char text[48];
    std::snprintf(text, sizeof text, "%04d-%02u-%02u", static_cast<int>(c->date.year()),
                  static_cast<unsigned>(c->date.month()), static_cast<unsigned>(c->date.day()));
    std::string out = text;
    if (c->secondOfDay == 0) return out;
    std::snprintf(text, sizeof text, c->secondOfDay % 60 == 0 ? " %02d:%02d" : " %02d:%02d:%02d",
                  c->secondOfDay / 3600, c->secondOfDay / 60 % 60, c->secondOfDay % 60);
    return out + text;
}

}  // namespace varnel::plot
