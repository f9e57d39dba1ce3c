#pragma once

#include "base/IniFile.h"
#include "common/FileSizeLimit.h"
#include "common/TestSupport.h"

#include <QDateTime>
#include <QDir>
#include <QFile>

namespace exporttest {

using testsupport::FileSizeLimit;

// A value no specification should be able to turn into markup or RTF control words.
inline const char HostileDescription[] =
    "<script>alert(\"x\")</script> & {\\rtf1 \\par} caf\xc3\xa9";

// The time the test SIF was "saved" and its report runs, so the date captions stay put.
inline QDateTime fixedTime() {
    return QDateTime(QDate(2026, 11, 20), QTime(14, 32, 5), Qt::UTC);
}

inline QString templateFolder() {
    return testsupport::sourcePath(QStringLiteral("resources/Print Templates"));
}

inline QString itemDescription(int item) {
    return item == 2 ? QString::fromUtf8(HostileDescription)
                     : QStringLiteral("Work table number %1").arg(item);
}

// Writes job.sif (items numbered PART-1, PART-2, ...; the second with the hostile description,
// the file time fixed) and job.ini on the bundled templates into folder, and returns the job
// file's path. sections: whether the cover, body and summary print.
inline QString writeJob(const QString &folder, int items, std::array<bool, 3> sections) {
    QByteArray sif = "SF=Harbor Point Offices.sp4\r\nST=Export Test\r\nDT=11/20/2026\r\n"
                     "TM=14:32:05\r\n";
    for (int i = 1; i <= items; ++i) {
        sif += "PN=PART-" + QByteArray::number(i) + "\r\nPD=" + itemDescription(i).toUtf8() +
               "\r\nMC=LWS\r\nQT=2\r\nPL=100.00\r\nSP=60.00\r\nS-=40\r\nP%=50\r\nBP=50.00\r\n";
    }
    const QDir dir(folder);
    const QString sifPath = dir.filePath(QStringLiteral("job.sif"));
    // The reader takes Windows-1252; the test text is spelled in UTF-8 above.
    testsupport::writeBytes(sifPath, QString::fromUtf8(sif).toLatin1());
    QFile file(sifPath);
    if (file.open(QIODevice::ReadWrite))
        file.setFileTime(fixedTime(), QFileDevice::FileModificationTime);
    file.close();
    const QString job = dir.filePath(QStringLiteral("job.ini"));
    const QString templates = templateFolder();
    const auto flag = [](bool on) { return on ? QStringLiteral("1") : QStringLiteral("0"); };
    testsupport::writeBytes(job, "[Printer]\r\nFunction=1\r\n");
    tavrel::IniFile::write(
        job, QStringLiteral("Printer"),
        {{QStringLiteral("TempPrintDocument"), QStringLiteral("job.sif")},
         {QStringLiteral("ActiveDocument"), QStringLiteral("Harbor Point Offices.sp4")},
         {QStringLiteral("Template Directory"), templates},
         {QStringLiteral("MarginLeft"), QStringLiteral("500")},
         {QStringLiteral("MarginRight"), QStringLiteral("500")},
         {QStringLiteral("MarginTop"), QStringLiteral("500")},
         {QStringLiteral("MarginBottom"), QStringLiteral("500")},
         {QStringLiteral("Cover Template"), templates + QStringLiteral("/Classic.cov")},
         {QStringLiteral("Body Template"), templates + QStringLiteral("/Classic Customer.cst")},
         {QStringLiteral("Summary Template"), templates + QStringLiteral("/Classic Customer.sum")},
         {QStringLiteral("Cover Printable"), flag(sections[0])},
         {QStringLiteral("Body Printable"), flag(sections[1])},
         {QStringLiteral("Summary Printable"), flag(sections[2])}});
    return job;
}

} // namespace exporttest
