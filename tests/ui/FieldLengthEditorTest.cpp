#include "base/IniFile.h"
#include "base/ScriptedPrompter.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"
#include "common/WindowFixtures.h"
#include "designer/frmFieldLength.h"
#include "render/DisplayListJson.h"
#include "render/PageEngine.h"
#include "shell/AppContext.h"
#include "shell/JobFile.h"
#include "shell/ReportJob.h"
#include "shell/SettingsStore.h"

#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>

using namespace tavrel;

// The field length editor: OK writes every key, Cancel writes nothing, Default restores the
// built-in lengths, and an empty or zero length is refused.
class FieldLengthEditorTest : public QObject {
    Q_OBJECT

private slots:
    void okWritesEveryKey();
    void refusesEmptyOrZero_data();
    void refusesEmptyOrZero();
    void cancelWritesNothing();
    void defaultRestoresBuiltIn();
    void demoJobKeepsItsLabels();

private:
    QString makeJob(QTemporaryDir &dir) {
        const QString job = dir.filePath("job.ini");
        testsupport::writeBytes(job, "[Printer]\r\nPN=20,Part No.\r\nQT=7,Qty\r\nFunction=1\r\n");
        return job;
    }
};

void FieldLengthEditorTest::okWritesEveryKey() {
    QTemporaryDir dir;
    const QString job = makeJob(dir);
    JobFile model = JobFile::load(job);
    FieldLengths lengths = model.fieldLengths(FieldLengths::builtIn());
    ScriptedPrompter prompter;
    frmFieldLength editor(model, lengths, prompter);
    QCOMPARE(editor.lengthBox("PN")->text(), QString("20"));
    QCOMPARE(editor.labelBox("PN")->text(), QString("Part No."));
    editor.lengthBox("PD")->setText("40");
    editor.labelBox("PD")->setText("Description");
    QVERIFY(editor.dispatch("cmdOK"));
    QVERIFY(prompter.calls().isEmpty());
    QCOMPARE(editor.result(), int(QDialog::Accepted));

    const IniFile ini = IniFile::load(job);
    for (const QString &code : FieldLengths::codes())
        QVERIFY2(ini.contains("Printer", code), qPrintable(code));
    QCOMPARE(ini.value("Printer", "PD"), QString("40,Description"));
    QCOMPARE(ini.value("Printer", "PN"), QString("20,Part No."));
    QCOMPARE(ini.value("Printer", "OT"), QString("7,")); // the order type takes QT's length
    QCOMPARE(ini.value("Printer", "Function"), QString("1"));
    QCOMPARE(lengths.length("PD"), 40);
}

void FieldLengthEditorTest::refusesEmptyOrZero_data() {
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << "";
    QTest::newRow("zero") << "0";
    QTest::newRow("blank") << "  ";
}

void FieldLengthEditorTest::refusesEmptyOrZero() {
    QFETCH(QString, text);
    QTemporaryDir dir;
    const QString job = makeJob(dir);
    const QByteArray before = testsupport::readBytes(job);
    FieldLengths lengths = FieldLengths::builtIn();
    ScriptedPrompter prompter;
    JobFile model = JobFile::load(job);
    frmFieldLength editor(model, lengths, prompter);
    editor.lengthBox("MC")->setText(text);
    editor.dispatch("cmdOK");
    QCOMPARE(prompter.messages(), QStringList{"Field Length Cannot be 'NULL' or '0'."});
    QCOMPARE(prompter.calls().first().icon, MessageIcon::Exclamation);
    QCOMPARE(testsupport::readBytes(job), before);
    QCOMPARE(lengths.length("MC"), 5);
}

void FieldLengthEditorTest::cancelWritesNothing() {
    QTemporaryDir dir;
    const QString job = makeJob(dir);
    const QByteArray before = testsupport::readBytes(job);
    FieldLengths lengths = FieldLengths::builtIn();
    ScriptedPrompter prompter;
    JobFile model = JobFile::load(job);
    frmFieldLength editor(model, lengths, prompter);
    editor.lengthBox("PN")->setText("99");
    editor.dispatch("cmdCancel");
    QCOMPARE(editor.result(), int(QDialog::Rejected));
    QCOMPARE(testsupport::readBytes(job), before);
    QCOMPARE(lengths.length("PN"), 16);
}

void FieldLengthEditorTest::defaultRestoresBuiltIn() {
    QTemporaryDir dir;
    const QString job = makeJob(dir);
    JobFile model = JobFile::load(job);
    FieldLengths lengths = model.fieldLengths(FieldLengths::builtIn());
    ScriptedPrompter prompter;
    frmFieldLength editor(model, lengths, prompter);
    editor.lengthBox("PD")->setText("70");
    editor.dispatch("cmdDefault");
    QCOMPARE(editor.lengthBox("PN")->text(), QString("16"));
    QCOMPARE(editor.lengthBox("PD")->text(), QString("34"));
    QCOMPARE(editor.labelBox("PN")->text(), QString("Part No."));
    QCOMPARE(lengths.length("PN"), 16);
}

void FieldLengthEditorTest::demoJobKeepsItsLabels() {
    // As a user meets it: start-up reads the demo job, the designer's editor opens on what the
    // job holds, one length and label are changed, and OK keeps every other key's label while the
    // report takes the new caption.
    testsupport::DemoJob demo;
    QVERIFY(demo.loaded);
    frmFieldLength editor(demo.context.job, demo.context.fieldLengths, demo.prompter);
    QCOMPARE(editor.lengthBox("PN")->text(), QString("16"));
    QCOMPARE(editor.labelBox("PN")->text(), QString("Part No."));
    QCOMPARE(editor.lengthBox("T1")->text(), QString("14"));
    QCOMPARE(editor.labelBox("T1")->text(), QString("Area"));
    editor.lengthBox("QT")->setText("8");
    editor.labelBox("QT")->setText("Quantity");
    QVERIFY(editor.dispatch("cmdOK"));
    QVERIFY(demo.prompter.calls().isEmpty());

    const IniFile ini = IniFile::load(demo.job);
    QCOMPARE(ini.value("Printer", "QT"), QString("8,Quantity"));
    QCOMPARE(ini.value("Printer", "PN"), QString("16,Part No."));
    QCOMPARE(ini.value("Printer", "T1"), QString("14,Area"));
    QCOMPARE(ini.value("Printer", "SPE"), QString("11,Ext Sell"));
    QCOMPARE(ini.value("Printer", "ED"), QString("60,")); // not in the job: built-in, no label
    QCOMPARE(demo.context.fieldLengths.label("QT"), QString("Quantity"));
    QCOMPARE(demo.context.job.fieldLengths(FieldLengths::builtIn()).length("QT"), 8);

    // The body's caption row follows at once.
    ReportJob report(demo.context, ReportJob::selectionFromJobFile(demo.context), demo.prompter);
    PageEngine engine;
    report.run(engine);
    const QByteArray pages = displayListJsonText(engine);
    QVERIFY(pages.contains("\"Quantity\""));
    QVERIFY(!pages.contains("\"Qty\""));
}

TAVREL_TEST(FieldLengthEditorTest)
#include "FieldLengthEditorTest.moc"
