// Screenshots of the windows for a developer to look at, at any QT_SCALE_FACTOR; not a test.
//
//   window-shots OUTDIR [designer] [agreement] [windows]      (default: all three)
//
// designer:  the designer's canvas, templates, menus, zoom and its font and note dialogs;
// agreement: a logo on the Classic body template, and a column past the printable area;
// windows:   the preview with a find mark and Printer Properties (whole-screen pictures, so run
//            under a real X server: scripts/window-shots/window-shots.sh does).

#include "base/ScriptedPrompter.h"
#include "base/ui/PrinterPropertiesDialog.h"
#include "base/ui/QtPrompter.h"
#include "common/DesignerWindow.h"
#include "common/TestSupport.h"
#include "common/WindowFixtures.h"
#include "designer/DesignCanvas.h"
#include "designer/DesignerActions.h"
#include "designer/frmCustomLayout.h"
#include "preview/frmFind.h"
#include "preview/frmPrintpreview.h"
#include "shell/AppContext.h"
#include "shell/JobFile.h"
#include "shell/ReportJob.h"
#include "shell/Startup.h"
#include "shell/ui/DesignerSession.h"
#include "shell/ui/PreviewSession.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QStandardPaths>
#include <QStyle>
#include <QStyleFactory>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include <cstdio>

using namespace tavrel;

namespace {

const QString Classic = QStringLiteral("resources/Print Templates/Classic Customer.cst");
const QString LongNote =
    QStringLiteral("All prices are in US dollars and include delivery to the ground floor; "
                   "installation above the ground floor is quoted separately.");

int failures = 0;

void check(bool ok, const QString &what) {
    if (!ok) {
        std::fprintf(stderr, "window-shots: %s\n", qPrintable(what));
        ++failures;
    }
}

void save(const QPixmap &picture, const QString &path) {
    check(picture.save(path), QStringLiteral("could not write ") + path);
}

QString scale() {
    return qEnvironmentVariable("QT_SCALE_FACTOR", QStringLiteral("1"));
}

int addNote(frmCustomLayout &window, const QString &text) {
    return testsupport::addBox(
        window, testsupport::newBox(text, 2880, 900, NewBoxRequest::Type::Note), 720, 2880);
}

// The designer as the window tests open it: an empty job model, half-inch margins.
struct Designer {
    QTemporaryDir dir;
    JobFile job;
    ScriptedPrompter prompter;
    NoDesignerActions actions;
    std::unique_ptr<frmCustomLayout> window = testsupport::openDesigner(
        dir.filePath(QStringLiteral("job.ini")), job, dir.path(), prompter, actions);
};

void designerCanvas(const QString &folder) {
    Designer designer;
    frmCustomLayout *window = designer.window.get();
    window->resize(1400, 1000);
    window->show();
    check(QTest::qWaitForWindowExposed(window), QStringLiteral("the designer did not show"));
    const auto shot = [&](const QString &name) {
        QApplication::processEvents();
        save(window->grab(), folder + QStringLiteral("/") + name + QStringLiteral(".png"));
    };
    shot(QStringLiteral("01-empty"));
    for (const QString &name :
         {QStringLiteral("Classic.cov"), QStringLiteral("Classic Customer.cst"),
          QStringLiteral("Classic Customer.sum")}) {
        window->openOn(
            testsupport::sourcePath(QStringLiteral("resources/Print Templates/") + name));
        shot(QStringLiteral("02-") + name);
    }
    window->openOn(testsupport::sourcePath(Classic));
    window->document().selectBoxes({8, 9, 10, 16, 17});
    window->canvas()->update();
    shot(QStringLiteral("03-multiselect"));
    window->dispatch(QStringLiteral("mnuLefts"));
    shot(QStringLiteral("04-aligned"));
    for (const QString &menu : {QStringLiteral("PopEditRectangle"), QStringLiteral("PopEditLine"),
                                QStringLiteral("PopEditBox")}) {
        QMenu *popup = window->popupMenu(menu);
        popup->popup(window->mapToGlobal(QPoint(400, 300)));
        QApplication::processEvents();
        save(popup->grab(), folder + QStringLiteral("/05-") + menu + QStringLiteral(".png"));
        popup->hide();
    }
    QTest::mousePress(window->rectangleTool(), Qt::LeftButton);
    QTest::mousePress(window->lineTool(), Qt::LeftButton);
    window->canvas()->setZoom(0.75);
    shot(QStringLiteral("06-tools-75"));
}

void designerComfort(const QString &folder) {
    const QString suffix = QStringLiteral("-") + scale() + QStringLiteral("x.png");
    Designer designer;
    frmCustomLayout *window = designer.window.get();
    window->show();
    check(QTest::qWaitForWindowExposed(window), QStringLiteral("the designer did not show"));
    window->openOn(testsupport::sourcePath(Classic));
    const int note = addNote(*window, LongNote);
    window->document().selectBoxes({note});
    QApplication::processEvents();
    save(window->grab(), folder + QStringLiteral("/notes") + suffix);
    window->document().selectBoxes({8});
    QApplication::processEvents();
    save(window->grab(), folder + QStringLiteral("/designer") + suffix);
    QTest::qWait(400); // the second fit, once the window manager has framed the window
    for (const QString &command :
         {QStringLiteral("mnuZoomFitPage"), QStringLiteral("mnuZoomFitWidth")}) {
        check(window->dispatch(command), command);
        QApplication::processEvents();
        save(window->grab(), folder + QStringLiteral("/") + command + suffix);
    }

    // The real font dialog over the designer, started from the selected box; the whole screen
    // is taken (under Xvfb) while it is open.
    QtPrompter real(QStringLiteral("Tavrel"));
    DesignerEnvironment environment;
    environment.templateFolder = designer.dir.path();
    frmCustomLayout dialogs(environment, real, designer.actions);
    dialogs.show();
    check(QTest::qWaitForWindowExposed(&dialogs), QStringLiteral("the designer did not show"));
    dialogs.openOn(testsupport::sourcePath(Classic));
    TemplateLayout layout = dialogs.document().layout();
    layout.box(8).fontName = QStringLiteral("Liberation Sans");
    layout.box(8).fontSize = 9;
    layout.box(8).fontBold = true;
    dialogs.document().change(layout, QStringLiteral("font"));
    dialogs.document().selectBoxes({8});
    dialogs.activateWindow();
    const auto shootDialog = [&](const QString &name) {
        QTimer::singleShot(800, &dialogs, [&dialogs, folder, name, suffix] {
            QWidget *dialog = QApplication::activeModalWidget();
            save(dialogs.screen()->grabWindow(0), folder + QStringLiteral("/") + name + suffix);
            if (dialog)
                dialog->close();
        });
    };
    shootDialog(QStringLiteral("font-dialog"));
    check(dialogs.dispatch(QStringLiteral("mnuFont")), QStringLiteral("mnuFont"));

    // The multi-line note editor.
    dialogs.document().selectBoxes({addNote(dialogs, LongNote)});
    shootDialog(QStringLiteral("notes-editor"));
    check(dialogs.dispatch(QStringLiteral("mnuEditNotes")), QStringLiteral("mnuEditNotes"));
}

// A logo dropped on the Classic body template's header, and its last column made wider than
// the printable area; the template stays beside the shots, for printing it to compare.
void agreement(const QString &folder) {
    const QString copy = folder + QStringLiteral("/Logo Classic Customer.cst");
    QFile::remove(copy);
    check(QFile::copy(testsupport::sourcePath(Classic), copy), QStringLiteral("copy ") + copy);
    QFile::setPermissions(copy, QFile::ReadOwner | QFile::WriteOwner);

    QTemporaryDir dir;
    ScriptedPrompter quiet;
    AppContext context;
    const QString job = testsupport::copyDemoJob(dir.path());
    check(Startup::loadJob(context, job, dir.path(), quiet, PrinterList{}),
          QStringLiteral("the demo job did not load"));
    DesignerEnvironment environment = DesignerSession::environmentOf(context);
    environment.templateFolder = dir.path();
    environment.documentName = QStringLiteral("Demo");
    environment.fontName = QStringLiteral("Arial");
    environment.fontSize = 9;
    ScriptedPrompter prompter;
    NoDesignerActions actions;
    frmCustomLayout window(environment, prompter, actions);
    window.openOn(copy);
    window.resize(1200, 900);
    DesignCanvas *canvas = window.canvas();
    window.show();
    check(QTest::qWaitForWindowExposed(&window), QStringLiteral("the designer did not show"));

    const QString logo = testsupport::writePicture(folder + QStringLiteral("/logo.png"), {200, 100},
                                                   QColor(255, 220, 200));
    prompter.queueFile(logo);
    window.dispatch(QStringLiteral("mnuEditLogo"));
    // Dropped on the header's last grid row, below the file title.
    NewBoxRequest request;
    request.type = NewBoxRequest::Type::Logo;
    request.caption = QStringLiteral("Logo");
    const QPoint origin = window.document().layout().containerOrigin(
        Container::header(), canvas->pageArea(), canvas->pictures());
    canvas->placeNewBox(
        request,
        canvas->toWidget(origin + QPoint(0, canvas->bandHeight(Container::header()) - 60)));
    TemplateLayout layout = window.document().layout();
    for (int s = 1; s <= TemplateLayout::BoxCapacity; ++s) {
        if (layout.box(s).placed && layout.box(s).caption == QLatin1String("EXT Cust$"))
            layout.box(s).width += 1200;
    }
    window.document().change(layout, QStringLiteral("wider"));
    QTest::qWait(50);
    const QString suffix = QStringLiteral("-") + scale() + QStringLiteral("x.png");
    save(window.grab(), folder + QStringLiteral("/designer-logo-out-of-bounds") + suffix);
    save(canvas->grab(), folder + QStringLiteral("/canvas-logo-out-of-bounds") + suffix);
    window.dispatch(QStringLiteral("mnuSave"));
}

void shootScreen(const QString &folder, const QString &name) {
    QTest::qWait(300);
    save(QGuiApplication::primaryScreen()->grabWindow(0), folder + QStringLiteral("/") + name +
                                                              QStringLiteral("-") + scale() +
                                                              QStringLiteral("x.png"));
}

void windows(const QString &folder) {
    QStandardPaths::setTestModeEnabled(true);
    {
        QTemporaryDir dir;
        const QString job = testsupport::copyDemoJob(dir.path());
        ScriptedPrompter prompter;
        AppContext context;
        check(Startup::loadJob(context, job, dir.path(), prompter, PrinterList{}),
              QStringLiteral("the demo job did not load"));
        frmPrintpreview *window =
            PreviewSession::start(context, prompter, ReportJob::selectionFromJobFile(context),
                                  QStringLiteral("Classic Customer.cst"), nullptr);
        window->move(0, 0);
        window->resize(window->screen()->availableGeometry().size() * 9 / 10);
        window->dispatch(QStringLiteral("mnuPageWidth"));
        window->dispatch(QStringLiteral("mnuFindText"));
        frmFind *find = window->findDialog();
        QTest::keyClicks(find->txtFind(), QStringLiteral("Halyard"));
        QTest::mouseClick(find->cmdFind(), Qt::LeftButton);
        QTest::mouseClick(find->cmdFind(), Qt::LeftButton);
        check(prompter.messages().isEmpty(), prompter.messages().join(QLatin1Char('\n')));
        shootScreen(folder, QStringLiteral("preview-find-mark"));
        window->close();
    }
    PrinterSetup initial;
    initial.printers = {QStringLiteral("PDF"), QStringLiteral("Office-LaserJet")};
    initial.printer = QStringLiteral("PDF");
    initial.copies = 2;
    initial.orientation = OrientationChoice::Landscape;
    PrinterPropertiesDialog dialog(initial);
    dialog.move(40, 40);
    dialog.show();
    check(QTest::qWaitForWindowExposed(&dialog), QStringLiteral("Printer Properties did not show"));
    shootScreen(folder, QStringLiteral("printer-properties"));
}

} // namespace

int main(int argc, char **argv) {
    // The look the window tests have: Fusion, Liberation Sans 9, the style's own palette.
    QApplication app(argc, argv);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setFont(QFont(QStringLiteral("Liberation Sans"), 9));
    QApplication::setPalette(QApplication::style()->standardPalette());

    QStringList args = QApplication::arguments().mid(1);
    if (args.isEmpty()) {
        std::fprintf(stderr, "usage: window-shots OUTDIR [designer] [agreement] [windows]\n");
        return 2;
    }
    const QString folder = QDir(args.takeFirst()).absolutePath();
    QDir().mkpath(folder);
    if (args.isEmpty())
        args = {QStringLiteral("designer"), QStringLiteral("agreement"), QStringLiteral("windows")};
    for (const QString &scene : args) {
        if (scene == QLatin1String("designer")) {
            designerCanvas(folder);
            designerComfort(folder);
        } else if (scene == QLatin1String("agreement")) {
            agreement(folder);
        } else if (scene == QLatin1String("windows")) {
            windows(folder);
        } else {
            check(false, QStringLiteral("no such scene: ") + scene);
        }
    }
    std::printf("window-shots: pictures in %s\n", qPrintable(folder));
    return failures == 0 ? 0 : 1;
}
