#pragma once

#include <QDir>
#include <QImage>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>

#include <pwd.h>
#include <unistd.h>

// Printing against the real CUPS server and its virtual PDF printer "PDF" (scripts/cups-setup.sh
// starts one), which writes each job as a PDF into ~/PDF.
namespace testsupport::cups {

// Runs program to its end (at most two minutes); its output and errors.
inline QString run(const QString &program, const QStringList &args, int *exitCode = nullptr) {
    QProcess process;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    process.setProcessEnvironment(env);
    process.start(program, args);
    process.waitForFinished(120000);
    if (exitCode)
        *exitCode = process.exitCode();
    return QString::fromUtf8(process.readAllStandardOutput() + process.readAllStandardError());
}

inline bool pdfPrinterReady() {
    return run(QStringLiteral("lpstat"), {QStringLiteral("-p"), QStringLiteral("PDF")})
               .indexOf(QStringLiteral("printer PDF")) >= 0;
}

inline QDir printedFolder() {
    return QDir(QString::fromLocal8Bit(getpwuid(getuid())->pw_dir)).filePath(QStringLiteral("PDF"));
}

inline QStringList printedFiles() {
    return printedFolder().entryList({QStringLiteral("*.pdf")}, QDir::Files);
}

// The PDF of the job printed since before was listed, once the queue is idle again and the
// file closed; empty when none came within timeoutMs.
inline QString waitForPrinted(const QStringList &before, int timeoutMs) {
    QString printed;
    const bool done = QTest::qWaitFor(
        [&] {
            for (const QString &name : printedFiles()) {
                if (!before.contains(name))
                    printed = printedFolder().filePath(name);
            }
            return !printed.isEmpty() &&
                   run(QStringLiteral("lpstat"), {QStringLiteral("-p"), QStringLiteral("PDF")})
                       .contains(QStringLiteral("idle"));
        },
        timeoutMs);
    QTest::qWait(500); // cups-pdf closes the file after the queue turns idle
    return done ? printed : QString();
}

inline int pdfPages(const QString &pdf) {
    const QRegularExpressionMatch match = QRegularExpression(QStringLiteral("Pages:\\s+(\\d+)"))
                                              .match(run(QStringLiteral("pdfinfo"), {pdf}));
    return match.hasMatch() ? match.captured(1).toInt() : -1;
}

// The first page of pdf at 40 dpi in grey, drawn into folder as name.png.
inline QImage firstPage(const QString &pdf, const QString &folder, const QString &name) {
    run(QStringLiteral("pdftoppm"),
        {QStringLiteral("-r"), QStringLiteral("40"), QStringLiteral("-f"), QStringLiteral("1"),
         QStringLiteral("-l"), QStringLiteral("1"), QStringLiteral("-png"),
         QStringLiteral("-singlefile"), pdf, QDir(folder).filePath(name)});
    return QImage(QDir(folder).filePath(name + QStringLiteral(".png")))
        .convertToFormat(QImage::Format_Grayscale8);
}

// The share of pixels of two grey pictures of one size that differ clearly.
inline double differingShare(const QImage &a, const QImage &b) {
    qint64 differing = 0;
    for (int y = 0; y < a.height(); ++y) {
        const uchar *left = a.constScanLine(y);
        const uchar *right = b.constScanLine(y);
        for (int x = 0; x < a.width(); ++x)
            differing += std::abs(int(left[x]) - int(right[x])) > 96 ? 1 : 0;
    }
    return double(differing) / double(a.width() * a.height());
}

} // namespace testsupport::cups
