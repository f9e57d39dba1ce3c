#include "base/ErrorReport.h"
#include "base/ScriptedPrompter.h"
#include "base/ui/OutputNotice.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"
#include "common/WindowFixtures.h"
#include "preview/PageView.h"
#include "preview/PreviewActions.h"
#include "preview/PreviewLayout.h"
#include "preview/ThumbnailPanel.h"
#include "preview/frmFind.h"
#include "preview/frmPrintpreview.h"
#include "render/ImageOutput.h"
#include "render/PageEngine.h"

#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QScrollBar>
#include <QSettings>
#include <QSignalSpy>
#include <QSpinBox>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace tavrel;

namespace {

// One page of a specification list; extra text goes at the foot of the page.
void addPage(PageEngine &engine, int number, const QString &extra = {}) {
    if (number > 1)
        engine.NewPage();
    engine.setFontName("Arial");
    engine.setFontSize(14);
    engine.setFontBold(true);
    engine.TextBox(QString("Specification - page %1").arg(number), 1440, 1080, 9000, 0);
    engine.setFontBold(false);
    engine.setFontSize(9);
    for (int row = 0; row < 24; ++row)
        engine.TextBox(QString("%1.%2  Task chair, oak finish").arg(number).arg(row + 1), 1440,
                       1800 + row * 360, 9000, 0);
    if (!extra.isEmpty())
        engine.TextBox(extra, 1440, 11000, 9000, 0);
}

// A finished document of count pages; extras[page] goes on that page.
void fillDocument(PageEngine &engine, int count, const QMap<int, QString> &extras = {}) {
    engine.StartDoc();
    for (int page = 1; page <= count; ++page)
        addPage(engine, page, extras.value(page));
    engine.EndDoc();
}

struct Fixture {
    PageEngine engine;
    ScriptedPrompter prompter;
    testsupport::RecordingPreviewActions actions;
    std::unique_ptr<frmPrintpreview> window;

    explicit Fixture(int pages, const QString &runMode = "1",
                     const QMap<int, QString> &extras = {}) {
        fillDocument(engine, pages, extras);
        window = std::make_unique<frmPrintpreview>(engine, prompter, actions, runMode,
                                                   "Classic Customer.cst");
        window->resize(900, 700);
    }
    bool show() {
        window->show();
        return QTest::qWaitForWindowExposed(window.get());
    }
};

QString iconName(MessageIcon icon) {
    switch (icon) {
    case MessageIcon::Information:
        return "information";
    case MessageIcon::Exclamation:
        return "exclamation";
    default:
        return "other";
    }
}

// Every message box so far as "title | icon | text" lines.
QByteArray messageLog(const ScriptedPrompter &prompter) {
    QByteArray log;
    for (const auto &call : prompter.calls("message"))
        log += (call.title + " | " + iconName(call.icon) + " | " + call.text + "\n").toUtf8();
    return log;
}

// Pixels of the find mark's colour in an image.
int markPixels(const QImage &image) {
    int count = 0;
    const QImage rgb = image.convertToFormat(QImage::Format_RGB32);
    for (int y = 0; y < rgb.height(); ++y) {
        for (int x = 0; x < rgb.width(); ++x) {
            const QColor c = rgb.pixelColor(x, y);
            count += c.red() > 180 && c.green() < 70 && c.blue() < 70;
        }
    }
    return count;
}

} // namespace

class PreviewWindowTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }
    void cleanupTestCase() { QStandardPaths::setTestModeEnabled(false); }

    void captionAndInitialState();
    void navigation_data();
    void navigation();
    void navigationMessagesAtTheEnds();
    void keyboardShortcuts();
    void zoomLimits();
    void zoomToolsInStep_data();
    void zoomToolsInStep();
    void zoomKeepsTheCurrentPage();
    void thumbnailClickShowsThePage();
    void layoutOfModes_data();
    void layoutOfModes();
    void findMarksInViewOnly();
    void findAgainAndNotFound();
    void pdfReplacesAnExistingFile();
    void pdfOverAnUnreplaceableFile();
    void pdfWithoutReaderOrWritableFolder();
    void htmlRtfAndOtherCommands();
    void runModeThreeIsViewOnly();
    void growingDocument();
    void onlyPagesInViewArePainted();
    void geometryIsRemembered();
};

void PreviewWindowTest::captionAndInitialState() {
    Fixture f(3);
    QCOMPARE(f.window->windowTitle(), QString("Print Preview - Template [Classic Customer.cst]"));
    QCOMPARE(f.window->pageCount(), 3);
    QCOMPARE(f.window->currentPage(), 1);
    QCOMPARE(f.window->zoom().mode(), ZoomMode::WholePage);
    QCOMPARE(f.window->zoomModeTool()->currentText(), QString("Whole Page"));
    QVERIFY(!f.window->dispatch("mnuNoSuchCommand"));
    QVERIFY(!f.window->timePanel()->text().isEmpty());
    QVERIFY(QRegularExpression("^\\d\\d:\\d\\d:\\d\\d [AP]M$")
                .match(f.window->timePanel()->text())
                .hasMatch());
    QVERIFY(!f.window->datePanel()->text().isEmpty());
}

void PreviewWindowTest::navigation_data() {
    QTest::addColumn<int>("pages");
    QTest::addColumn<int>("start");
    QTest::addColumn<QString>("command");
    QTest::addColumn<int>("expectedPage");
    QTest::addColumn<QString>("title"); // of the information box, empty when none

    QTest::newRow("1 page next") << 1 << 1 << "mnuViewNext" << 1 << "View Next";
    QTest::newRow("1 page last") << 1 << 1 << "mnuViewLast" << 1 << "View Next";
    QTest::newRow("1 page previous") << 1 << 1 << "mnuViewPrevious" << 1 << "View Previous";
    QTest::newRow("1 page first") << 1 << 1 << "mnuViewFirst" << 1 << "View Previous";
    QTest::newRow("3 pages, 1 next") << 3 << 1 << "mnuViewNext" << 2 << "";
    QTest::newRow("3 pages, 1 last") << 3 << 1 << "mnuViewLast" << 3 << "";
    QTest::newRow("3 pages, 1 previous") << 3 << 1 << "mnuViewPrevious" << 1 << "View Previous";
    QTest::newRow("3 pages, 1 first") << 3 << 1 << "mnuViewFirst" << 1 << "View Previous";
    QTest::newRow("3 pages, 2 next") << 3 << 2 << "mnuViewNext" << 3 << "";
    QTest::newRow("3 pages, 2 previous") << 3 << 2 << "mnuViewPrevious" << 1 << "";
    QTest::newRow("3 pages, 3 next") << 3 << 3 << "mnuViewNext" << 3 << "View Next";
    QTest::newRow("3 pages, 3 last") << 3 << 3 << "mnuViewLast" << 3 << "View Next";
    QTest::newRow("3 pages, 3 previous") << 3 << 3 << "mnuViewPrevious" << 2 << "";
    QTest::newRow("3 pages, 3 first") << 3 << 3 << "mnuViewFirst" << 1 << "";
}

void PreviewWindowTest::navigation() {
    QFETCH(int, pages);
    QFETCH(int, start);
    QFETCH(QString, command);
    QFETCH(int, expectedPage);
    QFETCH(QString, title);
    Fixture f(pages);
    f.window->pageView()->showPage(start);
    QVERIFY(f.window->dispatch(command));
    QCOMPARE(f.window->currentPage(), expectedPage);
    const auto messages = f.prompter.calls("message");
    if (title.isEmpty()) {
        QVERIFY(messages.isEmpty());
        return;
    }
    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages[0].title, title);
    QCOMPARE(messages[0].icon, MessageIcon::Information);
    QCOMPARE(messages[0].buttons, MessageButtons::Ok);
}

// The exact texts of the boxes at both ends, for a one-page and a three-page document.
void PreviewWindowTest::navigationMessagesAtTheEnds() {
    QByteArray log;
    for (int pages : {1, 3}) {
        Fixture f(pages);
        for (const char *command :
             {"mnuViewPrevious", "mnuViewFirst", "mnuViewLast", "mnuViewNext", "mnuViewLast"})
            f.window->dispatch(command);
        log += QByteArray::number(pages) + " page(s):\n" + messageLog(f.prompter);
    }
    const QString mismatch = testsupport::compareWithGolden(log, "ui/navigation-messages.txt");
    QVERIFY2(mismatch.isEmpty(), qPrintable(mismatch));
}

void PreviewWindowTest::keyboardShortcuts() {
    Fixture f(3);
    QVERIFY(f.show());
    f.window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(f.window.get()));
    f.window->pageView()->setFocus();
    QTest::keyClick(f.window.get(), Qt::Key_PageDown);
    QCOMPARE(f.window->currentPage(), 2);
    QTest::keyClick(f.window.get(), Qt::Key_End);
    QCOMPARE(f.window->currentPage(), 3);
    QTest::keyClick(f.window.get(), Qt::Key_PageUp);
    QCOMPARE(f.window->currentPage(), 2);
    QTest::keyClick(f.window.get(), Qt::Key_Home);
    QCOMPARE(f.window->currentPage(), 1);
    QTest::keyClick(f.window.get(), Qt::Key_Equal, Qt::ControlModifier);
    QCOMPARE(f.window->zoomModeTool()->currentIndex(), -1); // shows "Zoom"
    QTest::keyClick(f.window.get(), Qt::Key_P, Qt::ControlModifier);
    QCOMPARE(f.actions.calls, QStringList{"print"});
    QTest::keyClick(f.window.get(), Qt::Key_F, Qt::ControlModifier);
    QVERIFY(f.window->findDialog());
    QTRY_VERIFY(f.window->findDialog()->isVisible());
    QVERIFY(f.prompter.calls("message").isEmpty());
}

void PreviewWindowTest::zoomLimits() {
    Fixture f(2);
    f.window->zoomPercentTool()->setEditText("50%");
    f.window->dispatch("mnuZoom%");
    QCOMPARE(f.window->zoom().percent(), 50);
    f.window->dispatch("mnuZoomOut");
    QCOMPARE(f.window->zoom().percent(), 50 - ZoomState::StepPercent);
    for (int i = 0; i < 10; ++i) {
        f.window->dispatch("mnuZoomOut");
        QVERIFY(f.window->zoom().percent() >= ZoomState::MinPercent);
    }
    QCOMPARE(f.window->zoom().percent(), ZoomState::MinPercent);
    QCOMPARE(f.window->zoomPercentTool()->currentText(), QString("10%"));
    for (int i = 0; i < 30; ++i)
        f.window->dispatch("mnuZoomIn");
    QCOMPARE(f.window->zoom().percent(), ZoomState::MaxPercent);
    // A typed percentage is kept within the limits as well; a typed word changes nothing.
    f.window->zoomPercentTool()->setEditText("5");
    f.window->dispatch("mnuZoom%");
    QCOMPARE(f.window->zoom().percent(), ZoomState::MinPercent);
    f.window->zoomPercentTool()->setEditText("big");
    f.window->dispatch("mnuZoom%");
    QCOMPARE(f.window->zoom().percent(), ZoomState::MinPercent);
    QCOMPARE(f.window->zoomPercentTool()->currentText(), QString("10%"));
    QCOMPARE(f.window->pageView()->layout().pages[0].width(),
             qRound(12240 * 0.10 * f.window->pageView()->logicalDpiX() / 1440.0));
}

void PreviewWindowTest::zoomToolsInStep_data() {
    QTest::addColumn<QStringList>("steps"); // command, or command=tool text
    QTest::addColumn<QString>("modeTool");  // shown by mnuZoomPg; "Zoom" is its placeholder
    QTest::addColumn<QString>("percentTool");
    QTest::addColumn<int>("mode");

    QTest::newRow("percentage list") << QStringList{"mnuZoom%=150%"} << "Percentage"
                                     << "150%" << int(ZoomMode::Percentage);
    QTest::newRow("zoom in") << QStringList{"mnuZoom%=150%", "mnuZoomIn"} << "Zoom"
                             << "175%" << int(ZoomMode::Percentage);
    QTest::newRow("zoom out") << QStringList{"mnuZoom%=100%", "mnuZoomOut"} << "Zoom"
                              << "75%" << int(ZoomMode::Percentage);
    QTest::newRow("mode list") << QStringList{"mnuZoomPg=Page Width"} << "Page Width"
                               << "fit" << int(ZoomMode::PageWidth);
    QTest::newRow("thumbnail") << QStringList{"mnuThumb"} << "Thumbnail"
                               << "fit" << int(ZoomMode::Thumbnail);
    QTest::newRow("two pages") << QStringList{"mnuTwopages"} << "Two Pages"
                               << "fit" << int(ZoomMode::TwoPages);
    QTest::newRow("stretch") << QStringList{"mnuStretch"} << "Stretch"
                             << "fit" << int(ZoomMode::Stretch);
    QTest::newRow("whole page after zoom")
        << QStringList{"mnuZoomIn", "mnuWholePage"} << "Whole Page"
        << "fit" << int(ZoomMode::WholePage);
    QTest::newRow("percentage keeps the fitted zoom")
        << QStringList{"mnuPageWidth", "mnuZoomPg=Percentage"} << "Percentage"
        << "fit" << int(ZoomMode::Percentage);
    QTest::newRow("zoom in from a fitted zoom")
        << QStringList{"mnuZoomPg=Whole Page", "mnuZoomIn"} << "Zoom"
        << "fit" << int(ZoomMode::Percentage);
}

void PreviewWindowTest::zoomToolsInStep() {
    QFETCH(QStringList, steps);
    QFETCH(QString, modeTool);
    QFETCH(QString, percentTool);
    QFETCH(int, mode);
    Fixture f(3);
    QVERIFY(f.show());
    for (const QString &step : steps) {
        const QString command = step.section('=', 0, 0);
        const QString value = step.section('=', 1);
        if (command == "mnuZoom%")
            f.window->zoomPercentTool()->setEditText(value);
        else if (command == "mnuZoomPg")
            f.window->zoomModeTool()->setCurrentText(value);
        QVERIFY(f.window->dispatch(command));
    }
    QComboBox *modes = f.window->zoomModeTool();
    if (modeTool == "Zoom") {
        QCOMPARE(modes->currentIndex(), -1);
        QCOMPARE(modes->placeholderText(), QString("Zoom"));
    } else {
        QCOMPARE(modes->currentText(), modeTool);
    }
    QCOMPARE(int(f.window->zoom().mode()), mode);
    // The percentage tool always shows the zoom on screen.
    const int onScreen = qRound(f.window->pageView()->shownPercent());
    QCOMPARE(f.window->zoomPercentTool()->currentText(), QString("%1%").arg(onScreen));
    if (percentTool != "fit")
        QCOMPARE(f.window->zoomPercentTool()->currentText(), percentTool);
}

void PreviewWindowTest::zoomKeepsTheCurrentPage() {
    Fixture f(12);
    QVERIFY(f.show());
    f.window->dispatch("mnuViewLast");
    f.window->dispatch("mnuViewPrevious"); // page 11: the view cannot scroll it to the top
    QCOMPARE(f.window->currentPage(), 11);
    for (const char *command : {"mnuThumb", "mnuZoomOut", "mnuTwopages", "mnuPageWidth",
                                "mnuZoomIn", "mnuStretch", "mnuWholePage"}) {
        f.window->dispatch(command);
        QVERIFY2(f.window->currentPage() == 11, command);
        const QRect page = f.window->pageView()->layout().pages[10].translated(
            -f.window->pageView()->horizontalScrollBar()->value(),
            -f.window->pageView()->verticalScrollBar()->value());
        QVERIFY2(f.window->pageView()->viewport()->rect().intersects(page), command);
    }
}

void PreviewWindowTest::thumbnailClickShowsThePage() {
    Fixture f(5);
    QVERIFY(f.show());
    ThumbnailPanel *panel = f.window->thumbnails();
    const QModelIndex third = panel->model()->index(2, 0);
    panel->scrollTo(third);
    QTest::mouseClick(panel->viewport(), Qt::LeftButton, {}, panel->visualRect(third).center());
    QCOMPARE(f.window->currentPage(), 3);
    f.window->dispatch("mnuViewNext");
    QCOMPARE(panel->currentIndex().row(), 3); // the panel follows the view
}

void PreviewWindowTest::layoutOfModes_data() {
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("percent");
    QTest::addColumn<int>("columns");
    QTest::addColumn<QSize>("firstPage");

    QTest::newRow("100% is real size at 96 dpi")
        << int(ZoomMode::Percentage) << 100 << 1 << QSize(816, 1056);
    QTest::newRow("whole page fits the height")
        << int(ZoomMode::WholePage) << 0 << 1 << QSize(445, 576); // 576 = 600 - 2 gaps
    QTest::newRow("page width fits the width")
        << int(ZoomMode::PageWidth) << 0 << 1 << QSize(776, 1004);
    QTest::newRow("two pages side by side") << int(ZoomMode::TwoPages) << 0 << 2 << QSize(382, 494);
    QTest::newRow("thumbnails in a grid")
        << int(ZoomMode::Thumbnail) << 0 << 4 << QSize(PreviewLayout::ThumbnailWidth, 220);
    QTest::newRow("stretch fills the view") << int(ZoomMode::Stretch) << 0 << 1 << QSize(776, 576);
}

void PreviewWindowTest::layoutOfModes() {
    QFETCH(int, mode);
    QFETCH(int, percent);
    QFETCH(int, columns);
    QFETCH(QSize, firstPage);
    const std::vector<QSizeF> letter(5, QSizeF(12240, 15840));
    const PreviewLayout layout =
        layoutPreviewPages(letter, ZoomMode(mode), percent, QSize(800, 600), 96);
    QCOMPARE(layout.columns, columns);
    QCOMPARE(layout.pages[0].size(), firstPage);
    // Pages of one row share its top; rows do not overlap; the content holds every page.
    for (std::size_t i = 1; i < layout.pages.size(); ++i) {
        const QRect &before = layout.pages[i - 1];
        const QRect &page = layout.pages[i];
        if (i % std::size_t(columns) == 0)
            QVERIFY(page.top() > before.bottom());
        else
            QCOMPARE(page.top(), before.top());
        QVERIFY(QRect(QPoint(0, 0), layout.contentSize).contains(page));
    }
    // The page at a height is the first page of that row.
    const QRect &last = layout.pages.back();
    QCOMPARE(layout.pageAt(last.center().y()),
             int(layout.pages.size()) - int((layout.pages.size() - 1) % std::size_t(columns)));
    QCOMPARE(layout.pageAt(-50), 1);
}

void PreviewWindowTest::findMarksInViewOnly() {
    Fixture f(3, "1", {{3, "Finish: smoked walnut veneer"}});
    QVERIFY(f.show());
    const QImage exportedBefore = renderPageImage(f.engine, 3, 96);
    QCOMPARE(markPixels(f.window->pageView()->viewport()->grab().toImage()), 0);

    f.window->findText("WALNUT");
    QVERIFY(f.prompter.calls("message").isEmpty());
    QCOMPARE(f.window->currentPage(), 3);
    QVERIFY(f.window->pageView()->mark());
    QCOMPARE(f.window->pageView()->mark()->first, 3);
    // The mark is on screen ...
    QTRY_VERIFY(markPixels(f.window->pageView()->viewport()->grab().toImage()) > 20);
    // ... but the page as printed or exported is unchanged.
    QCOMPARE(renderPageImage(f.engine, 3, 96), exportedBefore);
    QCOMPARE(markPixels(renderPageImage(f.engine, 3, 96)), 0);
}

void PreviewWindowTest::findAgainAndNotFound() {
    Fixture f(4, "1", {{2, "Glass top"}, {4, "Glass shelf"}});
    f.window->findText("glass");
    QCOMPARE(f.window->currentPage(), 2);
    f.window->findText("glass"); // again: the next page holding it
    QCOMPARE(f.window->currentPage(), 4);
    f.window->findText("glass"); // nothing after the last match
    QCOMPARE(f.window->currentPage(), 4);
    f.window->pageView()->showPage(1);
    f.window->findText("Mahogany");
    QCOMPARE(f.window->currentPage(), 1); // unchanged
    f.window->findText("glass", true);    // case matters now
    QCOMPARE(f.window->currentPage(), 1);
    const QString mismatch =
        testsupport::compareWithGolden(messageLog(f.prompter), "ui/find-messages.txt");
    QVERIFY2(mismatch.isEmpty(), qPrintable(mismatch));
}

void PreviewWindowTest::pdfReplacesAnExistingFile() {
    Fixture f(3);
    f.window->setPdfFolder("/tmp/pdf-folder");
    f.window->setPdfFileName("Report.pdf");
    QTemporaryDir dir;
    const QString path = dir.filePath("report.pdf");
    testsupport::writeBytes(path, "an old file that is no PDF");
    QSignalSpy status(f.window.get(), &frmPrintpreview::statusShown);
    f.prompter.queueFile(path);
    QVERIFY(f.window->dispatch("mnuViewPDF"));

    const auto dialogs = f.prompter.calls("saveFile");
    QCOMPARE(dialogs.size(), 1);
    QCOMPARE(dialogs[0].file.title, QString("   Save as PDF format "));
    QCOMPARE(dialogs[0].file.filter, QString("pdf(*.pdf)|*.pdf|All Files  (*.*)|*.*"));
    QCOMPARE(dialogs[0].file.defaultExtension, QString("pdf"));
    QCOMPARE(dialogs[0].file.folder, QString("/tmp/pdf-folder"));
    QCOMPARE(dialogs[0].file.fileName, QString("Report.pdf"));
    QVERIFY(testsupport::readBytes(path).startsWith("%PDF"));
    QCOMPARE(status.size(), 2);
    QCOMPARE(status[0][0].toString(), QString("Generating PDF file. Please wait..."));
    QCOMPARE(status[1][0].toString(), QString());
    const auto opened = f.prompter.calls("openDocument");
    QCOMPARE(opened.size(), 1);
    QCOMPARE(opened[0].text, path);
    QVERIFY(f.prompter.calls("message").isEmpty());

    // Cancelling the dialog ends the command.
    f.prompter.clear();
    f.prompter.queueFile(std::nullopt);
    f.window->dispatch("mnuViewPDF");
    QCOMPARE(f.prompter.calls().size(), 1);
}

void PreviewWindowTest::pdfOverAnUnreplaceableFile() {
    Fixture f(2);
    QTemporaryDir dir;
    // A folder where the file should be cannot be deleted like a file.
    const QString path = dir.filePath("taken.pdf");
    QVERIFY(QDir().mkpath(path + "/inside"));
    f.prompter.queueFile(path);
    f.window->dispatch("mnuViewPDF");
    const auto messages = f.prompter.calls("message");
    QCOMPARE(messages.size(), 1);
    const QString expected =
        QString::fromUtf8(testsupport::readBytes(testsupport::dataPath("ui/pdf-in-use.txt")))
            .arg(path);
    QCOMPARE(messages[0].text, expected);
    QCOMPARE(messages[0].icon, MessageIcon::Exclamation);
    QVERIFY(QFileInfo(path + "/inside").isDir());
    QVERIFY(f.prompter.calls("openDocument").isEmpty());
    QCOMPARE(f.window->statusText(), QString());
}

void PreviewWindowTest::pdfWithoutReaderOrWritableFolder() {
    Fixture f(1);
    QTemporaryDir dir;
    f.prompter.setOpenDocumentResult(false);
    f.prompter.queueFile(dir.filePath("a.pdf"));
    f.window->dispatch("mnuViewPDF");
    QVERIFY(QFileInfo::exists(dir.filePath("a.pdf")));
    QByteArray log = messageLog(f.prompter);

    // A folder that does not exist: the writer's error is reported under the command's name.
    f.prompter.clear();
    f.prompter.queueFile(dir.filePath("no/such/folder/b.pdf"));
    f.window->dispatch("mnuViewPDF");
    const auto messages = f.prompter.calls("message");
    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages[0].title, errorReportTitle());
    QVERIFY(messages[0].text.startsWith("An Error Occured at - Save As PDF.\r\n\r\nError Number: "
                                        "75") ||
            messages[0].text.startsWith("An Error Occured at - Save As PDF.\n\nError Number: 75"));
    const QString mismatch = testsupport::compareWithGolden(log, "ui/pdf-no-reader.txt");
    QVERIFY2(mismatch.isEmpty(), qPrintable(mismatch));
}

void PreviewWindowTest::htmlRtfAndOtherCommands() {
    Fixture f(2);
    f.actions.rtfPath = "/tmp/RTF/Cst.rtf";
    QSignalSpy status(f.window.get(), &frmPrintpreview::statusShown);
    QVERIFY(f.window->dispatch("mnuHTML"));
    QCOMPARE(status.size(), 2);
    QCOMPARE(status[0][0].toString(), QString("Generating HTML file. Please wait..."));
    QCOMPARE(status[1][0].toString(), QString());
    QVERIFY(f.window->dispatch("mnuRTF"));
    const auto opened = f.prompter.calls("openDocument");
    QCOMPARE(opened.size(), 1);
    QCOMPARE(opened[0].text, QString("/tmp/RTF/Cst.rtf"));
    QVERIFY(f.window->dispatch("mnuPrint"));
    QVERIFY(f.window->dispatch("mnuAbout"));
    QVERIFY(f.window->dispatch("mnuHelpTopic"));
    QCOMPARE(f.actions.calls, (QStringList{"html", "rtf", "print", "about", "help"}));
    QVERIFY(f.show());
    QVERIFY(f.window->dispatch("mnuExit"));
    QVERIFY(!f.window->isVisible());
}

void PreviewWindowTest::runModeThreeIsViewOnly() {
    Fixture f(3, "3");
    QVERIFY(f.window->viewOnly());
    for (const char *command : {"mnuPrint", "mnuViewPDF", "mnuHTML", "mnuRTF"}) {
        QVERIFY(!f.window->action(command)->isEnabled());
        QVERIFY(f.window->dispatch(command));
        QCOMPARE(f.window->statusText(), viewOnlyRefusalText()); // as the main window says
    }
    QVERIFY(f.actions.calls.isEmpty());
    QVERIFY(f.prompter.calls().isEmpty()); // not even the save dialog
    QVERIFY(f.window->dispatch("mnuViewNext"));
    QCOMPARE(f.window->currentPage(), 2);
    QVERIFY(f.window->dispatch("mnuAbout"));
    QCOMPARE(f.actions.calls, QStringList{"about"});
}

// The job lays out pages on the same thread while the window is open; between event-loop
// turns the window must follow.
void PreviewWindowTest::growingDocument() {
    PageEngine engine;
    ScriptedPrompter prompter;
    testsupport::RecordingPreviewActions actions;
    engine.StartDoc();
    addPage(engine, 1);
    frmPrintpreview window(engine, prompter, actions, "1", "Growing");
    window.resize(900, 700);
    window.setLayoutRunning(true);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCOMPARE(window.pageCount(), 1);
    QCOMPARE(window.currentPage(), 1);
    const int rangeAtStart = window.pageView()->verticalScrollBar()->maximum();

    for (int page = 2; page <= 40; ++page) {
        addPage(engine, page);
        if (page % 5 == 0)
            QCoreApplication::processEvents();
        // Outputs wait for the whole document.
        if (page == 20) {
            window.dispatch("mnuPrint");
            QVERIFY(actions.calls.isEmpty());
            QVERIFY(!window.action("mnuViewPDF")->isEnabled());
            // A page typed before it is laid out shows when it arrives.
            QCoreApplication::processEvents();
            auto *pageBox = window.findChild<QSpinBox *>(QStringLiteral("txtPage"));
            QVERIFY(pageBox);
            pageBox->setValue(35);
            QCOMPARE(window.pendingPage(), std::optional<int>(35));
            QCOMPARE(window.currentPage(), 1);
        }
    }
    QTRY_COMPARE(window.pageCount(), 40);
    QCOMPARE(window.pendingPage(), std::nullopt);
    QVERIFY(window.pageView()->verticalScrollBar()->maximum() > rangeAtStart);
    QCOMPARE(window.thumbnails()->model()->rowCount(), 40);
    QCOMPARE(window.currentPage(), 35); // shown when it came, and kept as more pages came
    window.dispatch("mnuViewLast");
    QCOMPARE(window.currentPage(), 40);
    engine.EndDoc();

    // The page-field pass draws on finished pages: the page in view is painted again.
    const int rendersBefore = window.pageView()->cache().renders();
    engine.StartOverlay(40);
    engine.TextBox("Page 40 of  40", 1440, 14000, 4000, 0);
    engine.EndOverlay();
    QTRY_VERIFY(window.pageView()->cache().renders() > rendersBefore);
    // A page past the end of a layout that ends is the last page.
    window.findChild<QSpinBox *>(QStringLiteral("txtPage"))->setValue(100);
    QCOMPARE(window.pendingPage(), std::optional<int>(100));
    window.setLayoutRunning(false);
    QCOMPARE(window.currentPage(), 40);
    QCOMPARE(window.pendingPage(), std::nullopt);
    QVERIFY(window.action("mnuViewPDF")->isEnabled());
    window.dispatch("mnuPrint");
    QCOMPARE(actions.calls, QStringList{"print"});

    // A new run of the job starts the document over.
    engine.Clear();
    engine.StartDoc();
    addPage(engine, 1);
    engine.EndDoc();
    QTRY_COMPARE(window.pageCount(), 1);
    QCOMPARE(window.currentPage(), 1);
    QCOMPARE(window.thumbnails()->model()->rowCount(), 1);
}

void PreviewWindowTest::onlyPagesInViewArePainted() {
    Fixture f(300);
    QVERIFY(f.show());
    QTRY_VERIFY(f.window->pageView()->cache().renders() > 0);
    QVERIFY(f.window->pageView()->cache().renders() <= 2);
    QVERIFY(f.window->thumbnails()->renderedCount() < 20);
    f.window->dispatch("mnuViewLast");
    QTRY_VERIFY(f.window->pageView()->cache().renders() >= 2);
    QVERIFY(f.window->pageView()->cache().renders() <= 4);
}

void PreviewWindowTest::geometryIsRemembered() {
    QSettings().remove("frmPrintpreview");
    {
        Fixture f(1);
        f.window->resize(640, 480);
        QVERIFY(f.show());
        f.window->close();
    }
    PageEngine engine;
    fillDocument(engine, 1);
    ScriptedPrompter prompter;
    testsupport::RecordingPreviewActions actions;
    const frmPrintpreview again(engine, prompter, actions, "1", "Again");
    QCOMPARE(again.size(), QSize(640, 480));
    QSettings().remove("frmPrintpreview");
}

TAVREL_TEST(PreviewWindowTest)
#include "PreviewWindowTest.moc"
