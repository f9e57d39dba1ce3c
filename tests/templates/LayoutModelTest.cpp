#include "base/RuntimeError.h"
#include "common/TestRegistry.h"
#include "templates/DragRect.h"
#include "templates/PrintDefinitions.h"
#include "templates/TemplateKind.h"
#include "templates/TemplateLayout.h"

#include <QTest>

using namespace tavrel;

class LayoutModelTest : public QObject {
    Q_OBJECT

private slots:
    void newElementsCarryHighestSlot();
    void freeSlotFinders();
    void slotAccessOutOfRange();
    void kindOfPath_data();
    void kindOfPath();
    void containersOnThePage();
    void rectangleMapping_data();
    void rectangleMapping();
    void dragRectGeometry();
    void ptInRect_data();
    void ptInRect();
    void dragRectScreenRoundTrip();
    void printDefinitionsMirrorBoxes();
};

void LayoutModelTest::newElementsCarryHighestSlot() {
    const BoxInfo box;
    QCOMPARE(box.index, qint16(137));
    QCOMPARE(box.custBkColor, 16777215);
    QVERIFY(!box.placed && !box.visible && box.caption.isEmpty() && box.width == 0);
    QCOMPARE(LineInfo().index, qint16(47));
    QCOMPARE(PrintRect().rectIndex, qint16(20));
    QCOMPARE(CustomTemplate().tIndex, qint16(137));
    QCOMPARE(CustomTemplate().tBackColor, 16777215);
    QCOMPARE(CustomLine().tIndex, qint16(47));
    // The arrays are made of such fresh elements: slot numbers come only from whoever places.
    const TemplateLayout layout;
    QCOMPARE(layout.box(1).index, qint16(137));
    QCOMPARE(layout.line(47).index, qint16(47));
}

void LayoutModelTest::freeSlotFinders() {
    TemplateLayout layout;
    QCOMPARE(layout.freeBoxSlot(), 1);
    QCOMPARE(layout.freeLineSlot(), 1);
    QCOMPARE(layout.freeRectSlot(), 1);
    layout.box(1).placed = true;
    layout.box(2).visible = true; // shown but not placed: still free
    QCOMPARE(layout.freeBoxSlot(), 2);
    layout.rect(1).rectPlaced = true; // rectangles count as taken only when visible
    QCOMPARE(layout.freeRectSlot(), 1);

    for (int slot = 1; slot <= TemplateLayout::BoxCapacity; ++slot)
        layout.box(slot).placed = true;
    for (int slot = 1; slot <= TemplateLayout::LineCapacity; ++slot)
        layout.line(slot).placed = true;
    for (int slot = 1; slot <= TemplateLayout::RectCapacity; ++slot)
        layout.rect(slot).rectVisible = true;
    QCOMPARE(layout.freeBoxSlot(), 200);
    QCOMPARE(layout.freeLineSlot(), 100);
    QCOMPARE(layout.freeRectSlot(), 100);

    layout.box(137).placed = false;
    QCOMPARE(layout.freeBoxSlot(), 137);
}

void LayoutModelTest::slotAccessOutOfRange() {
    TemplateLayout layout;
    for (int slot : {0, -1, 138, 200}) {
        try {
            layout.box(slot);
            QFAIL("no error");
        } catch (const RuntimeError &error) {
            QCOMPARE(error.number(), 9);
        }
    }
    QVERIFY_THROWS_EXCEPTION(RuntimeError, layout.line(48));
    QVERIFY_THROWS_EXCEPTION(RuntimeError, layout.rect(21));
}

void LayoutModelTest::kindOfPath_data() {
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("kind");
    QTest::newRow("cover") << "/t/Classic.cov" << int(TemplateKind::Cover);
    QTest::newRow("custom") << "C:\\t\\Classic Customer.cst" << int(TemplateKind::Custom);
    QTest::newRow("summary") << "a.sum" << int(TemplateKind::Summary);
    QTest::newRow("upper case is not a template") << "A.COV" << int(TemplateKind::Unknown);
    QTest::newRow("only the last four characters") << "x.cov.bak" << int(TemplateKind::Unknown);
    QTest::newRow("bare extension") << ".cst" << int(TemplateKind::Custom);
    QTest::newRow("no dot") << "xcov" << int(TemplateKind::Unknown);
    QTest::newRow("group") << "g.grp" << int(TemplateKind::Unknown);
    QTest::newRow("empty") << "" << int(TemplateKind::Unknown);
}

void LayoutModelTest::kindOfPath() {
    QFETCH(QString, path);
    QFETCH(int, kind);
    QCOMPARE(int(templateKindOfPath(path)), kind);
}

void LayoutModelTest::containersOnThePage() {
    TemplateLayout layout;
    BoxInfo &head = layout.box(1);
    head.placed = true;
    head.container = Container::header();
    head.top = 100;
    head.height = 400;
    LineInfo &rule = layout.line(1);
    rule.placed = true;
    rule.container = Container::header();
    rule.top = 600;
    rule.height = 20;
    BoxInfo &foot = layout.box(2);
    foot.placed = true;
    foot.container = Container::footer();
    foot.top = 50;
    foot.height = 250;
    BoxInfo &unplaced = layout.box(3); // not placed: takes no room
    unplaced.container = Container::footer();
    unplaced.top = 5000;

    QCOMPARE(layout.bandHeight(Container::header()), 620);
    QCOMPARE(layout.bandHeight(Container::footer()), 300);
    const PageArea area = PageArea::letter(false, 720);
    QCOMPARE(layout.containerOrigin(Container::header(), area), QPoint(720, 720));
    QCOMPARE(layout.containerOrigin(Container::mainPort(), area), QPoint(720, 1340));
    QCOMPARE(layout.containerOrigin(Container::footer(), area), QPoint(720, 15840 - 720 - 300));
    const PageArea landscape = PageArea::letter(true, 0);
    QCOMPARE(landscape.pageWidth, 15840);
    QCOMPARE(layout.containerOrigin(Container::footer(), landscape), QPoint(0, 12240 - 300));
    QCOMPARE(Container::normalized(QStringLiteral("Shpheaderfooter(0)")), Container::mainPort());
    QCOMPARE(Container::normalized(Container::footer()), Container::footer());
}

void LayoutModelTest::rectangleMapping_data() {
    QTest::addColumn<float>("value");
    QTest::addColumn<float>("reference");
    QTest::addColumn<float>("print");
    QTest::addColumn<float>("expected");
    QTest::newRow("equal gives the reference") << 500.0f << 500.0f << 1440.0f << 1440.0f;
    QTest::newRow("below") << 800.0f << 500.0f << 1440.0f << 1740.0f;
    QTest::newRow("above") << 200.0f << 500.0f << 1440.0f << 1140.0f;
    QTest::newRow("fractions") << 10.5f << 0.25f << 1.0f << 11.25f;
}

void LayoutModelTest::rectangleMapping() {
    QFETCH(float, value);
    QFETCH(float, reference);
    QFETCH(float, print);
    QFETCH(float, expected);
    QCOMPARE(PrintRect::RectangleTopOnPrint(value, reference, print), expected);
    QCOMPARE(PrintRect::RectangleRightOnPrint(value, reference, print), expected);
    QCOMPARE(PrintRect::RectangleBottomOnPrint(value, reference, print, 1e9f), expected);
    // The bottom never passes its bound.
    QCOMPARE(PrintRect::RectangleBottomOnPrint(value, reference, print, expected - 1),
             expected - 1);
}

void LayoutModelTest::dragRectGeometry() {
    DragRect rect;
    rect.SetRectToCtrl({100, 200, 300, 400});
    QCOMPARE(rect.Left, 100);
    QCOMPARE(rect.Top, 200);
    QCOMPARE(rect.Right, 400);
    QCOMPARE(rect.Bottom, 600);
    QCOMPARE(rect.Width(), 300);
    QCOMPARE(rect.Height(), 400);
    QCOMPARE(rect.SetCtrlToRect(), (ControlGeometry{100, 200, 300, 400}));

    rect.Left = 500;
    rect.Right = 100;
    rect.Top = 50;
    rect.Bottom = 10;
    QCOMPARE(rect.Width(), -400);
    rect.NormalizeRect();
    QCOMPARE(rect.Left, 100);
    QCOMPARE(rect.Right, 500);
    QCOMPARE(rect.Top, 10);
    QCOMPARE(rect.Bottom, 50);

    DragRect huge;
    QVERIFY_THROWS_EXCEPTION(RuntimeError,
                             huge.SetRectToCtrl({2147483000, 0, 1000, 10})); // overflow
}

void LayoutModelTest::ptInRect_data() {
    QTest::addColumn<float>("x");
    QTest::addColumn<float>("y");
    QTest::addColumn<bool>("inside");
    QTest::newRow("top-left corner") << 10.0f << 20.0f << true;
    QTest::newRow("inside") << 50.0f << 50.0f << true;
    QTest::newRow("right edge") << 100.0f << 50.0f << false;
    QTest::newRow("bottom edge") << 50.0f << 200.0f << false;
    QTest::newRow("just inside right") << 99.9f << 199.9f << true;
    QTest::newRow("left of it") << 9.9f << 50.0f << false;
    QTest::newRow("above it") << 50.0f << 19.5f << false;
}

void LayoutModelTest::ptInRect() {
    QFETCH(float, x);
    QFETCH(float, y);
    QFETCH(bool, inside);
    DragRect rect;
    rect.Left = 10;
    rect.Top = 20;
    rect.Right = 100;
    rect.Bottom = 200;
    QCOMPARE(rect.PtInRect(x, y), inside);
}

void LayoutModelTest::dragRectScreenRoundTrip() {
    const ScreenMapping mapping{300, 150, 15.0, 15.0};
    DragRect rect;
    rect.SetRectToCtrl({1500, 3000, 1440, 720});
    rect.TwipsToScreen(mapping);
    QCOMPARE(rect.Left, 400);
    QCOMPARE(rect.Top, 350);
    QCOMPARE(rect.Right, 496);
    QCOMPARE(rect.Bottom, 398);
    rect.Left += 10; // the mouse moved 10 pixels to the right
    rect.Right += 10;
    rect.ScreenToTwips(mapping);
    QCOMPARE(rect.SetCtrlToRect(), (ControlGeometry{1650, 3000, 1440, 720}));
}

void LayoutModelTest::printDefinitionsMirrorBoxes() {
    TemplateLayout layout;
    BoxInfo &box = layout.box(3);
    box.index = 3;
    box.backColor = 255;
    const PrintDefinitions definitions = PrintDefinitions::fromLayout(layout);
    QCOMPARE(definitions.boxes[2].tIndex, qint16(3));
    QCOMPARE(definitions.boxes[2].tBackColor, 16777215); // a screen colour: white on paper
    box.changeBackcolor = true;
    box.custBkColor = 65535;
    QCOMPARE(CustomTemplate::fromBox(box).tBackColor, 65535);
}

TAVREL_TEST(LayoutModelTest)
#include "LayoutModelTest.moc"
