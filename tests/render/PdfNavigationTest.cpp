#include "render/PdfNavigation.h"
#include "common/TestRegistry.h"
#include "render/PageAnchors.h"

#include <QBuffer>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPainter>
#include <QPdfWriter>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace tavrel;

Q_DECLARE_METATYPE(tavrel::DocumentNavigation)

namespace {

// Runs qpdf with arguments; answers its standard output and puts what went wrong (a failure,
// or any warning on its standard error) into problem.
QByteArray qpdf(const QString &program, const QStringList &arguments, QString &problem) {
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(60000)) {
        process.kill();
        process.waitForFinished();
        problem = QStringLiteral("qpdf did not finish");
        return {};
    }
    const QByteArray errors = process.readAllStandardError();
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0 ||
        !errors.isEmpty())
        problem = QStringLiteral("qpdf failed (%1): ").arg(process.exitCode()) +
                  QString::fromLocal8Bit(errors);
    return process.readAllStandardOutput();
}

// Three pages of text, as Qt's PDF writer writes them.
QByteArray qtPdf() {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setTitle(QStringLiteral("Navigation"));
    writer.setCreator(QStringLiteral("Tavrel"));
    QPainter painter(&writer);
    for (int page = 1; page <= 3; ++page) {
        if (page > 1)
            writer.newPage();
        painter.drawText(100, 100, QStringLiteral("Page %1").arg(page));
    }
    painter.end();
    return buffer.data();
}

} // namespace

class PdfNavigationTest : public QObject {
    Q_OBJECT

private slots:
    void appendsToQtsPdf_data();
    void appendsToQtsPdf();
};

void PdfNavigationTest::appendsToQtsPdf_data() {
    QTest::addColumn<DocumentNavigation>("navigation");
    QTest::addColumn<int>("outlineItems");

    DocumentNavigation full;
    full.anchors = {{QStringLiteral("Cover"), 1, 1, 0},
                    {QStringLiteral("Specification"), 1, 2, 1440},
                    {QStringLiteral("Subtotal - Reception"), 2, 2, 2880},
                    {QStringLiteral("Beyond the last page"), 1, 9, 0},
                    {QStringLiteral("Summary"), 1, 3, 0}};
    full.author = QStringLiteral("Harbor Point Office Interiors");
    full.subject = QStringLiteral("Offices \u00e9t\u00e9");
    QTest::newRow("outline and information") << full << 4;

    DocumentNavigation labelsAndInfo;
    labelsAndInfo.author = QStringLiteral("Harbor Point");
    labelsAndInfo.subject = QStringLiteral("Offices");
    QTest::newRow("no anchors") << labelsAndInfo << 0;

    QTest::newRow("page labels only") << DocumentNavigation{} << 0;
}

// The navigation is appended to the bytes Qt wrote, which stay as they are (an incremental
// update, not a rewrite of the whole file), and the result is a PDF qpdf finds nothing wrong with.
void PdfNavigationTest::appendsToQtsPdf() {
    QFETCH(DocumentNavigation, navigation);
    QFETCH(int, outlineItems);
    const QString program = QStandardPaths::findExecutable(QStringLiteral("qpdf"));
    if (program.isEmpty())
        QSKIP("qpdf is not installed");
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("navigation.pdf"));
    const QByteArray plain = qtPdf();
    QBuffer output;
    output.open(QIODevice::WriteOnly);
    PdfNavigation::write(output, path, navigation,
                         [&](QIODevice &pdf) { QCOMPARE(pdf.write(plain), plain.size()); });
    const QByteArray written = output.data();
    QVERIFY(written.size() > plain.size());
    QVERIFY(written.startsWith(plain));
    QCOMPARE(written.count("%%EOF"), plain.count("%%EOF") + 1);
    // The temporary file Qt wrote into is gone.
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden), QStringList{});

    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(written), written.size());
    file.close();
    QString problem;
    qpdf(program, {QStringLiteral("--check"), path}, problem);
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
    const QJsonObject json =
        QJsonDocument::fromJson(qpdf(program,
                                     {QStringLiteral("--json"), QStringLiteral("--json-key=qpdf"),
                                      QStringLiteral("--json-key=outlines"),
                                      QStringLiteral("--json-key=pagelabels"), path},
                                     problem))
            .object();
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
    int items = 0;
    for (const QJsonValue &item : json[QStringLiteral("outlines")].toArray())
        items += 1 + int(item.toObject()[QStringLiteral("kids")].toArray().size());
    QCOMPARE(items, outlineItems);
    QCOMPARE(json[QStringLiteral("pagelabels")].toArray().size(), 1);

    // The document information: Qt's title kept, the author and subject added.
    const QJsonObject objects = json[QStringLiteral("qpdf")].toArray()[1].toObject();
    const QJsonObject trailer =
        objects[QStringLiteral("trailer")].toObject()[QStringLiteral("value")].toObject();
    const QString infoRef = trailer[QStringLiteral("/Info")].toString();
    QVERIFY(!infoRef.isEmpty());
    const QJsonObject info =
        objects[QStringLiteral("obj:") + infoRef].toObject()[QStringLiteral("value")].toObject();
    QCOMPARE(info[QStringLiteral("/Title")].toString(), QStringLiteral("u:Navigation"));
    QCOMPARE(info[QStringLiteral("/Author")].toString(),
             navigation.author.isEmpty() ? QString() : QStringLiteral("u:") + navigation.author);
    QCOMPARE(info[QStringLiteral("/Subject")].toString(),
             navigation.subject.isEmpty() ? QString() : QStringLiteral("u:") + navigation.subject);
    QVERIFY(trailer[QStringLiteral("/Prev")].isDouble());
}

TAVREL_TEST(PdfNavigationTest)
#include "PdfNavigationTest.moc"
