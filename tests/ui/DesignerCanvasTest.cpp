#include "base/ScriptedPrompter.h"
#include "common/DesignerWindow.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"
#include "designer/DesignCanvas.h"
#include "designer/DesignerActions.h"
#include "designer/FieldList.h"
#include "designer/frmCustomLayout.h"
#include "shell/JobFile.h"

#include <QApplication>
#include <QDir>
#include <QMenu>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

using namespace tavrel;
using testsupport::addBox;
using testsupport::centreOf;

// The page canvas driven by mouse and keys: moving and resizing through the drag rectangle,
// snapping, refusals, rubber band and shift-click selection, arrow keys as one undo step, the
// page-centre tip.
class DesignerCanvasTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void dragMovesAndSnaps();
    void altMovesFreely();
    void cannotPlaceOnAnotherBox();
    void resizeThroughHandle();
    void rubberBandAndShiftClick();
    void arrowKeysAreOneUndoStep();
    void bandsFollowThePrintedGeometry();
    void centreMarkerTip();

private:
    std::unique_ptr<frmCustomLayout> makeWindow();

    QTemporaryDir m_dir;
    JobFile m_jobModel;
    ScriptedPrompter m_prompter;
    NoDesignerActions m_actions;
};

void DesignerCanvasTest::init() {
    m_prompter = ScriptedPrompter();
}

std::unique_ptr<frmCustomLayout> DesignerCanvasTest::makeWindow() {
    return testsupport::openDesigner(m_dir.filePath("job.ini"), m_jobModel, m_dir.path(),
                                     m_prompter, m_actions);
}

void DesignerCanvasTest::dragMovesAndSnaps() {
    auto window = makeWindow();
    DesignCanvas *canvas = window->canvas();
    const int slot = addBox(*window, "Part Number", 1440, 1440);
    const int stack = window->document().undoStack().count();
    const QPoint start = centreOf(*window, slot);
    // 100% zoom: 15 twips a pixel. 13 px = 195 twips, snapped to the 60-twip grid: 180.
    QTest::mousePress(canvas, Qt::LeftButton, {}, start);
    QTest::mouseMove(canvas, start + QPoint(5, 0));
    QTest::mouseMove(canvas, start + QPoint(13, 13));
    QTest::mouseRelease(canvas, Qt::LeftButton, {}, start + QPoint(13, 13));
    const BoxInfo &box = window->document().layout().box(slot);
    QCOMPARE(QPoint(box.left, box.top), QPoint(1620, 1620));
    QCOMPARE(window->document().selection().boxes, QList<int>{slot});
    QCOMPARE(window->document().undoStack().count(), stack + 1);
    window->dispatch("mnuUndo");
    QCOMPARE(QPoint(window->document().layout().box(slot).left,
                    window->document().layout().box(slot).top),
             QPoint(1440, 1440));
}

void DesignerCanvasTest::altMovesFreely() {
    auto window = makeWindow();
    DesignCanvas *canvas = window->canvas();
    const int slot = addBox(*window, "Qty", 1440, 1440);
    const QPoint start = centreOf(*window, slot);
    QTest::mousePress(canvas, Qt::LeftButton, {}, start);
    QTest::mouseMove(canvas, start + QPoint(7, 0));
    QMouseEvent move(QEvent::MouseMove, QPointF(start + QPoint(7, 0)),
                     canvas->mapToGlobal(QPointF(start + QPoint(7, 0))), Qt::NoButton,
                     Qt::LeftButton, Qt::AltModifier);
    QCoreApplication::sendEvent(canvas, &move);
    QTest::mouseRelease(canvas, Qt::LeftButton, Qt::AltModifier, start + QPoint(7, 0));
    QCOMPARE(window->document().layout().box(slot).left, 1440 + 105);
}

void DesignerCanvasTest::cannotPlaceOnAnotherBox() {
    auto window = makeWindow();
    DesignCanvas *canvas = window->canvas();
    const int first = addBox(*window, "Part Number", 0, 600);
    const int second = addBox(*window, "Qty", 3000, 600);
    const QPoint start = centreOf(*window, second);
    const QPoint over = centreOf(*window, first);
    QTest::mousePress(canvas, Qt::LeftButton, {}, start);
    QTest::mouseMove(canvas, over);
    QCOMPARE(window->statusText(), QString("Cannot place here."));
    QTest::mouseRelease(canvas, Qt::LeftButton, {}, over);
    QCOMPARE(window->document().layout().box(second).left, 3000);

    // Off the printable width is refused as well; the bands take only page fields.
    NewBoxRequest part;
    part.caption = "Part Number";
    const QPoint header = canvas->toWidget(QPointF(720 + 3000, 720 + 60));
    QCOMPARE(canvas->placeNewBox(part, header), int(TemplateLayout::NoFreeBoxSlot));
    QCOMPARE(window->statusText(), QString("Cannot place here."));
    NewBoxRequest page;
    page.caption = "Page n of  m";
    const int placed = canvas->placeNewBox(page, header);
    QVERIFY(placed != TemplateLayout::NoFreeBoxSlot);
    QCOMPARE(window->document().layout().box(placed).container, Container::header());
    QVERIFY(window->document().layout().box(placed).header);
    QCOMPARE(window->statusText(), QString());
}

void DesignerCanvasTest::resizeThroughHandle() {
    auto window = makeWindow();
    DesignCanvas *canvas = window->canvas();
    const int slot = addBox(*window, "Part Description", 0, 0);
    window->document().selectBoxes({slot});
    const QRect r = canvas->widgetRect(canvas->boxPageRect(slot));
    const QPoint handle = r.bottomRight();
    QTest::mousePress(canvas, Qt::LeftButton, {}, handle);
    QTest::mouseMove(canvas, handle + QPoint(40, 8));
    QTest::mouseRelease(canvas, Qt::LeftButton, {}, handle + QPoint(40, 8));
    const BoxInfo &box = window->document().layout().box(slot);
    QCOMPARE(box.left, 0);
    QCOMPARE(box.width, 1440 + 600);
    QCOMPARE(box.height, 420);
    QVERIFY(box.resized);

    // Dragging the corner past the opposite edge keeps the smallest size, not a negative one.
    const QPoint again = canvas->widgetRect(canvas->boxPageRect(slot)).bottomRight();
    QTest::mousePress(canvas, Qt::LeftButton, {}, again);
    QTest::mouseMove(canvas, again - QPoint(400, 200));
    QTest::mouseRelease(canvas, Qt::LeftButton, {}, again - QPoint(400, 200));
    QVERIFY(window->document().layout().box(slot).width >= DesignCanvas::MinimumSide);
    QVERIFY(window->document().layout().box(slot).height >= DesignCanvas::MinimumSide);
}

void DesignerCanvasTest::rubberBandAndShiftClick() {
    auto window = makeWindow();
    DesignCanvas *canvas = window->canvas();
    const int a = addBox(*window, "Part Number", 0, 3000);
    const int b = addBox(*window, "Qty", 2000, 3000);
    const int c = addBox(*window, "Mfg", 6000, 6000);
    const QPoint from = canvas->toWidget(QPointF(720 + 200, 720 + 2800));
    const QPoint to = canvas->toWidget(QPointF(720 + 2500, 720 + 3500));
    QTest::mousePress(canvas, Qt::LeftButton, {}, from);
    QTest::mouseMove(canvas, to);
    QTest::mouseRelease(canvas, Qt::LeftButton, {}, to);
    QCOMPARE(window->document().selection().boxes, QList<int>({a, b}));
    QTest::mouseClick(canvas, Qt::LeftButton, Qt::ShiftModifier, centreOf(*window, c));
    QCOMPARE(window->document().selection().boxes, QList<int>({a, b, c}));
    QTest::mouseClick(canvas, Qt::LeftButton, Qt::ControlModifier, centreOf(*window, a));
    QCOMPARE(window->document().selection().boxes, QList<int>({b, c}));
    // The first one picked is the reference of the alignment.
    QVERIFY(window->dispatch("mnuLefts"));
    QCOMPARE(window->document().layout().box(c).left, 2000);
}

void DesignerCanvasTest::arrowKeysAreOneUndoStep() {
    auto window = makeWindow();
    DesignCanvas *canvas = window->canvas();
    const int slot = addBox(*window, "Qty", 1440, 1440);
    window->document().selectBoxes({slot});
    const int stack = window->document().undoStack().count();
    QTest::keyClick(canvas, Qt::Key_Right);
    QTest::keyClick(canvas, Qt::Key_Right);
    QTest::keyClick(canvas, Qt::Key_Down, Qt::ControlModifier);
    QTest::keyClick(canvas, Qt::Key_Right, Qt::ShiftModifier);
    const BoxInfo &box = window->document().layout().box(slot);
    QCOMPARE(QRect(box.left, box.top, box.width, box.height), QRect(1560, 1455, 1500, 300));
    QCOMPARE(window->document().undoStack().count(), stack + 1);
    QTest::keyClick(canvas, Qt::Key_Left);
    QCOMPARE(window->document().layout().box(slot).left, 1500);
    window->dispatch("mnuUndo");
    QCOMPARE(window->document().layout().box(slot).left, 1440);

    m_prompter.queueAnswer(MessageAnswer::Yes);
    QTest::keyClick(canvas, Qt::Key_Delete);
    QCOMPARE(m_prompter.messages(), QStringList{"Are you sure you want to delete this field?"});
    QVERIFY(!window->document().layout().box(slot).placed);
}

void DesignerCanvasTest::bandsFollowThePrintedGeometry() {
    auto window = makeWindow();
    window->openOn(testsupport::sourcePath("resources/Print Templates/Classic Customer.cst"));
    DesignCanvas *canvas = window->canvas();
    const TemplateLayout &layout = window->document().layout();
    const PageArea area = canvas->pageArea();
    int body = 1;
    while (layout.box(body).container != Container::mainPort())
        ++body;
    QCOMPARE(layout.box(body).container, Container::mainPort());
    const QPoint origin = layout.containerOrigin(Container::mainPort(), area);
    QCOMPARE(canvas->boxPageRect(body).topLeft(),
             origin + QPoint(layout.box(body).left, layout.box(body).top));
    QCOMPARE(origin.y(), 720 + layout.bandHeight(Container::header()));
    QVERIFY(window->warningText().isEmpty());

    // Columns past the printable width are pointed out.
    TemplateLayout wide = layout;
    wide.box(body + 7).width += 2000; // the last column, "EXT Cust$"
    window->document().change(wide, "wide");
    QVERIFY(window->warningText().startsWith("Body columns run"));
}

void DesignerCanvasTest::centreMarkerTip() {
    auto window = makeWindow();
    DesignCanvas *canvas = window->canvas();
    QCOMPARE(canvas->toolTipAt(canvas->centerMarkerRect().center()), QString("Center of the page"));
    QCOMPARE(canvas->centerMarkerRect().center(),
             canvas->toWidget(QPointF(12240 / 2.0, 15840 / 2.0)));
    QVERIFY(canvas->toolTipAt(canvas->toWidget(QPointF(100, 100))).isEmpty());
}

TAVREL_TEST(DesignerCanvasTest)
#include "DesignerCanvasTest.moc"
