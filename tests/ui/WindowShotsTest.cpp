#include "base/ScriptedPrompter.h"
#include "base/ui/PrinterPropertiesDialog.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"
#include "preview/frmFind.h"
#include "preview/frmPrintpreview.h"
#include "shell/AppContext.h"
#include "shell/ReportJob.h"
#include "shell/SettingsStore.h"
#include "shell/Startup.h"
#include "shell/ui/PreviewSession.h"

#include <QDir>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace tavrel;

// Pictures of the preview with a find mark and of Printer Properties, for looking at under a
// real X server (Xvfb) at any QT_SCALE_FACTOR: runs only when TAVREL_SHOT_DIR names the folder
// to write them to.
class WindowShotsTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() {
        if (qEnvironmentVariableIsEmpty("TAVREL_SHOT_DIR"))
            QSKIP("TAVREL_SHOT_DIR is not set");
        QStandardPaths::setTestModeEnabled(true);
    }
    void previewWithFindMark();
    void printerProperties();

private:
    static void shoot(const QString &name) {
        QTest::qWait(300);
        const QString suffix = QStringLiteral("-%1x").arg(
            qEnvironmentVariable("QT_SCALE_FACTOR", QStringLiteral("1")));
        const QImage screen = QGuiApplication::primaryScreen()->grabWindow(0).toImage();
        QVERIFY(screen.save(QDir(qEnvironmentVariable("TAVREL_SHOT_DIR"))
                                .filePath(name + suffix + QStringLiteral(".png"))));
    }
};

void WindowShotsTest::previewWithFindMark() {
    QTemporaryDir dir;
    const QString job = testsupport::copyDemoJob(dir.path());
    ScriptedPrompter prompter;
    AppContext context;
    QVERIFY(Startup::loadJob(context, job, dir.path(), prompter, PrinterList{}));
    frmPrintpreview *window =
        PreviewSession::start(context, prompter, ReportJob::selectionFromJobFile(context),
                              "Classic Customer.cst", nullptr);
    window->move(0, 0);
    window->resize(window->screen()->availableGeometry().size() * 9 / 10);
    window->dispatch("mnuPageWidth");
    window->dispatch("mnuFindText");
    frmFind *find = window->findDialog();
    QTest::keyClicks(find->txtFind(), "Halyard");
    QTest::mouseClick(find->cmdFind(), Qt::LeftButton);
    QTest::mouseClick(find->cmdFind(), Qt::LeftButton);
    QVERIFY(prompter.messages().isEmpty());
    shoot(QStringLiteral("preview-find-mark"));
    window->close();
}

void WindowShotsTest::printerProperties() {
    PrinterSetup initial;
    initial.printers = {QStringLiteral("PDF"), QStringLiteral("Office-LaserJet")};
    initial.printer = QStringLiteral("PDF");
    initial.copies = 2;
    initial.orientation = OrientationChoice::Landscape;
    PrinterPropertiesDialog dialog(initial);
    dialog.move(40, 40);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    shoot(QStringLiteral("printer-properties"));
}

TAVREL_TEST(WindowShotsTest)
#include "WindowShotsTest.moc"
