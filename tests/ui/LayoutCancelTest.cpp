#include "base/ScriptedPrompter.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"
#include "preview/PreviewActions.h"
#include "preview/frmPrintpreview.h"
#include "render/PageEngine.h"
#include "shell/ReportJob.h"
#include "shell/Startup.h"
#include "shell/ui/PreviewSession.h"
#include "shell/ui/frmMsgbox.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QProgressDialog>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace tavrel;

namespace {

constexpr int BigItems = 20000;

// A specification of count items, each with two option lines, as a parent application writes.
QByteArray bigSif(int count) {
    QByteArray sif = "SF=Big Project.sp4\r\nST=Big Project\r\n";
    for (int i = 1; i <= count; ++i) {
        sif += "PN=CH-" + QByteArray::number(i) + "\r\nPD=Task chair, mesh back, number " +
               QByteArray::number(i) + "\r\nMC=HMI\r\nQT=" + QByteArray::number(1 + i % 7) +
               "\r\nPL=" + QByteArray::number(100 + i % 900) +
               ".00\r\nSP=" + QByteArray::number(60 + i % 500) +
               ".50\r\nON=FIN\r\nOD=Graphite\r\nON=ARM\r\n" + "OD=Fixed arms\r\n";
    }
    return sif;
}

// The first visible top-level widget of type T with the object name, or null.
template <class T> T *findTopLevel(const QString &name) {
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        auto *found = qobject_cast<T *>(widget);
        if (!found) {
            // Dialogs with a parent are still top-level windows; look among children too.
            found = widget->findChild<T *>(name);
        }
        if (found && found->objectName() == name && found->isVisible())
            return found;
    }
    return nullptr;
}

struct BigJob {
    QTemporaryDir dir;
    ScriptedPrompter prompter;
    AppContext context;

    bool load() {
        const QString job = testsupport::copyDemoJob(dir.path());
        testsupport::writeBytes(dir.filePath("demo.sif"), bigSif(BigItems));
        return Startup::loadJob(context, job, dir.path(), prompter, PrinterList{});
    }
};

} // namespace

// Long jobs started from a window run off the window thread: their progress box is in front
// and its Cancel stops them at once.
class LayoutCancelTest : public QObject {
    Q_OBJECT

private slots:
    void previewCancelStopsLayout();
    void pdfCancelLeavesNoFile();
};

void LayoutCancelTest::previewCancelStopsLayout() {
    BigJob big;
    QVERIFY(big.load());
    QCOMPARE(big.context.spec.itemCount(), BigItems);
    const ReportSelection selection = ReportJob::selectionFromJobFile(big.context);

    // Pressed through the real button once the first pages are on screen.
    QElapsedTimer sincePress;
    int pagesAtPress = 0;
    QPointer<frmMsgbox> box;
    QTimer presser;
    presser.setInterval(20);
    connect(&presser, &QTimer::timeout, this, [&] {
        auto *preview = findTopLevel<frmPrintpreview>("frmPrintpreview");
        box = findTopLevel<frmMsgbox>("frmMsgbox");
        if (!preview || !box || preview->pageCount() < 3)
            return;
        presser.stop();
        QVERIFY(box->cmdCancel()->isEnabled());
        QVERIFY(box->isEnabled()); // not greyed behind a disabled window
        pagesAtPress = preview->pageCount();
        sincePress.start();
        QTest::mouseClick(box->cmdCancel(), Qt::LeftButton);
    });
    presser.start();
    frmPrintpreview *window = PreviewSession::start(big.context, big.prompter, selection,
                                                    "Classic Customer.cst", nullptr);
    const qint64 stopped = sincePress.isValid() ? sincePress.elapsed() : -1;
    QVERIFY2(pagesAtPress > 0, "Cancel was never pressed");
    qInfo("layout stopped %lld ms after Cancel, %d pages at the press, %d kept", stopped,
          pagesAtPress, window->pageCount());
    // The full report runs to well over a thousand pages; a cancelled one keeps only what was
    // laid out by the press and just after it. (The bound is generous: the machine may be busy.)
    QVERIFY2(stopped >= 0 && stopped < 5000, qPrintable(QString::number(stopped)));
    QVERIFY(window->pageCount() >= pagesAtPress);
    QVERIFY2(window->pageCount() < 600, qPrintable(QString::number(window->pageCount())));
    QVERIFY(!window->layoutRunning());
    QVERIFY(box.isNull() || !box->isVisible());
    QCOMPARE(big.prompter.calls("message").size(), 0);
    const auto status = big.prompter.calls("status");
    QVERIFY(!status.isEmpty());
    QCOMPARE(status.last().text,
             QString("Print preview stopped: the pages laid out so far are shown."));
    // The pages laid out stay viewable.
    window->dispatch("mnuViewLast");
    QCOMPARE(window->currentPage(), window->pageCount());
    window->close();
    QTRY_VERIFY(!window->isVisible());
}

void LayoutCancelTest::pdfCancelLeavesNoFile() {
    // A document long enough that writing it takes seconds.
    PageEngine engine;
    engine.StartDoc();
    for (int page = 1; page <= 3000; ++page) {
        if (page > 1)
            engine.NewPage();
        for (int row = 0; row < 30; ++row)
            engine.TextBox(QString("%1.%2 Task chair, mesh back, graphite").arg(page).arg(row),
                           1440, 1440 + row * 400, 9000, 0);
    }
    engine.EndDoc();

    NoPreviewActions actions;
    ScriptedPrompter prompter;
    frmPrintpreview window(engine, prompter, actions, "1", "Big.cst");
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    QTemporaryDir dir;
    const QString existing = dir.filePath("existing.pdf");
    const QByteArray old = "%PDF-1.4 an older report, kept byte for byte";
    testsupport::writeBytes(existing, old);
    const QString fresh = dir.filePath("fresh.pdf");

    for (const QString &path : {existing, fresh}) {
        prompter.clear();
        prompter.queueFile(path);
        bool pressed = false;
        QTimer presser;
        presser.setInterval(20);
        connect(&presser, &QTimer::timeout, this, [&] {
            auto *dialog = window.findChild<QProgressDialog *>("pdfProgress");
            if (!dialog || !dialog->isVisible() || dialog->value() < 1)
                return;
            presser.stop();
            QPushButton *cancel = dialog->findChild<QPushButton *>();
            QVERIFY(cancel);
            QTest::mouseClick(cancel, Qt::LeftButton);
            pressed = true;
        });
        presser.start();
        window.dispatch("mnuViewPDF");
        QVERIFY(pressed);
        QCOMPARE(prompter.calls("openDocument").size(), 0);
        QCOMPARE(prompter.calls("message").size(), 0);
        QCOMPARE(window.statusText(), QString());
    }
    QCOMPARE(testsupport::readBytes(existing), old);
    QVERIFY(!QFileInfo::exists(fresh));
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files), QStringList{"existing.pdf"});
}

TAVREL_TEST(LayoutCancelTest)
#include "LayoutCancelTest.moc"
