#include "SampleDocument.h"
#include "base/RuntimeError.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"
#include "render/ExportTestFiles.h"
#include "render/PdfOutput.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <stdexcept>

using namespace tavrel;

// The PDF is saved as every other output is: beside the target, renamed over it when complete.
// Whatever stops the export half-way leaves the PDF that was there byte for byte, and no
// temporary file beside it.
class PdfExportTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void failureKeepsTheOldFile_data();
    void failureKeepsTheOldFile();
    void replacesTheOldFileWhole();

private:
    QTemporaryDir m_dir;
    PageEngine m_engine;
};

void PdfExportTest::initTestCase() {
    drawSampleDocument(m_engine, writeSamplePicture(m_dir.filePath(QStringLiteral("logo.png"))));
}

void PdfExportTest::failureKeepsTheOldFile_data() {
    QTest::addColumn<QString>("how");
    QTest::addColumn<int>("error");
    QTest::newRow("disk full") << "full" << 61;
    QTest::newRow("cancelled after page 1") << "cancel" << -1;
    QTest::newRow("read-only folder") << "readonly" << 70;
}

void PdfExportTest::failureKeepsTheOldFile() {
    QFETCH(QString, how);
    QFETCH(int, error);
    QTemporaryDir dir;
    const QString pdf = dir.filePath(QStringLiteral("report.pdf"));
    const QByteArray old = "%PDF-1.4 the report of yesterday\n%%EOF\n";
    testsupport::writeBytes(pdf, old);
    int failure = 0;
    try {
        if (how == QLatin1String("full")) {
            const exporttest::FileSizeLimit full(2000);
            writePdf(m_engine, pdf);
        } else if (how == QLatin1String("cancel")) {
            writePdf(m_engine, pdf, [](int page) {
                if (page == 1)
                    throw std::runtime_error("cancelled");
            });
        } else {
            QFile::setPermissions(dir.path(), QFile::ReadOwner | QFile::ExeOwner);
            const bool root = QFileInfo(dir.path()).isWritable();
            if (root) {
                QFile::setPermissions(dir.path(),
                                      QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
                QSKIP("root writes into read-only folders");
            }
            writePdf(m_engine, pdf);
        }
    } catch (const RuntimeError &e) {
        failure = e.number();
    } catch (const std::runtime_error &) {
        failure = -1;
    }
    QFile::setPermissions(dir.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    QCOMPARE(failure, error);
    QCOMPARE(testsupport::readBytes(pdf), old);
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden),
             QStringList{QStringLiteral("report.pdf")});
}

void PdfExportTest::replacesTheOldFileWhole() {
    QTemporaryDir dir;
    const QString pdf = dir.filePath(QStringLiteral("report.pdf"));
    testsupport::writeBytes(pdf, QByteArray(200000, 'x')); // longer than the new one
    writePdf(m_engine, pdf);
    const QByteArray bytes = testsupport::readBytes(pdf);
    QVERIFY(bytes.startsWith("%PDF"));
    QVERIFY(bytes.trimmed().endsWith("%%EOF"));
    QVERIFY(!bytes.contains("xxxxxxxx"));
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden),
             QStringList{QStringLiteral("report.pdf")});
}

TAVREL_TEST(PdfExportTest)
#include "PdfExportTest.moc"
