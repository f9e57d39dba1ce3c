#include "base/ScriptedPrompter.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"
#include "common/WindowFixtures.h"
#include "designer/DesignCanvas.h"
#include "designer/DesignerActions.h"
#include "designer/DesignerDocument.h"
#include "designer/PropertyPanel.h"
#include "designer/frmCustomLayout.h"
#include "render/DisplayListJson.h"
#include "render/PageEngine.h"
#include "shell/JobFile.h"
#include "shell/ReportJob.h"
#include "templates/TemplateReader.h"

#include <QComboBox>
#include <QDir>
#include <QDoubleSpinBox>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

#include <algorithm>

using namespace tavrel;

// A user rebuilds the shipped body template from an empty page with the designer's own means:
// fields dropped on the page, the property panel, the format commands, the line tool dragged
// and sized with the mouse and the arrow keys. Saved and printed with the demo job, it gives
// the same pages as the shipped one.
class DesignerRebuildTest : public QObject {
    Q_OBJECT

private slots:
    void rebuildsClassicBodyTemplate();

private:
    void placeBox(frmCustomLayout &window, const BoxInfo &box, bool firstInBand);
    void drawLine(frmCustomLayout &window, const LineInfo &line, qint32 bandHeight);
    QByteArray bodyPages(const QString &templatePath);

    QTemporaryDir m_dir;
    JobFile m_jobModel;
    ScriptedPrompter m_prompter;
};

void DesignerRebuildTest::placeBox(frmCustomLayout &window, const BoxInfo &box, bool firstInBand) {
    DesignCanvas *canvas = window.canvas();
    NewBoxRequest request;
    request.type = box.notes ? NewBoxRequest::Type::Note : NewBoxRequest::Type::Field;
    request.caption = box.notes ? box.notesName : box.caption;
    // A band is as tall as its boxes: its lowest box goes in first, onto the empty band, and is
    // then set where it belongs; the others are dropped straight onto their places.
    const TemplateLayout &layout = window.document().layout();
    const QPoint origin = layout.containerOrigin(box.container, canvas->pageArea());
    QPoint target = origin + QPoint(box.left, box.top);
    if (firstInBand) {
        // An empty band is a drop strip at the top or bottom of the printable area.
        const PageArea area = canvas->pageArea();
        target.setY(box.container == Container::header()
                        ? area.marginTop
                        : area.printableBottom() - DesignCanvas::EmptyBandStrip);
    }
    const int slot = canvas->placeNewBox(request, canvas->toWidget(target));
    QVERIFY2(slot != TemplateLayout::NoFreeBoxSlot, qPrintable(box.caption));
    QCOMPARE(window.document().layout().box(slot).container, box.container);
    window.document().selectBoxes({slot});

    PropertyPanel *panel = window.propertyPanel();
    panel->leftBox()->setValue(box.left / 1440.0);
    panel->topBox()->setValue(box.top / 1440.0);
    panel->widthBox()->setValue(box.width / 1440.0);
    panel->heightBox()->setValue(box.height / 1440.0);
    panel->fontSizeBox()->setValue(box.fontSize);
    if (box.fontBold)
        window.dispatch("mnuFontBold");
    if (box.fontItalic)
        window.dispatch("mnuFontItalic");
    if (box.textAlign == TextAlign::Right)
        window.dispatch("mnuRightJustify");
    else if (box.textAlign == TextAlign::Center)
        window.dispatch("mnuCenterJustify");
    if (box.foreColor != 0) {
        m_prompter.queueColor(quint32(box.foreColor));
        window.dispatch("mnuForeColor");
    }
    if (box.displayLabel)
        window.dispatch("mnuDisplayLabel");
}

void DesignerRebuildTest::drawLine(frmCustomLayout &window, const LineInfo &line,
                                   qint32 bandHeight) {
    DesignCanvas *canvas = window.canvas();
    QTest::mouseClick(window.lineTool(), Qt::LeftButton);
    const int slot = window.document().selection().line;
    QVERIFY(slot != 0);
    m_prompter.queueColor(quint32(line.backColor));
    window.dispatch("mnuBorderColor");

    // Dragged into its band: a line below the band's boxes is dropped inside the band and
    // taken down with the arrow keys, which keep it there.
    const qint32 dropTop = std::min(line.top, bandHeight - 120);
    const QRect from = canvas->widgetRect(canvas->linePageRect(slot));
    const QPoint origin =
        window.document().layout().containerOrigin(line.container, canvas->pageArea());
    const QPoint to = canvas->toWidget(origin + QPoint(line.left, dropTop));
    const QPoint grab = from.topLeft() + QPoint(20, 0);
    QTest::mousePress(canvas, Qt::LeftButton, Qt::AltModifier, grab);
    QTest::mouseMove(canvas, grab + QPoint(3, 3));
    QTest::mouseMove(canvas, to + QPoint(20, 0));
    QTest::mouseRelease(canvas, Qt::LeftButton, Qt::AltModifier, to + QPoint(20, 0));
    QCOMPARE(window.document().layout().line(slot).container, line.container);
    for (qint32 top = dropTop; top < line.top; top += 60)
        QTest::keyClick(canvas, Qt::Key_Down);
    for (qint32 thickness = 15; thickness < line.height; thickness += 15)
        QTest::keyClick(canvas, Qt::Key_Down, Qt::ControlModifier | Qt::ShiftModifier);

    const QRect placed = canvas->widgetRect(canvas->linePageRect(slot));
    const QPoint handle = placed.bottomRight() + QPoint(1, 1); // the sizing handle
    const int stretch = int(
        std::lround((line.width - window.document().layout().line(slot).width) * canvas->scale()));
    QTest::mousePress(canvas, Qt::LeftButton, Qt::AltModifier, handle);
    QTest::mouseMove(canvas, handle + QPoint(stretch / 2, 0));
    QTest::mouseMove(canvas, handle + QPoint(stretch, 0));
    QTest::mouseRelease(canvas, Qt::LeftButton, Qt::AltModifier, handle + QPoint(stretch, 0));

    const LineInfo &made = window.document().layout().line(slot);
    QCOMPARE(QRect(made.left, made.top, made.width, made.height),
             QRect(line.left, line.top, line.width, line.height));
}

QByteArray DesignerRebuildTest::bodyPages(const QString &templatePath) {
    testsupport::DemoJob demo;
    if (!demo.loaded)
        return {};
    ReportJob report(demo.context, sectionOnlySelection(TemplateKind::Custom, templatePath),
                     demo.prompter, QDateTime(QDate(2025, 1, 15), QTime(10, 0)));
    PageEngine engine;
    report.run(engine);
    // Boxes are drawn in slot order, and a rebuilt template numbers its boxes as they were
    // placed: each page's drawing is compared as a set.
    QJsonObject dump = displayListJson(engine);
    QJsonArray pages = dump.value("pages").toArray();
    for (qsizetype i = 0; i < pages.size(); ++i) {
        QJsonObject page = pages.at(i).toObject();
        QList<QByteArray> items;
        for (const QJsonValue &item : page.value("items").toArray())
            items.append(QJsonDocument(item.toObject()).toJson(QJsonDocument::Compact));
        std::sort(items.begin(), items.end());
        page.insert("items", QString::fromUtf8(items.join('\n')));
        pages.replace(i, page);
    }
    dump.insert("pages", pages);
    return QJsonDocument(dump).toJson();
}

void DesignerRebuildTest::rebuildsClassicBodyTemplate() {
    const QString shippedPath =
        testsupport::sourcePath("resources/Print Templates/Classic Customer.cst");
    const TemplateLayout shipped = TemplateReader::load(shippedPath, m_prompter);

    DesignerEnvironment environment;
    testsupport::writeBytes(m_dir.filePath("job.ini"), "[Printer]\r\nFunction=1\r\n");
    m_jobModel = JobFile::load(m_dir.filePath("job.ini"));
    environment.job = &m_jobModel;
    environment.templateFolder = m_dir.path();
    NoDesignerActions actions;
    frmCustomLayout window(environment, m_prompter, actions);
    window.openOn("Untitled.cst");
    window.resize(1400, 1000);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    // At 75% a pixel is 20 twips, the step the shipped geometry is drawn in.
    auto *zoom = window.findChild<QComboBox *>("cmbZoom");
    zoom->setCurrentIndex(zoom->findData(75));
    emit zoom->activated(zoom->currentIndex());

    QList<BoxInfo> boxes;
    for (int slot = 1; slot <= TemplateLayout::BoxCapacity; ++slot) {
        if (shipped.box(slot).placed)
            boxes.append(shipped.box(slot));
    }
    const auto band = [](const BoxInfo &box) {
        return box.container == Container::header()     ? 0
               : box.container == Container::mainPort() ? 1
                                                        : 2;
    };
    // Band by band; in a band the lowest box first, a field before a note.
    std::stable_sort(boxes.begin(), boxes.end(), [&](const BoxInfo &a, const BoxInfo &b) {
        if (band(a) != band(b))
            return band(a) < band(b);
        if (a.top + a.height != b.top + b.height)
            return a.top + a.height > b.top + b.height;
        return !a.notes && b.notes;
    });
    for (int i = 0; i < boxes.size(); ++i) {
        const bool first = i == 0 || band(boxes[i - 1]) != band(boxes[i]);
        placeBox(window, boxes[i], first && band(boxes[i]) != 1);
        if (QTest::currentTestFailed())
            return;
    }
    for (int slot = 1; slot <= TemplateLayout::LineCapacity; ++slot) {
        const LineInfo &line = shipped.line(slot);
        if (!line.placed)
            continue;
        drawLine(window, line, window.document().layout().bandHeight(line.container));
        if (QTest::currentTestFailed())
            return;
    }
    // The option and note lines split their column as the shipped template does.
    for (const char *pair : {"Option Code / Description", "Option Note Code / Description"}) {
        for (int slot = 1; slot <= TemplateLayout::BoxCapacity; ++slot) {
            if (window.document().layout().box(slot).placed &&
                window.document().layout().box(slot).caption == QLatin1String(pair))
                window.document().selectBoxes({slot});
        }
        const bool options = QLatin1String(pair).startsWith(QLatin1String("Option Code"));
        window.propertyPanel()->codeWidthBox()->setValue(
            double(options ? shipped.other.realONNWidth : shipped.other.realANNWidth) / 1440.0);
    }

    const QString rebuilt = m_dir.filePath("Rebuilt.cst");
    m_prompter.queueFile(rebuilt);
    window.dispatch("mnuSaveAs");
    QVERIFY(window.document().isSaved());
    QVERIFY2(m_prompter.messages().isEmpty(), qPrintable(m_prompter.messages().join('\n')));

    const QByteArray expected = bodyPages(shippedPath);
    QVERIFY(!expected.isEmpty());
    QCOMPARE(bodyPages(rebuilt), expected);
}

TAVREL_TEST(DesignerRebuildTest)
#include "DesignerRebuildTest.moc"
