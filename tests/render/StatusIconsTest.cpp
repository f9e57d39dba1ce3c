#include "render/StatusIcons.h"

#include "base/RuntimeError.h"

#include "common/TestRegistry.h"
#include "common/TestSupport.h"

#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>

using namespace tavrel;

class StatusIconsTest : public QObject {
    Q_OBJECT

private slots:
    void bitmapForValue_data();
    void bitmapForValue();
    void everyBitmapIsACrispResource();
    void unknownNumbersAreRefused();
    void writeIconFile();
};

void StatusIconsTest::bitmapForValue_data() {
    QTest::addColumn<QString>("value");
    QTest::addColumn<int>("bitmap");
    const char *values[] = {"0", "1", "2", "4", "6", "7", "8", "9", "10"};
    const int bitmaps[] = {103, 104, 105, 106, 107, 108, 109, 110, 112};
    for (int i = 0; i < 9; ++i)
        QTest::addRow("\"%s\"", values[i]) << QString::fromLatin1(values[i]) << bitmaps[i];
    for (const char *other : {"3", "5", "11", "", " 1", "01", "1.0", "-1", "Complete"})
        QTest::addRow("\"%s\" is unknown", other) << QString::fromLatin1(other) << 111;
}

void StatusIconsTest::bitmapForValue() {
    QFETCH(QString, value);
    QFETCH(int, bitmap);
    QCOMPARE(StatusIcons::bitmapForValue(value), bitmap);
    QVERIFY(!StatusIcons::meaning(bitmap).isEmpty());
}

void StatusIconsTest::everyBitmapIsACrispResource() {
    QStringList paths;
    for (int bitmap = StatusIcons::FirstBitmap; bitmap <= StatusIcons::LastBitmap; ++bitmap)
        paths.append(StatusIcons::resourcePath(bitmap));
    paths.append(StatusIcons::taxResourcePath());
    QCOMPARE(paths.first(), QString(":/status/103.png"));
    for (const QString &path : paths) {
        const QImage image(path);
        QVERIFY2(!image.isNull(), qPrintable(path));
        QCOMPARE(image.size(), QSize(64, 64));
        QVERIFY(image.hasAlphaChannel());
        // 384 dpi: a natural size of 240 twips, like a 16-pixel screen bitmap.
        QCOMPARE(image.dotsPerMeterX(), 15118);
        QCOMPARE(image.dotsPerMeterY(), 15118);
    }
}

void StatusIconsTest::unknownNumbersAreRefused() {
    for (const int bitmap : {102, 113, 0}) {
        try {
            StatusIcons::resourcePath(bitmap);
            QFAIL("an unknown bitmap number was accepted");
        } catch (const RuntimeError &error) {
            QCOMPARE(error.number(), ErrorNumber::InvalidProcedureCall);
        }
    }
}

void StatusIconsTest::writeIconFile() {
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString path = StatusIcons::writeIconFile(112, dir.path());
    QCOMPARE(path, dir.filePath("status112.png"));
    QFile resource(StatusIcons::resourcePath(112));
    QVERIFY(resource.open(QIODevice::ReadOnly));
    QCOMPARE(testsupport::readBytes(path), resource.readAll());

    try {
        StatusIcons::writeIconFile(103, dir.filePath("missing/folder"));
        QFAIL("writing into a missing folder succeeded");
    } catch (const RuntimeError &error) {
        QVERIFY(error.number() != 0);
    }
}

TAVREL_TEST(StatusIconsTest)
#include "StatusIconsTest.moc"
