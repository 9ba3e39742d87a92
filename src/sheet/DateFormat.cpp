// SPDX-License-Identifier: Apache-2.0
// Dates and times: serial day numbers on one side, formatted text on the other.
#include "base/Text.h"
#include "sheet/NumberFormat.h"

#include <array>
#include <cmath>
#include <cstdint>

namespace zov::sheet {
namespace {

using EKind = SFormatPart::EKind;

constexpr std::int64_t kDays1904 = 1462;   // from the 1900 system's day 0 to the 1904 system's
constexpr std::int64_t kLastDay = 2958465; // 9999-12-31
constexpr std::int64_t kUnixDay = 25569;   // 1970-01-01
constexpr std::int64_t kSecondsPerDay = 86400;

constexpr std::array<std::string_view, 12> kMonths{"January",   "February", "March",    "April",
                                                   "May",       "June",     "July",     "August",
                                                   "September", "October",  "November", "December"};
constexpr std::array<std::string_view, 7> kWeekdays{"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                    "Thursday", "Friday", "Saturday"};

struct SMoment
{
    std::int64_t year = 0;
    int month = 1;
    int day = 1;
    int weekday = 0; ///< 0 is Sunday
    std::int64_t hour = 0;
    int minute = 0;
    int second = 0;
    std::int64_t fraction = 0;       ///< in units of the format's last second digit
    std::int64_t elapsedSeconds = 0; ///< since day 0
    bool negative = false;
};

// Days from 1970-01-01 to a date of the proleptic Gregorian calendar, by eras of 400 years.
std::int64_t DaysFromCivil(std::int64_t year, int month, int day)
{
    year -= month <= 2 ? 1 : 0;
    const std::int64_t era = (year >= 0 ? year : year - 399) / 400;
    const std::int64_t yearOfEra = year - era * 400;
    const std::int64_t dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    return era * 146097 + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear - 719468;
}

void CivilFromDays(std::int64_t days, SMoment& moment)
{
    days += 719468;
    const std::int64_t era = (days >= 0 ? days : days - 146096) / 146097;
    const std::int64_t dayOfEra = days - era * 146097;
    const std::int64_t yearOfEra =
        (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const std::int64_t shifted = (5 * dayOfYear + 2) / 153;
    moment.day = static_cast<int>(dayOfYear - (153 * shifted + 2) / 5 + 1);
    moment.month = static_cast<int>(shifted < 10 ? shifted + 3 : shifted - 9);
    moment.year = yearOfEra + era * 400 + (moment.month <= 2 ? 1 : 0);
}

// The 1900 system takes 1900 for a leap year: day 60 is the 29th of February that never was, and
// day 0 the "0th" of January.
void SetDate(std::int64_t serial, bool date1904, SMoment& moment)
{
    if (date1904) {
        serial += kDays1904;
    }
    moment.weekday = static_cast<int>((serial + 6) % 7);
    if (serial == 60 && !date1904) {
        moment.year = 1900;
        moment.month = 2;
        moment.day = 29;
    } else if (serial == 0 && !date1904) {
        moment.year = 1900;
        moment.month = 1;
        moment.day = 0;
    } else {
        CivilFromDays(serial - kUnixDay + (serial < 60 && !date1904 ? 1 : 0), moment);
    }
}

bool Split(const SFormatSection& section, double value, bool date1904, SMoment& moment)
{
    moment.negative = value < 0;
    const double magnitude = std::fabs(value);
    if (!(magnitude <= static_cast<double>(kLastDay) + 1.0)) {
        return false;
    }
    std::int64_t unit = 1; // parts of a second that are told apart
    for (int i = 0; i < section.secondDigits; ++i) {
        unit *= 10;
    }
    // Shown seconds are rounded; without seconds a time is cut off, but not for an error of the
    // last bits.
    const double scaled = magnitude * static_cast<double>(kSecondsPerDay * unit);
    const auto ticks = static_cast<std::int64_t>(section.hasSeconds ? std::floor(scaled + 0.5)
                                                                    : std::floor(scaled + 1e-3));
    moment.fraction = ticks % unit;
    moment.elapsedSeconds = ticks / unit;
    const std::int64_t days = moment.elapsedSeconds / kSecondsPerDay;
    const std::int64_t secondOfDay = moment.elapsedSeconds % kSecondsPerDay;
    moment.hour = secondOfDay / 3600;
    moment.minute = static_cast<int>(secondOfDay / 60 % 60);
    moment.second = static_cast<int>(secondOfDay % 60);
    if (days + (date1904 ? kDays1904 : 0) > kLastDay) {
        return false;
    }
    SetDate(days, date1904, moment);
    return true;
}

void AppendPadded(std::string& out, std::int64_t value, int width)
{
    const std::string text = std::to_string(value);
    const auto wanted = static_cast<std::size_t>(width);
    out.append(text.size() < wanted ? wanted - text.size() : 0, '0').append(text);
}

void AppendMonth(std::string& out, const SMoment& moment, int width)
{
    const std::string_view name = kMonths[static_cast<std::size_t>(moment.month - 1)];
    if (width <= 2) {
        AppendPadded(out, moment.month, width);
    } else if (width == 4 || width > 5) {
        out += name;
    } else {
        out += name.substr(0, width == 3 ? 3 : 1);
    }
}

void AppendDay(std::string& out, const SMoment& moment, int width)
{
    const std::string_view name = kWeekdays[static_cast<std::size_t>(moment.weekday)];
    if (width <= 2) {
        AppendPadded(out, moment.day, width);
    } else {
        out += width == 3 ? name.substr(0, 3) : name;
    }
}

void AppendPart(std::string& out, const SFormatSection& section, const SFormatPart& part,
                const SMoment& moment)
{
    const int twoDigits = part.width >= 2 ? 2 : 1;
    switch (part.kind) {
    case EKind::Year:
    case EKind::BuddhistYear: {
        const std::int64_t year = moment.year + (part.kind == EKind::BuddhistYear ? 543 : 0);
        AppendPadded(out, part.width <= 2 ? year % 100 : year, part.width <= 2 ? 2 : 4);
        break;
    }
    case EKind::Month:
        AppendMonth(out, moment, part.width);
        break;
    case EKind::Day:
        AppendDay(out, moment, part.width);
        break;
    case EKind::Hour: {
        const std::int64_t hour = section.hasAmPm ? (moment.hour + 11) % 12 + 1 : moment.hour;
        AppendPadded(out, hour, twoDigits);
        break;
    }
    case EKind::Minute:
        AppendPadded(out, moment.minute, twoDigits);
        break;
    case EKind::Second:
        AppendPadded(out, moment.second, twoDigits);
        break;
    case EKind::SubSecond:
        AppendPadded(out, moment.fraction, part.width);
        break;
    case EKind::AmPm:
        out += moment.hour < 12 ? "A" : "P";
        out += part.width == 1 ? "" : "M";
        break;
    case EKind::ElapsedHour:
        AppendPadded(out, moment.elapsedSeconds / 3600, part.width);
        break;
    case EKind::ElapsedMinute:
        AppendPadded(out, moment.elapsedSeconds / 60, part.width);
        break;
    case EKind::ElapsedSecond:
        AppendPadded(out, moment.elapsedSeconds, part.width);
        break;
    default:
        out += part.text;
        break;
    }
}

bool ReadDigits(std::string_view& text, std::size_t count, int& value)
{
    if (text.size() < count) {
        return false;
    }
    value = 0;
    for (std::size_t i = 0; i < count; ++i) {
        if (!IsDigit(text[i])) {
            return false;
        }
        value = value * 10 + (text[i] - '0');
    }
    text.remove_prefix(count);
    return true;
}

bool SkipChar(std::string_view& text, char c)
{
    if (text.empty() || text[0] != c) {
        return false;
    }
    text.remove_prefix(1);
    return true;
}

bool ReadTime(std::string_view& text, double& dayFraction)
{
    int hour = 0;
    int minute = 0;
    int second = 0;
    if (!ReadDigits(text, 2, hour) || !SkipChar(text, ':') || !ReadDigits(text, 2, minute)) {
        return false;
    }
    double fraction = 0;
    if (SkipChar(text, ':')) {
        if (!ReadDigits(text, 2, second)) {
            return false;
        }
        if (SkipChar(text, '.')) {
            for (double weight = 0.1; !text.empty() && IsDigit(text[0]); weight /= 10) {
                fraction += weight * (text[0] - '0');
                text.remove_prefix(1);
            }
        }
    }
    SkipChar(text, 'Z');
    dayFraction = (hour * 3600.0 + minute * 60.0 + second + fraction) / kSecondsPerDay;
    return hour < 24 && minute < 60 && second < 61;
}

} // namespace

bool AppendDate(std::string& out, const SFormatSection& section, double value, bool date1904)
{
    SMoment moment;
    if (!Split(section, value, date1904, moment)) {
        return false;
    }
    if (moment.negative) { // only a duration can be negative
        bool elapsed = false;
        for (const SFormatPart& part : section.parts) {
            elapsed =
                elapsed || (part.kind >= EKind::ElapsedHour && part.kind <= EKind::ElapsedSecond);
        }
        if (!elapsed) {
            return false;
        }
        out += '-';
    }
    for (const SFormatPart& part : section.parts) {
        AppendPart(out, section, part, moment);
    }
    return true;
}

bool ParseIsoDate(std::string_view text, bool date1904, double& serial)
{
    text = Trim(text);
    double time = 0;
    if (text.size() > 2 && text[2] == ':') {
        const bool good = ReadTime(text, time) && text.empty();
        serial = time;
        return good;
    }
    int year = 0;
    int month = 0;
    int day = 0;
    if (!ReadDigits(text, 4, year) || !SkipChar(text, '-') || !ReadDigits(text, 2, month) ||
        !SkipChar(text, '-') || !ReadDigits(text, 2, day) || month < 1 || month > 12 || day < 1 ||
        day > 31) {
        return false;
    }
    if (SkipChar(text, 'T') && !ReadTime(text, time)) {
        return false;
    }
    std::int64_t days = DaysFromCivil(year, month, day) + kUnixDay;
    days -= days <= 60 ? 1 : 0;
    serial = static_cast<double>(days - (date1904 ? kDays1904 : 0)) + time;
    return text.empty() && days >= 0;
}

} // namespace zov::sheet
