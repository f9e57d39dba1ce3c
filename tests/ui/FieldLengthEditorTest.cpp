#include "base/IniFile.h"
#include "base/ScriptedPrompter.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"
#include "designer/frmFieldLength.h"

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
    FieldLengths lengths = FieldLengths::builtIn();
    lengths.readFromJobFile(job);
    ScriptedPrompter prompter;
    frmFieldLength editor(job, lengths, prompter);
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
    frmFieldLength editor(job, lengths, prompter);
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
    frmFieldLength editor(job, lengths, prompter);
    editor.lengthBox("PN")->setText("99");
    editor.dispatch("cmdCancel");
    QCOMPARE(editor.result(), int(QDialog::Rejected));
    QCOMPARE(testsupport::readBytes(job), before);
    QCOMPARE(lengths.length("PN"), 16);
}

void FieldLengthEditorTest::defaultRestoresBuiltIn() {
    QTemporaryDir dir;
    const QString job = makeJob(dir);
    FieldLengths lengths = FieldLengths::builtIn();
    lengths.readFromJobFile(job);
    ScriptedPrompter prompter;
    frmFieldLength editor(job, lengths, prompter);
    editor.lengthBox("PD")->setText("70");
    editor.dispatch("cmdDefault");
    QCOMPARE(editor.lengthBox("PN")->text(), QString("16"));
    QCOMPARE(editor.lengthBox("PD")->text(), QString("34"));
    QCOMPARE(editor.labelBox("PN")->text(), QString("Part No."));
    QCOMPARE(lengths.length("PN"), 16);
}

TAVREL_TEST(FieldLengthEditorTest)
#include "FieldLengthEditorTest.moc"
