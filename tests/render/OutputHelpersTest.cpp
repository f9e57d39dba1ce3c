#include "TestSection.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"

#include <QImage>
#include <QTemporaryDir>
#include <QTest>

using namespace tavrel;

namespace {

// Writes what it is given in a readable form, so the tests see what reached the export.
class RecordingFragments : public ExportFragmentWriter {
public:
    QString textParagraph(HtmlTextSource source, const HtmlTextStyle &style, double left,
                          double top, double width, const QString &text) const override {
        return QStringLiteral("[%1 %2 %3 %4 size=%5 font=%6 weight=%7 italic=%8 underline=%9 "
                              "color=%10 brush=%11 align=%12 text=%13]")
            .arg(source == HtmlTextSource::TextBox ? QStringLiteral("box")
                                                   : QStringLiteral("aligned"))
            .arg(left)
            .arg(top)
            .arg(width)
            .arg(style.fontSize)
            .arg(style.fontName)
            .arg(style.weight)
            .arg(style.italic)
            .arg(style.underline)
            .arg(style.textColor)
            .arg(style.brushColor)
            .arg(style.textAlign)
            .arg(text);
    }
    QString picture(const QString &path, double left, double top,
                    HtmlPictureForm form) const override {
        return QStringLiteral("[picture %1 %2 %3%4]")
            .arg(path)
            .arg(left)
            .arg(top)
            .arg(form == HtmlPictureForm::Band ? QStringLiteral(" band") : QString());
    }
    QString rtfText(const RtfPlacement &placement, const QString &text) const override {
        return QStringLiteral("[rtf %1 %2 %3]").arg(placement.mode).arg(placement.blanks).arg(text);
    }
};

struct HelperRun {
    PageEngine engine;
    JobState job;
    RecordingFragments fragments;
    OutputHelpers out{engine, job, &fragments};
    QStringList log;

    HelperRun() {
        engine.StartDoc();
        engine.setExportFile(QStringLiteral("/tmp/unused.htm"));
        engine.setCallTrace([this](const char *member) { log << QString::fromLatin1(member); });
    }
};

} // namespace

class OutputHelpersTest : public QObject {
    Q_OBJECT

private slots:
    void setPrintFontOrder();
    void setPrintMarginsOrder();
    void printTextBoxReadsBackInOrder();
    void printTextBoxWeighsByUnderline();
    void printAlignedTextBoxWeighsByBold();
    void rtfExportGetsTheText();
    void noExportReadsNothingBack();
    void printPictureSkipsMissingFiles();
};

void OutputHelpersTest::setPrintFontOrder() {
    HelperRun run;
    run.out.SetPrintFont(QStringLiteral("Times New Roman"), 12, true, false, true);
    QCOMPARE(run.log,
             strings({"FontName=", "FontSize=", "FontBold=", "FontItalic=", "FontUnderline="}));
    QCOMPARE(run.engine.FontName(), QStringLiteral("Times New Roman"));
    QCOMPARE(run.engine.FontSize(), 12);
    QVERIFY(run.engine.FontBold() && !run.engine.FontItalic() && run.engine.FontUnderline());
}

void OutputHelpersTest::setPrintMarginsOrder() {
    HelperRun run;
    run.out.SetPrintMargins(1, 2, 3, 4);
    QCOMPARE(run.log, strings({"MarginLeft=", "MarginRight=", "MarginTop=", "MarginBottom="}));
    QCOMPARE(run.engine.MarginBottom(), 4.0);
}

void OutputHelpersTest::printTextBoxReadsBackInOrder() {
    HelperRun run;
    run.job.htmlExport = true;
    run.out.PrintTextBox(720, 1440, 2880, QStringLiteral("Desk"));
    QCOMPARE(run.log,
             strings({"TextBox", "FontSize", "FontName", "FontUnderline", "FontItalic", "TextColor",
                      "FontUnderline", "BrushColor", "TextAlign", "ExportRaw="}));
    const TextItem item = std::get<TextItem>(run.engine.page(1).items.back());
    QCOMPARE(item.x, 720.0);
    QCOMPARE(item.width, 2880.0);
    QCOMPARE(item.background, qint64(WhiteColor)); // shaded with the brush
}

void OutputHelpersTest::printTextBoxWeighsByUnderline() {
    HelperRun run;
    run.job.htmlExport = true;
    run.out.SetPrintFont(QStringLiteral("Arial"), 9, false, true, true);
    run.engine.setTextColor(255);
    run.out.PrintTextBox(720, 1440, 2880, QStringLiteral("Desk"));
    run.out.SetPrintFont(QStringLiteral("Arial"), 9, true, false, false);
    run.out.PrintTextBox(720, 1800, 2880, QStringLiteral("Chair"));
    QCOMPARE(run.engine.page(1).exportRaw,
             QStringLiteral("[box 720 1440 2880 size=9 font=Arial weight=1 italic=1 underline=1 "
                            "color=255 brush=16777215 align=0 text=Desk]"
                            "[box 720 1800 2880 size=9 font=Arial weight=0 italic=0 underline=0 "
                            "color=255 brush=16777215 align=0 text=Chair]"));
}

void OutputHelpersTest::printAlignedTextBoxWeighsByBold() {
    HelperRun run;
    run.job.htmlExport = true;
    run.out.SetPrintFont(QStringLiteral("Arial"), 10, true, false, false);
    run.log.clear();
    run.out.PrintAlignedTextBox(2, QStringLiteral("A  B\rC"), 100, 200, 3000);
    QCOMPARE(run.log, strings({"TextAlign=", "TextBox", "FontSize", "FontName", "FontUnderline",
                               "FontItalic", "TextColor", "FontBold", "BrushColor", "TextAlign",
                               "ExportRaw="}));
    QCOMPARE(run.engine.page(1).exportRaw,
             QStringLiteral("[aligned 100 200 3000 size=10 font=Arial weight=1 italic=0 "
                            "underline=0 color=0 brush=16777215 align=2 text=A  B\rC]"));
}

void OutputHelpersTest::rtfExportGetsTheText() {
    HelperRun run;
    run.job.rtfExport = true;
    run.out.PrintTextBox(0, 0, 1000, QStringLiteral("Note"), {2, 4});
    QCOMPARE(run.log, strings({"TextBox", "ExportRaw="}));
    QCOMPARE(run.engine.page(1).exportRaw, QStringLiteral("[rtf 2 4 Note]"));
}

void OutputHelpersTest::noExportReadsNothingBack() {
    HelperRun run;
    run.out.PrintTextBox(0, 0, 1000, QStringLiteral("Plain"));
    run.out.PrintAlignedTextBox(1, QStringLiteral("Plain"), 0, 0, 1000);
    QCOMPARE(run.log, strings({"TextBox", "TextAlign=", "TextBox"}));
}

void OutputHelpersTest::printPictureSkipsMissingFiles() {
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("logo.png"));
    QImage image(20, 10, QImage::Format_RGB32);
    image.fill(Qt::green);
    image.save(path);

    HelperRun run;
    run.job.htmlExport = true;
    run.out.PrintPicture(QString(), 0, 0, QStringLiteral("100%"));
    run.out.PrintPicture(dir.filePath(QStringLiteral("missing.png")), 0, 0, QStringLiteral("100%"));
    run.out.PrintPicture(dir.path(), 0, 0, QStringLiteral("100%")); // a folder is no file
    QVERIFY(run.log.isEmpty());
    QCOMPARE(run.engine.page(1).items.size(), std::size_t(0));

    run.out.PrintPicture(path, 300, 400, QStringLiteral("75%"));
    QCOMPARE(run.log, strings({"DrawPicture", "ExportRaw="}));
    const auto picture = std::get<PictureItem>(run.engine.page(1).items.back());
    QCOMPARE(picture.width, 20 * 15 * 0.75); // 96 dpi: 15 twips a pixel
    QCOMPARE(picture.height, 10 * 15 * 0.75);
    QCOMPARE(run.engine.page(1).exportRaw, QStringLiteral("[picture %1 300 400]").arg(path));
}

TAVREL_TEST(OutputHelpersTest)
#include "OutputHelpersTest.moc"
