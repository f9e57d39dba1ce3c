#include "base/IniFile.h"
#include "base/ScriptedPrompter.h"
#include "common/DesignerWindow.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"
#include "designer/DesignCanvas.h"
#include "designer/DesignerActions.h"
#include "designer/FieldList.h"
#include "designer/frmCustomLayout.h"
#include "shell/JobFile.h"

#include <QAction>
#include <QMenu>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

using namespace tavrel;
using testsupport::addBox;
using testsupport::newBox;

// The designer's commands through its dispatcher: placing, alignment with the undo of the last
// alignment, colour refusals, logo and image sizes, delete confirmations, tool limits and the
// undo stack over a sequence of edits.
class DesignerCommandsTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void placesInFirstFreeSlot();
    void placesNothingWhenSlotsAreFull();
    void alignsToReference_data();
    void alignsToReference();
    void whiteIsRefused_data();
    void whiteIsRefused();
    void sizeMenus_data();
    void sizeMenus();
    void deleteBoxAsks();
    void deleteRectangleAsks();
    void toolsHaveLimits();
    void undoRedoOverEdits();
    void copyPasteAndDuplicate();

private:
    std::unique_ptr<frmCustomLayout> makeWindow();

    QTemporaryDir m_dir;
    JobFile m_jobModel;
    QString m_job;
    ScriptedPrompter m_prompter;
    NoDesignerActions m_actions;
};

void DesignerCommandsTest::init() {
    m_job = m_dir.filePath("job.ini");
    testsupport::writeBytes(m_job, "[Printer]\r\nFunction=1\r\n");
    m_prompter = ScriptedPrompter();
}

std::unique_ptr<frmCustomLayout> DesignerCommandsTest::makeWindow() {
    return testsupport::openDesigner(m_job, m_jobModel, m_dir.path(), m_prompter, m_actions);
}

void DesignerCommandsTest::placesInFirstFreeSlot() {
    auto window = makeWindow();
    addBox(*window, "Part Number", 0, 0);
    const int second = addBox(*window, "Qty", 2000, 0);
    addBox(*window, "Mfg", 4000, 0);
    TemplateLayout layout = window->document().layout();
    LayoutEdits::clearBox(layout, second);
    window->document().change(layout, "free slot 2");

    const auto request = window->fieldList()->requestFor("List$");
    QVERIFY(request);
    QCOMPARE(window->canvas()->placeNewBoxSomewhere(*request), 2);
    const BoxInfo &box = window->document().layout().box(2);
    QVERIFY(box.placed);
    QCOMPARE(box.caption, QString("List$"));
    QCOMPARE(box.index, qint16(2));
    QCOMPARE(box.headerText, QString("PL"));
    QVERIFY(box.body);
    QCOMPARE(window->document().selection().boxes, QList<int>{2});
}

void DesignerCommandsTest::placesNothingWhenSlotsAreFull() {
    auto window = makeWindow();
    TemplateLayout layout;
    for (int slot = 1; slot <= TemplateLayout::BoxCapacity; ++slot) {
        BoxInfo &box = layout.box(slot);
        box.placed = box.visible = true;
        box.index = qint16(slot);
        box.container = Container::mainPort();
        box.left = (slot % 5) * 2000;
        box.top = (slot / 5) * 300;
        box.width = 1000;
        box.height = 200;
    }
    window->document().change(layout, "full");
    const TemplateLayout before = window->document().layout();
    const auto request = window->fieldList()->requestFor("Qty");
    QCOMPARE(window->canvas()->placeNewBoxSomewhere(*request), int(TemplateLayout::NoFreeBoxSlot));
    QCOMPARE(window->canvas()->placeNewBox(*request, QPoint(200, 900)),
             int(TemplateLayout::NoFreeBoxSlot));
    QVERIFY(window->document().layout() == before);
    QCOMPARE(window->statusText(), QString("Ran out of index"));
}

void DesignerCommandsTest::alignsToReference_data() {
    QTest::addColumn<QString>("command");
    QTest::addColumn<QRect>("expected"); // the second box after the command
    // Reference: 1000,500 2000x300. Other: 3000,1500 1000x400.
    QTest::newRow("lefts") << "mnuLefts" << QRect(1000, 1500, 1000, 400);
    QTest::newRow("rights") << "mnuRights" << QRect(2000, 1500, 1000, 400);
    QTest::newRow("tops") << "mnuTops" << QRect(3000, 500, 1000, 400);
    QTest::newRow("bottoms") << "mnuBottoms" << QRect(3000, 400, 1000, 400);
    QTest::newRow("width") << "mnuWidth" << QRect(3000, 1500, 2000, 400);
    QTest::newRow("height") << "mnuHeight" << QRect(3000, 1500, 1000, 300);
    QTest::newRow("both") << "mnuBoth" << QRect(3000, 1500, 2000, 300);
}

void DesignerCommandsTest::alignsToReference() {
    QFETCH(QString, command);
    QFETCH(QRect, expected);
    auto window = makeWindow();
    const int reference = addBox(*window, newBox("Part Number", 2000, 300), 1000, 500);
    const int other = addBox(*window, newBox("Qty", 1000, 400), 3000, 1500);
    window->document().selectBoxes({reference, other});
    QVERIFY(window->dispatch(command));
    const auto geometry = [&](int slot) {
        const BoxInfo &b = window->document().layout().box(slot);
        return QRect(b.left, b.top, b.width, b.height);
    };
    QCOMPARE(geometry(other), expected);
    QCOMPARE(geometry(reference), QRect(1000, 500, 2000, 300));

    // A later edit that is not an alignment stays; only the alignment is put back.
    QVERIFY(window->dispatch("mnuFontBold"));
    QVERIFY(window->dispatch("mnuUndoAlign"));
    QCOMPARE(geometry(other), QRect(3000, 1500, 1000, 400));
    QVERIFY(window->document().layout().box(other).fontBold);
}

void DesignerCommandsTest::whiteIsRefused_data() {
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("refusal");
    QTest::addColumn<QString>("key");
    QTest::newRow("rectangle") << "mnuRectangleColor"
                               << "Cannot add a white rectangle."
                               << "Rectangle BorderColor";
    QTest::newRow("line") << "mnuBorderColor"
                          << "Cannot add a white line."
                          << "Line BorderColor";
}

void DesignerCommandsTest::whiteIsRefused() {
    QFETCH(QString, command);
    QFETCH(QString, refusal);
    QFETCH(QString, key);
    auto window = makeWindow();
    m_prompter.queueColor(255u); // red
    QVERIFY(window->dispatch(command));
    QCOMPARE(ReadIniValue("Printer", key, m_job, ""), QString("255"));
    QVERIFY(m_prompter.messages().isEmpty());

    m_prompter.queueColor(WhiteColor);
    QVERIFY(window->dispatch(command));
    QCOMPARE(m_prompter.messages(), QStringList{refusal});
    QCOMPARE(m_prompter.calls("message").first().icon, MessageIcon::Exclamation);
    QCOMPARE(ReadIniValue("Printer", key, m_job, ""), QString("255"));
    QCOMPARE(command == "mnuBorderColor" ? window->lineColor() : window->rectangleColor(), 255u);

    m_prompter.clear();
    QVERIFY(window->dispatch(command)); // cancelled dialog: silent
    QVERIFY(m_prompter.messages().isEmpty());
}

void DesignerCommandsTest::sizeMenus_data() {
    QTest::addColumn<bool>("logo");
    QTest::addColumn<QString>("answer");
    QTest::addColumn<QString>("size");
    QTest::newRow("logo without percent") << true << "30"
                                          << "30%";
    QTest::newRow("logo with percent") << true << "45%"
                                       << "45%";
    QTest::newRow("image without percent") << false << "30"
                                           << "30%";
}

void DesignerCommandsTest::sizeMenus() {
    QFETCH(bool, logo);
    QFETCH(QString, answer);
    QFETCH(QString, size);
    auto window = makeWindow();
    const QString prefix = logo ? "mnuLogo" : "mnuImg";
    const QString user = logo ? "mnuUserDefine" : "mnuUserDefinedImg";
    const auto value = [&] {
        const OtherInfo &other = window->document().layout().other;
        return logo ? other.logoSize : other.imageSize;
    };
    QVERIFY(window->dispatch(prefix + "50"));
    QCOMPARE(value(), QString("50%"));
    for (const QString n : {"25", "50", "75", "100"})
        QCOMPARE(window->action(prefix + n)->isChecked(), n == "50");

    m_prompter.queueInput(answer);
    QVERIFY(window->dispatch(user));
    const ScriptedPrompter::Call call = m_prompter.calls("input").first();
    QCOMPARE(call.text, logo ? QString("Enter a Logo Size.") : QString("Enter a Image Size."));
    QCOMPARE(call.title, logo ? QString("Logo Size") : QString("Image Size"));
    QCOMPARE(value(), size);
    QVERIFY(window->action(user)->isChecked());
    QVERIFY(!window->action(prefix + "50")->isChecked());
    QCOMPARE(window->action(user)->text(), "User Define " + size);

    m_prompter.queueInput(std::nullopt); // cancelled: nothing changes
    QVERIFY(window->dispatch(user));
    QCOMPARE(value(), size);
}

void DesignerCommandsTest::deleteBoxAsks() {
    auto window = makeWindow();
    const int slot = addBox(*window, "Qty", 0, 0);
    window->document().selectBoxes({slot});
    m_prompter.queueAnswer(MessageAnswer::No);
    QVERIFY(window->dispatch("mnuDeleteBox"));
    const ScriptedPrompter::Call call = m_prompter.calls("message").first();
    QCOMPARE(call.text, QString("Are you sure you want to delete this field?"));
    QCOMPARE(call.icon, MessageIcon::None);
    QCOMPARE(call.buttons, MessageButtons::YesNo);
    QCOMPARE(call.defaultAnswer, MessageAnswer::No);
    QVERIFY(window->document().layout().box(slot).placed);

    m_prompter.queueAnswer(MessageAnswer::Yes);
    QVERIFY(window->dispatch("mnuDeleteBox"));
    QVERIFY(!window->document().layout().box(slot).placed);
    QCOMPARE(window->document().layout().freeBoxSlot(), 1);
}

void DesignerCommandsTest::deleteRectangleAsks() {
    auto window = makeWindow();
    QTest::mousePress(window->rectangleTool(), Qt::LeftButton);
    QCOMPARE(window->document().layout().visibleRectCount(), 1);
    QCOMPARE(window->document().selection().rect, 1);
    m_prompter.queueAnswer(MessageAnswer::No);
    QVERIFY(window->dispatch("mnuDeleteRectangle"));
    const ScriptedPrompter::Call call = m_prompter.calls("message").first();
    QCOMPARE(call.text, QString("Delete Rectangle. Are you sure?"));
    QCOMPARE(call.icon, MessageIcon::Information);
    QCOMPARE(call.buttons, MessageButtons::YesNo);
    QCOMPARE(window->document().layout().visibleRectCount(), 1);
    m_prompter.queueAnswer(MessageAnswer::Yes);
    QVERIFY(window->dispatch("mnuDeleteRectangle"));
    QCOMPARE(window->document().layout().visibleRectCount(), 0);
}

void DesignerCommandsTest::toolsHaveLimits() {
    auto window = makeWindow();
    for (int i = 0; i < TemplateLayout::RectCapacity; ++i)
        QTest::mousePress(window->rectangleTool(), Qt::LeftButton);
    for (int i = 0; i < TemplateLayout::LineCapacity; ++i)
        QTest::mousePress(window->lineTool(), Qt::LeftButton);
    const TemplateLayout &layout = window->document().layout();
    QCOMPARE(layout.visibleRectCount(), 20);
    QCOMPARE(layout.placedLineCount(), 47);
    QVERIFY(m_prompter.messages().isEmpty());
    QTest::mousePress(window->rectangleTool(), Qt::RightButton);
    QTest::mousePress(window->lineTool(), Qt::LeftButton);
    QCOMPARE(m_prompter.messages(),
             QStringList({"There is no more rectangle.", "There is no more line left"}));
    QCOMPARE(m_prompter.calls("message").last().icon, MessageIcon::Information);
    QCOMPARE(window->document().layout().visibleRectCount(), 20);

    QTest::mouseMove(window->rectangleTool());
    QEvent enter(QEvent::Enter);
    QCoreApplication::sendEvent(window->rectangleTool(), &enter);
    QCOMPARE(window->statusText(), QString("Righ mouse click to change rectangle property."));
    QCoreApplication::sendEvent(window->lineTool(), &enter);
    QCOMPARE(window->statusText(), QString("Righ mouse click to change line property."));

    const QMenu *rectMenu = window->popupMenu("PopEditRectangle");
    QStringList names;
    for (const QAction *action : rectMenu->actions())
        names << action->objectName();
    QCOMPARE(names, QStringList({"mnuDeleteRectangle", "mnuClearAllRectangle", "mnuPastRectangle",
                                 "mnuCopyRectangle", "mnuRectangleColor"}));
    names.clear();
    for (const QAction *action : window->popupMenu("PopEditLine")->actions())
        names << action->objectName();
    QCOMPARE(names, QStringList({"mnuDeleteLine", "mnuClearAllLine"}));
}

void DesignerCommandsTest::undoRedoOverEdits() {
    auto window = makeWindow();
    const TemplateLayout empty = window->document().layout();
    const int a = addBox(*window, "Part Number", 0, 0);
    const int b = addBox(*window, "Qty", 3000, 600);
    window->document().selectBoxes({a, b});
    QVERIFY(window->dispatch("mnuTops"));
    QVERIFY(window->dispatch("mnuFontItalic"));
    QVERIFY(window->dispatch("mnuCenterJustify"));
    m_prompter.queueColor(0xff0000u);
    QVERIFY(window->dispatch("mnuBackColor"));
    QVERIFY(window->dispatch("mnuLogo75"));
    QTest::mousePress(window->lineTool(), Qt::LeftButton);
    window->document().selectBoxes({b});
    window->canvas()->nudge(60, 0, false);
    window->canvas()->nudge(60, 0, false); // merged with the one before
    const TemplateLayout edited = window->document().layout();
    QCOMPARE(window->document().layout().box(b).left, 3120);
    QVERIFY(!window->document().isSaved());

    QUndoStack &stack = window->document().undoStack();
    QCOMPARE(stack.count(), 9);
    while (stack.canUndo())
        QVERIFY(window->dispatch("mnuUndo"));
    QVERIFY(window->document().layout() == empty);
    QVERIFY(window->document().selection().boxes.isEmpty());
    while (stack.canRedo())
        QVERIFY(window->dispatch("mnuRedo"));
    QVERIFY(window->document().layout() == edited);
}

void DesignerCommandsTest::copyPasteAndDuplicate() {
    auto window = makeWindow();
    const int a = addBox(*window, "Part Number", 0, 0);
    window->document().selectBoxes({a});
    QVERIFY(window->dispatch("mnuCopy"));
    QVERIFY(window->dispatch("mnuPaste"));
    QCOMPARE(window->document().selection().boxes, QList<int>{2});
    const BoxInfo &copy = window->document().layout().box(2);
    QCOMPARE(copy.caption, QString("Part Number"));
    QCOMPARE(QPoint(copy.left, copy.top), QPoint(240, 240));
    QCOMPARE(copy.index, qint16(2));
    QVERIFY(window->dispatch("mnuDuplicate"));
    QCOMPARE(window->document().layout().box(3).left, 480);
    QCOMPARE(window->document().layout().placedBoxCount(), 3);
}

TAVREL_TEST(DesignerCommandsTest)
#include "DesignerCommandsTest.moc"
