#pragma once

#include <QLatin1String>
#include <QString>

#include <array>
#include <cstddef>

namespace tavrel {

// The three templates of a report and whether each section is printed: what the main window
// shows, what a group file and the job file hold, what the print check and the command line
// test. Rows are 0 cover, 1 body, 2 summary.
struct ReportSelection {
    static constexpr std::size_t Rows = 3;

    // Paths as held (empty when none is chosen).
    std::array<QString, Rows> templates;
    // "1" prints the section and "0" does not. Text read from a job file is kept as it stands,
    // because the check before a direct print run counts only "0" as off, while the main window
    // ticks only "1".
    std::array<QString, Rows> printable{QStringLiteral("0"), QStringLiteral("0"),
                                        QStringLiteral("0")};

    static QString flag(bool on) { return on ? QStringLiteral("1") : QStringLiteral("0"); }
    bool isPrintable(std::size_t row) const { return printable[row] == QLatin1String("1"); }
    bool isSwitchedOff(std::size_t row) const { return printable[row] == QLatin1String("0"); }
    bool hasAnyTemplate() const {
        return !templates[0].isEmpty() || !templates[1].isEmpty() || !templates[2].isEmpty();
    }

    bool operator==(const ReportSelection &) const = default;
};

} // namespace tavrel
