#include "base/ScriptedPrompter.h"
#include "base/ui/QtPrompter.h"
#include "base/ui/UserGuide.h"
#include "base/ui/WindowPlacement.h"
#include "common/DesignerWindow.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"
#include "designer/DesignCanvas.h"
#include "designer/DesignerActions.h"
#include "designer/PropertyPanel.h"
#include "designer/frmCustomLayout.h"
#include "designer/frmFieldLength.h"
#include "shell/JobFile.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QDockWidget>
#include <QFontComboBox>
#include <QFontDialog>
#include <QImage>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QUndoStack>
#include <QWheelEvent>

using namespace tavrel;
using testsupport::centreOf;

// The designer's comfort as a user meets it: the font, colour and picture dialogs start from the
// selection and change only what was changed, the tool bar follows the selection, zoom to fit
// and Ctrl+wheel zoom, the multi-line note editor and wrapped notes, a window that fits the
// screen, and F1 opening the user guide.
class DesignerComfortTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void fontDialogStartsFromTheBox_data();
    void fontDialogStartsFromTheBox();
    void fontDialogChangesOnlyWhatChanged_data();
    void fontDialogChangesOnlyWhatChanged();
    void realFontDialogKeepsTheFont_data();
    void realFontDialogKeepsTheFont();
    void colourDialogStartsFromTheBox();
    void logoDialogStartsAtThePicture();
    void toolBarFollowsTheSelection();
    void ctrlWheelZoomsAroundTheMouse();
    void zoomToFit();
    void notesAreEditedOnSeveralLines();
    void notesWrapOnTheCanvas();
    void fitIntoScreen_data();
    void fitIntoScreen();
    void windowFitsTheScreen();
    void userGuideIsFound_data();
    void userGuideIsFound();
    void f1InEveryWindow();

private:
    std::unique_ptr<frmCustomLayout> makeWindow();
    int addBox(frmCustomLayout &window, const QString &caption, const QString &font, int size,
               bool bold, bool italic, qint32 left, qint32 top);
    int addNote(frmCustomLayout &window, const QString &text, qint32 width, qint32 height);

    QTemporaryDir m_dir;
    JobFile m_jobModel;
    ScriptedPrompter m_prompter;
    NoDesignerActions m_actions;
};

void DesignerComfortTest::init() {
    m_prompter = ScriptedPrompter();
}

std::unique_ptr<frmCustomLayout> DesignerComfortTest::makeWindow() {
    return testsupport::openDesigner(m_dir.filePath("job.ini"), m_jobModel, m_dir.path(),
                                     m_prompter, m_actions);
}

int DesignerComfortTest::addBox(frmCustomLayout &window, const QString &caption,
                                const QString &font, int size, bool bold, bool italic, qint32 left,
                                qint32 top) {
    BoxInfo box = testsupport::newBox(caption);
    box.fontName = font;
    box.fontSize = qint16(size);
    box.fontBold = bold;
    box.fontItalic = italic;
    return testsupport::addBox(window, box, left, top);
}

int DesignerComfortTest::addNote(frmCustomLayout &window, const QString &text, qint32 width,
                                 qint32 height) {
    return testsupport::addBox(
        window, testsupport::newBox(text, width, height, NewBoxRequest::Type::Note), 720, 2880);
}

// Format > Font... starts at the first selected box's font, whatever it is.
void DesignerComfortTest::fontDialogStartsFromTheBox_data() {
    QTest::addColumn<QString>("font");
    QTest::addColumn<int>("size");
    QTest::addColumn<bool>("bold");
    QTest::addColumn<bool>("italic");
    QTest::newRow("Liberation Sans Bold 9") << "Liberation Sans" << 9 << true << false;
    QTest::newRow("Arial 8") << "Arial" << 8 << false << false;
    QTest::newRow("Times New Roman Italic 12") << "Times New Roman" << 12 << false << true;
}

void DesignerComfortTest::fontDialogStartsFromTheBox() {
    QFETCH(QString, font);
    QFETCH(int, size);
    QFETCH(bool, bold);
    QFETCH(bool, italic);
    auto window = makeWindow();
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window.get()));
    const int slot = addBox(*window, "Part Number", font, size, bold, italic, 720, 720);
    QTest::mouseClick(window->canvas(), Qt::LeftButton, {}, centreOf(*window, slot));
    QCOMPARE(window->document().selection().boxes, QList<int>{slot});
    // OK at once hands back what the dialog started with.
    m_prompter.queueFont(FontChoice{font, size, bold, italic, false});
    const int steps = window->document().undoStack().count();
    QVERIFY(window->dispatch("mnuFont"));
    const QList<ScriptedPrompter::Call> asked = m_prompter.calls("font");
    QCOMPARE(asked.size(), 1);
    QCOMPARE(asked.first().font.name, font);
    QCOMPARE(asked.first().font.size, size);
    QCOMPARE(asked.first().font.bold, bold);
    QCOMPARE(asked.first().font.italic, italic);
    const BoxInfo &box = window->document().layout().box(slot);
    QCOMPARE(box.fontName, font);
    QCOMPARE(int(box.fontSize), size);
    QCOMPARE(box.fontBold, bold);
    QCOMPARE(box.fontItalic, italic);
    QCOMPARE(window->document().undoStack().count(), steps); // nothing changed, nothing to undo

    // Cancel changes nothing either.
    QVERIFY(window->dispatch("mnuFont"));
    QCOMPARE(window->document().undoStack().count(), steps);
}

// With several boxes selected, only the attributes changed in the dialog go onto each box.
void DesignerComfortTest::fontDialogChangesOnlyWhatChanged_data() {
    QTest::addColumn<FontChoice>("answer");
    QTest::addColumn<QStringList>("expected"); // per box: name/size/bold/italic
    const FontChoice start{"Arial", 8, true, false, false};
    FontChoice bigger = start;
    bigger.size = 12;
    QTest::newRow("size only") << bigger << QStringList{"Arial/12/1/0", "Times New Roman/12/0/1"};
    FontChoice family = start;
    family.name = "Liberation Serif";
    QTest::newRow("family only") << family
                                 << QStringList{"Liberation Serif/8/1/0",
                                                "Liberation Serif/10/0/1"};
    FontChoice plain = start;
    plain.bold = false;
    QTest::newRow("bold off") << plain << QStringList{"Arial/8/0/0", "Times New Roman/10/0/1"};
}

void DesignerComfortTest::fontDialogChangesOnlyWhatChanged() {
    QFETCH(FontChoice, answer);
    QFETCH(QStringList, expected);
    auto window = makeWindow();
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window.get()));
    const int first = addBox(*window, "Part Number", "Arial", 8, true, false, 720, 720);
    const int second = addBox(*window, "Qty", "Times New Roman", 10, false, true, 3600, 720);
    QTest::mouseClick(window->canvas(), Qt::LeftButton, {}, centreOf(*window, first));
    QTest::mouseClick(window->canvas(), Qt::LeftButton, Qt::ControlModifier,
                      centreOf(*window, second));
    QCOMPARE(window->document().selection().boxes, (QList<int>{first, second}));
    m_prompter.queueFont(answer);
    QVERIFY(window->dispatch("mnuFont"));
    QStringList got;
    for (int slot : {first, second}) {
        const BoxInfo &box = window->document().layout().box(slot);
        got << QStringLiteral("%1/%2/%3/%4")
                   .arg(box.fontName)
                   .arg(box.fontSize)
                   .arg(int(box.fontBold))
                   .arg(int(box.fontItalic));
    }
    QCOMPARE(got, expected);
}

// The real font dialog opens at the box's font, also for a name that resolves to another
// installed family, and OK at once gives the box's font back unchanged.
void DesignerComfortTest::realFontDialogKeepsTheFont_data() {
    QTest::addColumn<QString>("font");
    QTest::addColumn<bool>("bold");
    QTest::newRow("Liberation Sans Bold") << "Liberation Sans" << true;
    QTest::newRow("Arial Bold") << "Arial" << true;
    QTest::newRow("Times New Roman") << "Times New Roman" << false;
}

void DesignerComfortTest::realFontDialogKeepsTheFont() {
    QFETCH(QString, font);
    QFETCH(bool, bold);
    QtPrompter prompter("Tavrel");
    QFont shown;
    bool sawDialog = false;
    QTimer::singleShot(0, this, [&] {
        auto *dialog = qobject_cast<QFontDialog *>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        sawDialog = true;
        shown = dialog->currentFont();
        dialog->accept();
    });
    const std::optional<FontChoice> chosen = prompter.font({font, 9, bold, false, false});
    QVERIFY(sawDialog);
    QCOMPARE(shown.family(), QFontInfo(QFont(font)).family());
    QCOMPARE(shown.bold(), bold);
    QCOMPARE(shown.pointSize(), 9);
    QVERIFY(chosen);
    QCOMPARE(chosen->name, font);
    QCOMPARE(chosen->size, 9);
    QCOMPARE(chosen->bold, bold);
}

void DesignerComfortTest::colourDialogStartsFromTheBox() {
    auto window = makeWindow();
    const int first = addBox(*window, "Part Number", "Arial", 8, false, false, 720, 720);
    const int second = addBox(*window, "Qty", "Arial", 8, false, false, 3600, 720);
    TemplateLayout layout = window->document().layout();
    layout.box(first).foreColor = 0x0000FF;  // red
    layout.box(second).foreColor = 0x00FF00; // green
    window->document().change(layout, "colours");
    window->document().selectBoxes({first, second});
    const int steps = window->document().undoStack().count();
    // OK on the colour the dialog started at: each box keeps its own.
    m_prompter.queueColor(0x0000FF);
    QVERIFY(window->dispatch("mnuForeColor"));
    QCOMPARE(m_prompter.calls("color").first().color, quint32(0x0000FF));
    QCOMPARE(window->document().undoStack().count(), steps);
    QCOMPARE(window->document().layout().box(second).foreColor, 0x00FF00);
    // A colour chosen goes onto both.
    m_prompter.queueColor(0xFF0000);
    QVERIFY(window->dispatch("mnuForeColor"));
    QCOMPARE(window->document().layout().box(first).foreColor, 0xFF0000);
    QCOMPARE(window->document().layout().box(second).foreColor, 0xFF0000);
}

void DesignerComfortTest::logoDialogStartsAtThePicture() {
    auto window = makeWindow();
    QDir(m_dir.path()).mkpath("pictures");
    const QString picture = m_dir.filePath("pictures/logo.png");
    QImage(20, 10, QImage::Format_RGB32).save(picture);
    TemplateLayout layout = window->document().layout();
    NewBoxRequest request;
    request.type = NewBoxRequest::Type::Logo;
    BoxInfo logo = LayoutEdits::makeBox(request);
    logo.logoFile = picture;
    LayoutEdits::placeBox(layout, logo, Container::mainPort(), 0, 0);
    window->document().change(layout, "logo");
    QVERIFY(window->dispatch("mnuEditLogo"));
    const QList<ScriptedPrompter::Call> asked = m_prompter.calls("openFile");
    QCOMPARE(asked.size(), 1);
    QCOMPARE(QDir(asked.first().file.folder).canonicalPath(),
             QDir(m_dir.filePath("pictures")).canonicalPath());
    QCOMPARE(asked.first().file.fileName, QString("logo.png"));
}

// The font tools show the selection's font, empty when the selected boxes differ; Bold is
// checked only when every selected box is bold.
void DesignerComfortTest::toolBarFollowsTheSelection() {
    auto window = makeWindow();
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window.get()));
    const int first = addBox(*window, "Part Number", "Liberation Sans", 9, true, false, 720, 720);
    const int second = addBox(*window, "Qty", "Liberation Serif", 12, false, true, 3600, 720);
    const int third = addBox(*window, "Mfg", "Liberation Sans", 9, true, false, 720, 2160);
    QAction *bold = window->action("mnuFontBold");
    QVERIFY(bold);

    QTest::mouseClick(window->canvas(), Qt::LeftButton, {}, centreOf(*window, second));
    QCOMPARE(window->fontNameBox()->currentText(), QString("Liberation Serif"));
    QCOMPARE(window->fontSizeBox()->currentText(), QString("12"));
    QVERIFY(bold->isCheckable());
    QVERIFY(!bold->isChecked());
    QVERIFY(window->action("mnuFontItalic")->isChecked());

    QTest::mouseClick(window->canvas(), Qt::LeftButton, {}, centreOf(*window, first));
    QCOMPARE(window->fontNameBox()->currentText(), QString("Liberation Sans"));
    QCOMPARE(window->fontSizeBox()->currentText(), QString("9"));
    QVERIFY(bold->isChecked());
    QTest::mouseClick(window->canvas(), Qt::LeftButton, Qt::ControlModifier,
                      centreOf(*window, third));
    QCOMPARE(window->fontNameBox()->currentText(), QString("Liberation Sans"));
    QVERIFY(bold->isChecked());

    QTest::mouseClick(window->canvas(), Qt::LeftButton, Qt::ControlModifier,
                      centreOf(*window, second));
    QCOMPARE(window->document().selection().boxes.size(), 3);
    QCOMPARE(window->fontNameBox()->currentText(), QString());
    QCOMPARE(window->fontSizeBox()->currentText(), QString());
    QVERIFY(!bold->isChecked());
    // Bold on a mixed selection makes all bold; the tool then shows it.
    QVERIFY(window->dispatch("mnuFontBold"));
    QVERIFY(window->document().layout().box(second).fontBold);
    QVERIFY(window->document().layout().box(first).fontBold);
    QVERIFY(bold->isChecked());
}

// Ctrl+wheel zooms and keeps the page point under the mouse where it is; the wheel alone
// scrolls.
void DesignerComfortTest::ctrlWheelZoomsAroundTheMouse() {
    auto window = makeWindow();
    window->resize(760, 560);
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window.get()));
    DesignCanvas *canvas = window->canvas();
    QWidget *viewport = canvas->parentWidget();
    const auto wheel = [&](QPoint at, int delta, Qt::KeyboardModifiers modifiers) {
        QWheelEvent event(at, canvas->mapToGlobal(at), QPoint(), QPoint(0, delta), Qt::NoButton,
                          modifiers, Qt::NoScrollPhase, false);
        QApplication::sendEvent(canvas, &event);
    };
    const QPoint at = canvas->toWidget(QPointF(3 * 1440, 2 * 1440));
    const QPoint inView = canvas->mapTo(viewport, at);
    const double before = canvas->zoom();
    wheel(at, 120, Qt::ControlModifier);
    QVERIFY2(canvas->zoom() > before * 1.05, qPrintable(QString::number(canvas->zoom())));
    // The same page point is still under the mouse.
    const QPoint after = canvas->mapTo(viewport, canvas->toWidget(QPointF(3 * 1440, 2 * 1440)));
    QVERIFY2((after - inView).manhattanLength() <= 2, qPrintable(QStringLiteral("%1,%2 -> %3,%4")
                                                                     .arg(inView.x())
                                                                     .arg(inView.y())
                                                                     .arg(after.x())
                                                                     .arg(after.y())));
    QCOMPARE(window->findChild<QComboBox *>("cmbZoom")->currentText(),
             QStringLiteral("%1%").arg(std::lround(canvas->zoom() * 100)));
    // Back out again.
    const double zoomed = canvas->zoom();
    wheel(canvas->mapFrom(viewport, inView), -120, Qt::ControlModifier);
    QVERIFY(canvas->zoom() < zoomed);
    // Without Ctrl the wheel scrolls and leaves the zoom alone.
    const double kept = canvas->zoom();
    auto *scroll = qobject_cast<QScrollArea *>(viewport->parentWidget());
    QVERIFY(scroll);
    const int top = scroll->verticalScrollBar()->value();
    // (A real wheel event comes up from the canvas to the view; a sent one stops where sent.)
    QWheelEvent plain(QPointF(100, 100), viewport->mapToGlobal(QPointF(100, 100)), QPoint(),
                      QPoint(0, -120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(viewport, &plain);
    QCOMPARE(canvas->zoom(), kept);
    QVERIFY(scroll->verticalScrollBar()->value() > top);
}

// Zoom to fit width makes the page (with its border) as wide as the view; fit page shows all of
// it; both through their shortcuts.
void DesignerComfortTest::zoomToFit() {
    auto window = makeWindow();
    window->resize(780, 580);
    // The property panel stays; the field list and live preview make room for the page.
    window->findChild<QDockWidget *>("dockFields")->hide();
    window->livePreviewDock()->hide();
    window->show();
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
    DesignCanvas *canvas = window->canvas();
    QWidget *viewport = canvas->parentWidget();
    for (const QString name :
         {"mnuZoomFitPage", "mnuZoomFitWidth", "mnuZoomIn", "mnuZoomOut", "mnuZoom100"})
        QVERIFY2(window->action(name), qPrintable(name));

    canvas->setFocus();
    QTest::keyClick(canvas, Qt::Key_2, Qt::ControlModifier);
    QApplication::processEvents();
    QVERIFY2(std::abs(canvas->width() - viewport->width()) <= 1,
             qPrintable(QStringLiteral("%1 vs %2").arg(canvas->width()).arg(viewport->width())));

    QTest::keyClick(canvas, Qt::Key_0, Qt::ControlModifier);
    QApplication::processEvents();
    QVERIFY(canvas->width() <= viewport->width() + 1);
    QVERIFY(canvas->height() <= viewport->height() + 1);
    QVERIFY(std::abs(canvas->height() - viewport->height()) <= 1 ||
            std::abs(canvas->width() - viewport->width()) <= 1);

    QTest::keyClick(canvas, Qt::Key_1, Qt::ControlModifier);
    QCOMPARE(canvas->zoom(), 1.0);
    QVERIFY(window->dispatch("mnuZoomFitWidth"));
    QApplication::processEvents();
    QVERIFY(std::abs(canvas->width() - viewport->width()) <= 1);
}

// Edit Note Text opens a multi-line editor at the note's text; line breaks typed there become
// blanks, as the template keeps a note on one line and the report wraps it.
void DesignerComfortTest::notesAreEditedOnSeveralLines() {
    auto window = makeWindow();
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window.get()));
    const int slot = addNote(*window, "Delivery after 5 pm", 2880, 600);
    QTest::mouseClick(window->canvas(), Qt::LeftButton, {}, centreOf(*window, slot));
    QTest::mouseDClick(window->canvas(), Qt::LeftButton, {}, centreOf(*window, slot));
    QList<ScriptedPrompter::Call> asked = m_prompter.calls("multiLineInput");
    QCOMPARE(asked.size(), 1);
    QCOMPARE(asked.first().file.fileName, QString("Delivery after 5 pm"));
    QVERIFY(m_prompter.calls("input").isEmpty());

    m_prompter.queueInput(QString("Deliver to the loading dock\nafter 5 pm,\r\n\nring twice."));
    QVERIFY(window->dispatch("mnuEditNotes"));
    const BoxInfo &box = window->document().layout().box(slot);
    QCOMPARE(box.notesName, QString("Deliver to the loading dock after 5 pm, ring twice."));
    QCOMPARE(box.caption, box.notesName);
}

// A long note shows wrapped in its box, as many lines as the box is high.
void DesignerComfortTest::notesWrapOnTheCanvas() {
    auto window = makeWindow();
    window->resize(1000, 800);
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window.get()));
    const int slot = addNote(*window,
                             "All prices are in US dollars and include delivery to the ground "
                             "floor; installation above the ground floor is quoted separately.",
                             2880, 900);
    window->document().selectBoxes({});
    const QRect r = window->canvas()->widgetRect(window->canvas()->boxPageRect(slot));
    const QImage image = window->canvas()->grab().toImage();
    // Count the runs of rows with dark ink inside the box: one per text line.
    int runs = 0;
    bool inRun = false;
    for (int y = r.top() + 2; y < r.bottom() - 1; ++y) {
        bool ink = false;
        for (int x = r.left() + 3; x < r.right() - 2 && !ink; ++x)
            ink = qGray(image.pixel(x, y)) < 100;
        if (ink && !inRun)
            ++runs;
        inRun = ink;
    }
    QVERIFY2(runs >= 3, qPrintable(QString::number(runs)));
}

void DesignerComfortTest::fitIntoScreen_data() {
    QTest::addColumn<QRect>("wanted");
    QTest::addColumn<QRect>("expected");
    // On a 1280 x 800 screen, with a frame of 4 px and a 30 px title bar.
    QTest::newRow("fits") << QRect(100, 100, 800, 600) << QRect(100, 100, 800, 600);
    QTest::newRow("too large") << QRect(0, 0, 1400, 900) << QRect(4, 30, 1272, 766);
    QTest::newRow("past the right edge") << QRect(900, 100, 800, 600) << QRect(476, 100, 800, 600);
    QTest::newRow("remembered on a second screen")
        << QRect(2000, 1200, 1000, 700) << QRect(276, 96, 1000, 700);
    QTest::newRow("above and left") << QRect(-300, -50, 600, 400) << QRect(4, 30, 600, 400);
}

void DesignerComfortTest::fitIntoScreen() {
    QFETCH(QRect, wanted);
    QFETCH(QRect, expected);
    const QRect placed =
        tavrel::fitIntoScreen(wanted, QMargins(4, 30, 4, 4), QRect(0, 0, 1280, 800));
    QCOMPARE(placed, expected);
}

// On the test screen (smaller than the designer's default size) the whole window, and the
// property panel in it, is on the screen.
void DesignerComfortTest::windowFitsTheScreen() {
    auto window = makeWindow();
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window.get()));
    const QRect available = window->screen()->availableGeometry();
    // (Under a window manager the frame comes a moment after the window.)
    QTRY_VERIFY2(available.contains(window->frameGeometry()),
                 qPrintable(QStringLiteral("%1x%2+%3+%4 on %5x%6")
                                .arg(window->frameGeometry().width())
                                .arg(window->frameGeometry().height())
                                .arg(window->frameGeometry().x())
                                .arg(window->frameGeometry().y())
                                .arg(available.width())
                                .arg(available.height())));
    auto *dock = window->findChild<QDockWidget *>("dockProperties");
    QVERIFY(dock && dock->isVisible());
    const QRect panel(dock->mapTo(window.get(), QPoint(0, 0)), dock->size());
    QVERIFY(window->rect().contains(panel));
    QVERIFY(dock->width() > 100);
    // The page keeps a fair share of the width.
    QTRY_VERIFY(window->canvas()->parentWidget()->width() >= window->width() / 3);
    // And the whole sheet can be seen in what is left for it.
    QVERIFY(window->dispatch("mnuZoomFitPage"));
    QApplication::processEvents();
    QVERIFY(window->canvas()->height() <= window->canvas()->parentWidget()->height() + 1);
    QVERIFY(window->canvas()->width() <= window->canvas()->parentWidget()->width() + 1);
}

// The guide is the installed copy, else the build's HTML, else the source tree's pages; never
// the developers' README.
void DesignerComfortTest::userGuideIsFound_data() {
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<QString>("program");
    QTest::addColumn<QString>("expected");
    QTest::newRow("installed") << QStringList{"usr/share/doc/tavrel/guide/index.html",
                                              "usr/README.md"}
                               << "usr/bin"
                               << "usr/share/doc/tavrel/guide/index.html";
    QTest::newRow("build tree") << QStringList{"src/build/debug/doc/guide/index.html",
                                               "src/docs/guide/index.md", "src/README.md"}
                                << "src/build/debug/bin"
                                << "src/build/debug/doc/guide/index.html";
    QTest::newRow("source tree") << QStringList{"src/docs/guide/index.md", "src/README.md"}
                                 << "src/build/debug/bin"
                                 << "src/docs/guide/index.md";
    QTest::newRow("none") << QStringList{"src/README.md", "src/build/debug/bin/README.md"}
                          << "src/build/debug/bin" << QString();
}

void DesignerComfortTest::userGuideIsFound() {
    QFETCH(QStringList, files);
    QFETCH(QString, program);
    QFETCH(QString, expected);
    QTemporaryDir root;
    for (const QString &file : files) {
        QDir(root.path()).mkpath(QFileInfo(file).path());
        testsupport::writeBytes(root.filePath(file), "guide");
    }
    QDir(root.path()).mkpath(program);
    const QString found = UserGuide::find(root.filePath(program));
    QCOMPARE(found, expected.isEmpty() ? QString()
                                       : QFileInfo(root.filePath(expected)).canonicalFilePath());
}

// F1 is the user guide in the designer and in the field length editor.
void DesignerComfortTest::f1InEveryWindow() {
    auto window = makeWindow();
    QAction *help = window->action("mnuHelpTopic");
    QVERIFY(help);
    QCOMPARE(help->shortcut(), QKeySequence(Qt::Key_F1));
    QCOMPARE(help->text(), QString("&User Guide"));

    const QString job = m_dir.filePath("lengths.ini");
    testsupport::writeBytes(job, "[Printer]\r\n");
    JobFile jobFile = JobFile::load(job);
    FieldLengths lengths = FieldLengths::builtIn();
    frmFieldLength editor(jobFile, lengths, m_prompter);
    editor.show();
    QVERIFY(QTest::qWaitForWindowActive(&editor));
    QTest::keyClick(&editor, Qt::Key_F1);
    const QList<ScriptedPrompter::Call> opened = m_prompter.calls("openDocument");
    QCOMPARE(opened.size(), 1);
    QCOMPARE(opened.first().text,
             QFileInfo(QString(TAVREL_BIN_DIR "/../doc/guide/index.html")).canonicalFilePath());
}

TAVREL_TEST(DesignerComfortTest)
#include "DesignerComfortTest.moc"
