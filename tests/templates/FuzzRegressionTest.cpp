#include "base/IniFile.h"
#include "base/RuntimeError.h"
#include "base/ScriptedPrompter.h"
#include "base/TextFile.h"
#include "base/Windows1252.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"
#include "spec/OrderData.h"
#include "spec/OrderFileReader.h"
#include "spec/SifReader.h"
#include "spec/SpecData.h"
#include "spec/Totals.h"
#include "templates/GroupFile.h"
#include "templates/TemplateReader.h"
#include "templates/TemplateWriter.h"

#include <QDir>
#include <QTest>

using namespace tavrel;

// Hostile inputs for each reader, one folder per reader under tests/data/fuzz: the shapes the
// fuzz targets (tests/fuzz) hammer on, and every input that ever broke a reader there. Each goes
// through the same calls as that reader's fuzz target. Passing means: no crash, no sanitizer
// report, and the reader comes back.
class FuzzRegressionTest : public QObject {
    Q_OBJECT

private slots:
    void readerSurvives_data();
    void readerSurvives();
};

void FuzzRegressionTest::readerSurvives_data() {
    QTest::addColumn<QString>("reader");
    QTest::addColumn<QString>("path");
    int rows = 0;
    for (const char *reader : {"sif", "order", "ini", "template", "group"}) {
        const QDir folder(testsupport::dataPath(QStringLiteral("fuzz/") + QLatin1String(reader)));
        for (const QFileInfo &file : folder.entryInfoList(QDir::Files, QDir::Name)) {
            QTest::addRow("%s/%s", reader, qPrintable(file.fileName()))
                << QString::fromLatin1(reader) << file.filePath();
            ++rows;
        }
    }
    if (rows == 0)
        QTest::newRow("none yet") << QString() << QString();
}

void FuzzRegressionTest::readerSurvives() {
    QFETCH(QString, reader);
    QFETCH(QString, path);
    if (reader.isEmpty())
        QSKIP("no regression inputs");
    const QByteArray bytes = testsupport::readBytes(path);
    try {
        if (reader == QLatin1String("sif")) {
            SpecData spec;
            parseSifText(bytes, QStringLiteral("fuzz.sif"), spec);
            Totals::computeAll(spec);
        } else if (reader == QLatin1String("order")) {
            const QStringList lines = TextFile::splitLines(fromWindows1252(bytes));
            for (const bool version4 : {false, true}) {
                OrderData order;
                readAdditionalChargeLines(lines, version4, order);
                readOrderHeaderLines(lines, order);
                sumOfAdditionalCharges(order);
            }
        } else if (reader == QLatin1String("ini")) {
            const IniFile ini = IniFile::fromText(fromWindows1252(bytes));
            for (const QString &section : ini.sections()) {
                for (const QString &key : ini.keys(section))
                    ini.value(section, key);
            }
        } else if (reader == QLatin1String("template")) {
            ScriptedPrompter prompter;
            TemplateLayout layout;
            TemplateReader::readBytes(bytes, layout, prompter);
            TemplateWriter::bytes(layout, QStringLiteral("Custom Template"));
        } else {
            GroupFile::bytes(GroupFile::read(path));
        }
    } catch (const RuntimeError &) {
        // Refusing the input is fine; only a crash or a sanitizer report fails.
    }
}

TAVREL_TEST(FuzzRegressionTest)
#include "FuzzRegressionTest.moc"
