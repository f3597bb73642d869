#include "varnel/scale/calendar.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace varnel {
namespace {

std::string TextsOf(const CalendarScale& scale) {
    std::string all;
    for (std::size_t i = 0; i < scale.texts.size(); ++i) {
        all += (all.empty() ? "" : " ") + scale.texts[i];
        if (!scale.contexts[i].empty()) all += "[" + scale.contexts[i] + "]";
    }
    return all;
}

TEST(Calendar, NaturalStepsFromMillisecondsToCenturies) {
    const double noon = DaysOf(2024, 3, 3, 43200);
    const struct {
        double min, max;
        const char* limits;
        const char* texts;
    } cases[] = {
        {noon, noon + 0.2 / 86400, "12:00:00.000 12:00:00.200",
         "12:00:00.000[3 Mar 2024] 12:00:00.050 12:00:00.100 12:00:00.150 12:00:00.200"},
        {DaysOf(2024, 3, 3, 86385), DaysOf(2024, 3, 4, 25), "23:59:45.000 00:00:25.000",
         "23:59:50[3 Mar 2024] 00:00:00[4 Mar 2024] 00:00:10 00:00:20"},
        {noon + 17.0 / 86400, noon + 1900.0 / 86400, "12:00:00.000 12:32:00.000",
         "12:00[3 Mar 2024] 12:05 12:10 12:15 12:20 12:25 12:30"},
        {noon, noon + 25.0 / 24, "12:00:00.000 13:00:00.000",
         "12:00[3 Mar 2024] 18:00 00:00[4 Mar 2024] 06:00 12:00"},
        {DaysOf(2023, 12, 27), DaysOf(2024, 1, 2), "00:00:00.000 00:00:00.000",
         "27 Dec[2023] 28 Dec 29 Dec 30 Dec 31 Dec 1 Jan[2024] 2 Jan"},
        {DaysOf(2024, 2, 27), DaysOf(2024, 4, 2), "27.02.2024 02.04.2024",
         "4 Mar[2024] 11 Mar 18 Mar 25 Mar 1 Apr"},
        {DaysOf(2023, 11, 27), DaysOf(2024, 6, 2), "27.11.2023 03.06.2024",
         "Dec[2023] Jan[2024] Feb Mar Apr May Jun"},
        {DaysOf(1958, 3, 29), DaysOf(2021, 5, 2), "01.01.1958 01.01.2022",
         "1960 1970 1980 1990 2000 2010 2020"},
        {DaysOf(1000, 3, 29), DaysOf(2021, 5, 2), "01.01.1000 01.01.2050",
         "1000 1200 1400 1600 1800 2000"},
    };
    for (const auto& c : cases) {
        const CalendarScale scale = AutoCalendar(c.min, c.max);
        const char* format =
            std::string(c.limits).find(':') != std::string::npos ? "%H:%M:%S.%f" : "%d.%m.%Y";
        EXPECT_EQ(FormatTime(scale.min, format) + " " + FormatTime(scale.max, format), c.limits);
        EXPECT_EQ(TextsOf(scale), c.texts);
    }
}

TEST(Calendar, RandomRangesHoldTheirDataAndHaveTics) {
    std::mt19937_64 random(5);
    std::uniform_real_distribution<> unit(0.0, 1.0);
    for (int i = 0; i < 3000; ++i) {
        const double min = -700000.0 + 1.4e6 * unit(random);
        const double max = min + std::pow(10.0, -6.0 + 12.0 * unit(random));
        const CalendarScale scale = AutoCalendar(min, max);
        SCOPED_TRACE(testing::Message() << min << ".." << max << " " << TextsOf(scale));
        EXPECT_TRUE(scale.min <= min && max <= scale.max);
        EXPECT_LT(scale.max - scale.min, 1.25 * (max - min));
        EXPECT_TRUE(scale.majors.size() >= 2 && scale.majors.size() <= 11);
        EXPECT_LT(scale.minors.size(), 90U);
        EXPECT_TRUE(std::is_sorted(scale.majors.begin(), scale.majors.end()));
        std::vector<std::string> told = scale.texts;
        std::string context;
        for (std::size_t k = 0; k < told.size(); ++k) {
            if (!scale.contexts[k].empty()) context = scale.contexts[k];
            told[k] += context;
        }
        EXPECT_EQ(std::adjacent_find(told.begin(), told.end()), told.end());
    }
}

TEST(Calendar, FormatsLimitsAndWhatIsNoTime) {
    const double day = DaysOf(1969, 12, 31, 86399.5);
    EXPECT_EQ(FormatTime(day, "%A %a %e %B %y %j %H:%M:%S.%f %m/%d %q%%"),
              "Wednesday Wed 31 December 69 365 23:59:59.500 12/31 %q%");
    CalendarOptions options;
    options.format = "%Y-%m";
    EXPECT_EQ(TextsOf(CalendarInside(0, 365, options)),
              "1970-01 1970-03 1970-05 1970-07 1970-09 1970-11 1971-01");
    options.round = true;
    EXPECT_EQ(FormatTime(AutoCalendar(40, 365, options).min, "%e %b"), "1 Jan");
    for (const double bad : {std::nan(""), HUGE_VAL, 1e9}) {
        EXPECT_EQ(FormatTime(bad, "%Y"), "");
        EXPECT_TRUE(CalendarInside(0, bad).majors.empty());
        EXPECT_LT(AutoCalendar(0, bad).min, AutoCalendar(0, bad).max);
    }
    EXPECT_FALSE(AutoCalendar(5, 5).majors.empty());
    EXPECT_LT(CalendarInside(1e7, 1e7 + 2e-9).majors.size(), 10U) << "steps below the last digit";
}

}  // namespace
}  // namespace varnel
