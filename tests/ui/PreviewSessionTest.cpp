#include "shell/ui/PreviewSession.h"
#include "base/IniFile.h"
#include "base/ScriptedPrompter.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"
#include "common/WindowFixtures.h"
#include "designer/DesignerDocument.h"
#include "designer/LivePreviewPane.h"
#include "designer/frmCustomLayout.h"
#include "preview/frmPrintpreview.h"
#include "render/ImageOutput.h"
#include "render/PageEngine.h"
#include "shell/ReportJob.h"
#include "shell/TemplatePreview.h"
#include "shell/ui/DesignerSession.h"

#include <QDir>
#include <QPointer>
#include <QTest>

using namespace tavrel;

// Print Preview from the main window: the demo job laid out into a preview window that is on
// screen while the pages are made.
class PreviewSessionTest : public QObject {
    Q_OBJECT

private slots:
    void previewsDemoJob();
    void designerPreviewsTheTemplateLive();
};

void PreviewSessionTest::previewsDemoJob() {
    testsupport::DemoJob demo;
    QVERIFY(demo.loaded);
    const ReportSelection selection = ReportJob::selectionFromJobFile(demo.context);
    frmPrintpreview *window = PreviewSession::start(demo.context, demo.prompter, selection,
                                                    "Classic Customer.cst", nullptr);
    QVERIFY(window->isVisible());
    QCOMPARE(window->windowTitle(), QString("Print Preview - Template [Classic Customer.cst]"));
    QCOMPARE(window->pageCount(), 7);
    QVERIFY(demo.prompter.messages().isEmpty());
    window->dispatch("mnuViewLast");
    QCOMPARE(window->currentPage(), 7);
    window->close();
    QTRY_VERIFY(!window->isVisible());
}

// The designer's live preview is the body-only report of the template being edited, page for
// page, and follows an edit that has not been saved.
void PreviewSessionTest::designerPreviewsTheTemplateLive() {
    testsupport::DemoJob demo;
    QVERIFY(demo.loaded);
    // A copy: the designer may save what it edits.
    const QString body = demo.dir.filePath("Classic Customer.cst");
    QVERIFY(QFile::copy(testsupport::sourcePath("resources/Print Templates/Classic Customer.cst"),
                        body));

    ReportJob report(demo.context, sectionOnlySelection(TemplateKind::Custom, body), demo.prompter);
    PageEngine engine;
    report.run(engine);
    const QImage expected = renderPageImage(engine, 1, TemplatePreviewOptions().dpi);

    QPointer<frmCustomLayout> window = DesignerSession::open(demo.context, demo.prompter, body);
    LivePreviewPane *pane = window->livePreview();
    QTRY_VERIFY(pane->pageImage() != nullptr);
    QCOMPARE(pane->statusText(), QString("Page 1 of %1").arg(engine.PageCount()));
    QVERIFY(*pane->pageImage() == expected);

    window->dispatch("mnuSelectAll");
    demo.prompter.queueAnswer(MessageAnswer::Yes);
    window->dispatch("mnuDeleteBox");
    pane->refresh();
    QVERIFY(*pane->pageImage() != expected);
    QCOMPARE(window->document().isSaved(), false);

    demo.prompter.queueAnswer(MessageAnswer::No); // leave without saving
    window->close();
    QTRY_VERIFY(window.isNull());
}

TAVREL_TEST(PreviewSessionTest)
#include "PreviewSessionTest.moc"
