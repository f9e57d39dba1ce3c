#include "common/TestRegistry.h"
#include "shell/ui/frmMsgbox.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

using namespace tavrel;

class MsgboxTest : public QObject {
    Q_OBJECT

private slots:
    void showsMessageAndProgress();
    void cancelRaisesTheStopFlag();
    void escapeCancelsButClosingByTheProgramDoesNot();
    void reportLetsEventsRun();
};

void MsgboxTest::showsMessageAndProgress() {
    frmMsgbox box;
    QVERIFY(!box.isModal());
    box.setMessage("Laying out the report...");
    QCOMPARE(box.message(), QString("Laying out the report..."));
    box.setProgress(30, 120);
    QCOMPARE(box.value(), 30);
    QCOMPARE(box.maximum(), 120);
    box.setProgress(500, 120); // kept within the bar
    QCOMPARE(box.value(), 120);
    box.setProgress(0, 0); // unknown length: a busy bar
    QCOMPARE(box.maximum(), 0);
}

void MsgboxTest::cancelRaisesTheStopFlag() {
    frmMsgbox box;
    box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box));
    QSignalSpy stops(&box, &frmMsgbox::stopRequestedChanged);
    QVERIFY(box.report(1, 10));
    QTest::mouseClick(box.cmdCancel(), Qt::LeftButton);
    QVERIFY(box.stopRequested());
    QVERIFY(!box.cmdCancel()->isEnabled());
    QVERIFY(!box.report(2, 10));
    QCOMPARE(stops.size(), 1);
    QVERIFY(box.isVisible()); // the job decides when the box goes
    box.restart();
    QVERIFY(!box.stopRequested());
    QVERIFY(box.cmdCancel()->isEnabled());
    QVERIFY(box.report(3, 10));
}

void MsgboxTest::escapeCancelsButClosingByTheProgramDoesNot() {
    frmMsgbox box;
    box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box));
    box.close();
    QVERIFY(!box.stopRequested());
    box.show();
    QTest::keyClick(&box, Qt::Key_Escape);
    QVERIFY(box.stopRequested());
    QVERIFY(box.isVisible());
    box.finish();
    QVERIFY(!box.isVisible());
    QVERIFY(box.stopRequested());
}

// A same-thread job that reports progress in a tight loop still lets a pressed Cancel through.
void MsgboxTest::reportLetsEventsRun() {
    frmMsgbox box;
    box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box));
    QTimer::singleShot(100, box.cmdCancel(), &QPushButton::click);
    QElapsedTimer clock;
    clock.start();
    int step = 0;
    while (box.report(step % 1000, 1000) && clock.elapsed() < 5000)
        ++step;
    QVERIFY(box.stopRequested());
    QVERIFY(clock.elapsed() < 1000);
    QVERIFY(!box.findChild<QLabel *>("lblElapsed")->text().isEmpty());
}

TAVREL_TEST(MsgboxTest)
#include "MsgboxTest.moc"
