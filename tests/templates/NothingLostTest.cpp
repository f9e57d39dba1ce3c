#include "base/ErrorReport.h"
#include "base/IniFile.h"
#include "base/RuntimeError.h"
#include "base/ScriptedPrompter.h"
#include "common/FileSizeLimit.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"
#include "shell/JobFile.h"
#include "spec/FieldLengths.h"
#include "templates/GroupFile.h"
#include "templates/TemplateLayout.h"
#include "templates/TemplateWriter.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <functional>
#include <sys/resource.h>

using namespace tavrel;
using testsupport::FileSizeLimit;

namespace {

// Every file the program saves, written with a generation number so that the old and the new
// contents differ, and the procedure that reports a failed save.
struct Saver {
    QString procedure;
    QString fileName;
    std::function<void(const QString &path, int generation)> save;
};

TemplateLayout layoutOfGeneration(int generation) {
    TemplateLayout layout;
    BoxInfo &box = layout.box(1);
    box.index = 1;
    box.placed = box.visible = true;
    box.caption = QStringLiteral("Part Number");
    box.notesName = QStringLiteral("generation %1").arg(generation);
    box.left = 100 * generation;
    return layout;
}

Saver saver(const QString &kind) {
    if (kind == QLatin1String("template")) {
        return {QStringLiteral("Save Template."), QStringLiteral("body.cst"),
                [](const QString &path, int generation) {
                    TemplateWriter::write(path, layoutOfGeneration(generation),
                                          QStringLiteral("Custom pagelayout template"));
                }};
    }
    if (kind == QLatin1String("group")) {
        return {QStringLiteral("Save Group."), QStringLiteral("report.grp"),
                [](const QString &path, int generation) {
                    ReportSelection group;
                    group.printable = {"0", "1", "0"};
                    group.templates[1] = QStringLiteral("C:\\Templates\\gen%1.cst").arg(generation);
                    GroupFile::write(path, group);
                }};
    }
    if (kind == QLatin1String("field lengths")) {
        return {QStringLiteral("Save Field Length."), QStringLiteral("job.ini"),
                [](const QString &path, int generation) {
                    FieldLengths lengths = FieldLengths::builtIn();
                    lengths.setLabel(QStringLiteral("PN"),
                                     QStringLiteral("Gen %1").arg(generation));
                    JobFile::load(path).writeFieldLengths(lengths);
                }};
    }
    return {QStringLiteral("Save As Default."), QStringLiteral("job.ini"),
            [](const QString &path, int generation) {
                IniFile::write(path, QStringLiteral("User Preferences"),
                               {{QStringLiteral("CoverTemplate"),
                                 QStringLiteral("generation %1").arg(generation)},
                                {QStringLiteral("ExportHtml"), IniBoolText(generation % 2)}});
            }};
}

} // namespace

class NothingLostTest : public QObject {
    Q_OBJECT

private slots:
    void failedSaveKeepsTheOldFile_data();
    void failedSaveKeepsTheOldFile();
};

void NothingLostTest::failedSaveKeepsTheOldFile_data() {
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("failure");
    QTest::addColumn<int>("number");
    for (const char *kind : {"template", "group", "field lengths", "job file keys"}) {
        const QString name = QLatin1String(kind);
        QTest::addRow("%s, size limit", kind) << name << QStringLiteral("size limit") << 61;
        QTest::addRow("%s, folder gone", kind) << name << QStringLiteral("folder gone") << 76;
        QTest::addRow("%s, path is a folder", kind)
            << name << QStringLiteral("path is a folder") << 75;
    }
}

// Each failure happens for real: the file-size limit cuts the write part-way, the folder is
// removed between the first save and the second, or the path names a folder.
void NothingLostTest::failedSaveKeepsTheOldFile() {
    QFETCH(QString, kind);
    QFETCH(QString, failure);
    QFETCH(int, number);
    const Saver s = saver(kind);
    QTemporaryDir dir;
    const QString folder = dir.filePath(QStringLiteral("templates"));
    QVERIFY(QDir().mkpath(folder));
    QString path = folder + QLatin1Char('/') + s.fileName;

    s.save(path, 1);
    const QByteArray old = testsupport::readBytes(path);
    QVERIFY(!old.isEmpty());

    std::optional<RuntimeError> error;
    {
        std::optional<FileSizeLimit> limit;
        if (failure == QLatin1String("size limit")) {
            QVERIFY(old.size() > 16);
            limit.emplace(rlim_t(old.size() / 2)); // the new file is cut halfway
        } else if (failure == QLatin1String("folder gone")) {
            QVERIFY(QDir(folder).removeRecursively());
        } else {
            QVERIFY(QDir().mkpath(path + QStringLiteral(".d")));
            path += QStringLiteral(".d");
        }
        try {
            s.save(path, 2);
        } catch (const RuntimeError &caught) {
            error = caught;
        }
    }
    QVERIFY2(error, "the failed save must throw");
    QCOMPARE(error->number(), number);

    if (failure == QLatin1String("size limit")) {
        QCOMPARE(testsupport::readBytes(path), old);
        // No temporary file is left beside it either.
        QCOMPARE(QDir(folder).entryList(QDir::Files), QStringList{s.fileName});
    } else if (failure == QLatin1String("folder gone")) {
        QVERIFY(!QFileInfo::exists(folder)); // nothing was recreated
    } else {
        QVERIFY(QFileInfo(path).isDir());
        QCOMPARE(testsupport::readBytes(folder + QLatin1Char('/') + s.fileName), old);
    }

    // The user is told once, through the error report of the saving procedure.
    ScriptedPrompter prompter;
    reportError(prompter, s.procedure, *error);
    QCOMPARE(prompter.calls().size(), 1);
    const ScriptedPrompter::Call call = prompter.calls().constFirst();
    QCOMPARE(call.title, QStringLiteral("Tavrel - Error"));
    QCOMPARE(call.icon, MessageIcon::Exclamation);
    QVERIFY2(
        call.text.startsWith(QStringLiteral("An Error Occured at - %1\r\n\r\nError Number: %2\r\n"
                                            "Error Description: ")
                                 .arg(s.procedure)
                                 .arg(number)),
        qPrintable(call.text));
    QVERIFY(call.text.size() > call.text.indexOf(QStringLiteral("Description: ")) + 13);

    // And once the cause is gone, the same save goes through.
    if (failure == QLatin1String("size limit")) {
        s.save(path, 2);
        QVERIFY(testsupport::readBytes(path) != old);
    }
}

TAVREL_TEST(NothingLostTest)
#include "NothingLostTest.moc"
