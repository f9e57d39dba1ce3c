#include "shell/ui/PreviewSession.h"
#include "base/IniFile.h"
#include "base/ScriptedPrompter.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"
#include "preview/frmPrintpreview.h"
#include "shell/ReportJob.h"
#include "shell/Startup.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace tavrel;

// Print Preview from the main window: the demo job laid out into a preview window that is on
// screen while the pages are made.
class PreviewSessionTest : public QObject {
    Q_OBJECT

private slots:
    void previewsDemoJob();
};

void PreviewSessionTest::previewsDemoJob() {
    QTemporaryDir dir;
    const QString demo = testsupport::sourcePath("examples/demo");
    for (const QString &name : QDir(demo).entryList(QDir::Files))
        QVERIFY(QFile::copy(QDir(demo).filePath(name), dir.filePath(name)));
    const QString job = dir.filePath("job.ini");
    QFile::setPermissions(job, QFile::ReadOwner | QFile::WriteOwner);
    const QString templates = testsupport::sourcePath("resources/Print Templates");
    IniFile::write(job, "Printer",
                   {{"Template Directory", templates},
                    {"Cover Template", templates + "/Classic.cov"},
                    {"Body Template", templates + "/Classic Customer.cst"},
                    {"Summary Template", templates + "/Classic Customer.sum"}});

    ScriptedPrompter prompter;
    AppContext context;
    QVERIFY(Startup::loadJob(context, job, dir.path(), prompter, PrinterList{}));
    const MenuSelection selection = ReportJob::selectionFromJobFile(context);
    frmPrintpreview *window =
        PreviewSession::start(context, prompter, selection, "Classic Customer.cst", nullptr);
    QVERIFY(window->isVisible());
    QCOMPARE(window->windowTitle(), QString("Print Preview - Template [Classic Customer.cst]"));
    QCOMPARE(window->pageCount(), 7);
    QVERIFY(prompter.messages().isEmpty());
    window->dispatch("mnuViewLast");
    QCOMPARE(window->currentPage(), 7);
    window->close();
    QTRY_VERIFY(!window->isVisible());
}

TAVREL_TEST(PreviewSessionTest)
#include "PreviewSessionTest.moc"
