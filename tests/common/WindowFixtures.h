#pragma once

#include "base/IniFile.h"
#include "base/ScriptedPrompter.h"
#include "common/TestSupport.h"
#include "preview/PreviewActions.h"
#include "shell/AppContext.h"
#include "shell/Startup.h"
#include "shell/ui/ReportActions.h"

#include <QColor>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QSize>
#include <QTemporaryDir>

namespace testsupport {

// A picture file of this size and colour, framed and crossed so that its placing shows.
inline QString writePicture(const QString &path, QSize pixels, QColor colour) {
    QImage image(pixels, QImage::Format_RGB32);
    image.fill(colour);
    QPainter painter(&image);
    painter.setPen(Qt::black);
    painter.drawRect(image.rect().adjusted(0, 0, -1, -1));
    painter.drawLine(0, 0, pixels.width(), pixels.height());
    painter.end();
    image.save(path);
    return path;
}

// The main window's report actions, recorded instead of run.
struct RecordingReportActions : tavrel::ReportActions {
    QStringList calls;
    void preview(const tavrel::ReportSelection &, const QString &caption) override {
        calls << QStringLiteral("preview:") + caption;
    }
    void print(const tavrel::ReportSelection &) override { calls << QStringLiteral("print"); }
    void exportPdf(const tavrel::ReportSelection &, const QString &path) override {
        calls << QStringLiteral("pdf:") + QFileInfo(path).fileName();
    }
    void openDesigner(int row, const QString &path) override {
        calls << QStringLiteral("design:%1:%2").arg(row).arg(QFileInfo(path).fileName());
    }
    void printerProperties() override { calls << QStringLiteral("properties"); }
};

// The preview's actions, recorded; the RTF export "writes" rtfPath.
struct RecordingPreviewActions : tavrel::PreviewActions {
    QStringList calls;
    QString rtfPath;
    void print() override { calls << QStringLiteral("print"); }
    void rerunHtml() override { calls << QStringLiteral("html"); }
    QString rerunRtf() override {
        calls << QStringLiteral("rtf");
        return rtfPath;
    }
    void about() override { calls << QStringLiteral("about"); }
    void help() override { calls << QStringLiteral("help"); }
};

// Where the demo job's templates come from: the shipped folder it names, or a copy of the
// shipped templates in a folder of the job's own (for tests that save templates).
enum class DemoTemplates { Shipped, OwnFolder };

// The demo job in a folder of its own, loaded as start-up loads it.
struct DemoJob {
    QTemporaryDir dir;
    tavrel::ScriptedPrompter prompter;
    tavrel::AppContext context;
    QString job;
    bool loaded = false; // start-up took the job

    explicit DemoJob(DemoTemplates templates = DemoTemplates::Shipped,
                     const QString &runMode = QStringLiteral("1")) {
        job = copyDemoJob(dir.path());
        if (templates == DemoTemplates::OwnFolder) {
            const QString folder = dir.filePath(QStringLiteral("Templates"));
            QDir().mkpath(folder);
            const QDir shipped(sourcePath(QStringLiteral("resources/Print Templates")));
            const QStringList kinds = {QStringLiteral("*.cov"), QStringLiteral("*.cst"),
                                       QStringLiteral("*.sum")};
            for (const QString &name : shipped.entryList(kinds, QDir::Files))
                QFile::copy(shipped.filePath(name), QDir(folder).filePath(name));
            tavrel::IniFile::write(job, QStringLiteral("Printer"),
                                   {{QStringLiteral("Template Directory"), folder},
                                    {QStringLiteral("Function"), runMode}});
        }
        loaded =
            tavrel::Startup::loadJob(context, job, dir.path(), prompter, tavrel::PrinterList{});
    }
    QString templatePath(const QString &name) const {
        return QDir(context.paths.templateFolder).filePath(name);
    }
};

} // namespace testsupport
