#pragma once

#include <QString>

namespace tavrel {

class Prompter;

// The print state: the three templates of a report and whether each is printed ("1" or "0"),
// kept in section "Printer" of the job file.
struct PrintState {
    QString coverTemplate;
    QString bodyTemplate;
    QString summaryTemplate;
    QString coverPrintable;
    QString bodyPrintable;
    QString summaryPrintable;

    bool operator==(const PrintState &) const = default;
};

class PrintSelection {
public:
    // The job's template folder: "Template Directory" of section "Printer", with "\" read as
    // "/" and a relative folder taken from the job file's folder; empty means the executable
    // folder + "/Print Templates".
    static QString templateDirectory(const QString &jobFile, const QString &executableFolder);

    // Reads the print state. An empty value takes its default (the Classic templates in the
    // template folder, printable "1"), which is also written back to the job file; write
    // failures are ignored. The three flags are then read once more, and one still empty (the
    // write-back failed) becomes "0" without being written.
    static PrintState read(const QString &jobFile, const QString &templateDirectory);

    // The message that stops a direct print run, empty when printing may go on. Missing files
    // are reported whether or not their kind is printable.
    static QString checkMessage(const PrintState &state);

    // Reads the print state and checks it; shows the message (exclamation icon, the program's
    // title) and answers false when printing may not go on.
    static bool check(const QString &jobFile, const QString &templateDirectory, Prompter &prompter);

    // A path from a job or group file as this system opens it ("\" separators become "/").
    static QString localPath(const QString &path);
};

} // namespace tavrel
