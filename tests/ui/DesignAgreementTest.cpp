#include "base/ScriptedPrompter.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"
#include "common/WindowFixtures.h"
#include "designer/DesignCanvas.h"
#include "designer/DesignerActions.h"
#include "designer/DesignerDocument.h"
#include "designer/frmCustomLayout.h"
#include "render/BodyRendererLayout.h"
#include "render/DisplayList.h"
#include "render/ImageOutput.h"
#include "render/PageEngine.h"
#include "shell/AppContext.h"
#include "shell/ReportJob.h"
#include "shell/ui/DesignerSession.h"
#include "templates/TemplateReader.h"

#include <QImage>
#include <QPainter>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

#include <algorithm>
#include <memory>

using namespace tavrel;

namespace {

// Text boxes print from their box's top-left corner, body cells and captions from the cell
// inset; the engine's coordinates are doubles, the designer's whole twips.
constexpr double Tolerance = 2;

QString describe(const QRectF &r) {
    return QStringLiteral("(%1, %2, %3 x %4)").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height());
}

} // namespace

// What the designer shows is what prints. Templates of each kind are built with the designer's
// own commands (the logo picture chosen before its box is placed, boxes dropped on the canvas,
// the line and rectangle tools moved and sized with the arrow keys), saved, and printed with
// the demo job; every element's printed rectangle is compared with its rectangle on the canvas.
// Elements of the body's totals section move with the totals: they are compared after the
// section's shift, taken from where the total box printed.
class DesignAgreementTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void agreement_data();
    void agreement();
    void logoOnClassicBodyTemplateKeepsCaptionsFree();
    void logoChosenBeforeItsBoxIsKept();
    void boxesPastThePrintableAreaAreFlaggedAndKeptIn();

private:
    struct Session : testsupport::DemoJob {
        std::unique_ptr<frmCustomLayout> window;
    };
    std::unique_ptr<Session> openDesigner(const QString &templatePath);
    int drop(frmCustomLayout &window, NewBoxRequest::Type type, const QString &caption,
             const QString &container, QPoint at);
    int addRectangleAround(frmCustomLayout &window, const QRect &pageRect);
    int addLine(frmCustomLayout &window, QPoint topLeftInBody, qint32 width);
    void keys(QWidget *target, Qt::Key key, int count, Qt::KeyboardModifiers modifiers = {});
    void print(Session &session, TemplateKind kind, const QString &path, PageEngine &engine);

    ScriptedPrompter m_prompter;
    NoDesignerActions m_actions;
};

void DesignAgreementTest::init() {
    m_prompter = ScriptedPrompter();
}

std::unique_ptr<DesignAgreementTest::Session>
DesignAgreementTest::openDesigner(const QString &templatePath) {
    auto session = std::make_unique<Session>();
    if (!session->loaded)
        return nullptr;
    DesignerEnvironment environment = DesignerSession::environmentOf(session->context);
    environment.templateFolder = session->dir.path();
    environment.documentName = QStringLiteral("Demo");
    environment.fontName = QStringLiteral("Arial");
    environment.fontSize = 9;
    session->window = std::make_unique<frmCustomLayout>(environment, m_prompter, m_actions);
    session->window->openOn(templatePath);
    session->window->resize(1200, 900);
    return session;
}

int DesignAgreementTest::drop(frmCustomLayout &window, NewBoxRequest::Type type,
                              const QString &caption, const QString &container, QPoint at) {
    DesignCanvas *canvas = window.canvas();
    NewBoxRequest request;
    request.type = type;
    request.caption = caption;
    const TemplateLayout &layout = window.document().layout();
    const PageArea area = canvas->pageArea();
    QPoint origin = layout.containerOrigin(container, area, canvas->pictures());
    // An empty footer is a drop strip above the bottom margin.
    if (container == Container::footer() &&
        layout.bandHeight(Container::footer(), canvas->pictures()) == 0)
        origin.setY(area.printableBottom() - DesignCanvas::EmptyBandStrip);
    return canvas->placeNewBox(request, canvas->toWidget(origin + at));
}

void DesignAgreementTest::keys(QWidget *target, Qt::Key key, int count,
                               Qt::KeyboardModifiers modifiers) {
    for (int i = 0; i < count; ++i)
        QTest::keyClick(target, key, modifiers);
}

int DesignAgreementTest::addRectangleAround(frmCustomLayout &window, const QRect &bodyRect) {
    QTest::mouseClick(window.rectangleTool(), Qt::LeftButton);
    const int slot = window.document().selection().rect;
    if (slot == 0)
        return 0;
    DesignCanvas *canvas = window.canvas();
    const PrintRect &rect = window.document().layout().rect(slot);
    // Moved and sized with the arrow keys, a grid step (60 twips) a press.
    keys(canvas, Qt::Key_Right, int((bodyRect.x() - rect.left) / 60));
    keys(canvas, Qt::Key_Down, int((bodyRect.y() - rect.top) / 60));
    const int wider = int((bodyRect.width() - rect.width) / 60);
    keys(canvas, wider > 0 ? Qt::Key_Right : Qt::Key_Left, std::abs(wider), Qt::ShiftModifier);
    const int taller = int((bodyRect.height() - rect.height) / 60);
    keys(canvas, taller > 0 ? Qt::Key_Down : Qt::Key_Up, std::abs(taller), Qt::ShiftModifier);
    return slot;
}

int DesignAgreementTest::addLine(frmCustomLayout &window, QPoint topLeft, qint32 width) {
    QTest::mouseClick(window.lineTool(), Qt::LeftButton);
    const int slot = window.document().selection().line;
    if (slot == 0)
        return 0;
    DesignCanvas *canvas = window.canvas();
    const LineInfo &line = window.document().layout().line(slot);
    keys(canvas, Qt::Key_Right, (topLeft.x() - line.left) / 60);
    keys(canvas, Qt::Key_Down, (topLeft.y() - line.top) / 60);
    const int longer = (width - line.width) / 60;
    keys(canvas, longer > 0 ? Qt::Key_Right : Qt::Key_Left, std::abs(longer), Qt::ShiftModifier);
    return slot;
}

void DesignAgreementTest::print(Session &session, TemplateKind kind, const QString &path,
                                PageEngine &engine) {
    ScriptedPrompter quiet;
    ReportJob report(session.context, sectionOnlySelection(kind, path), quiet,
                     QDateTime(QDate(2025, 1, 15), QTime(10, 0)));
    report.run(engine);
}

namespace {

std::vector<TextItem> textsOn(const PageEngine &engine, int page) {
    std::vector<TextItem> found;
    for (const PageItem &item : engine.page(page).items)
        if (const auto *text = std::get_if<TextItem>(&item))
            found.push_back(*text);
    return found;
}

// The text printed for a box: the first text item that starts at the box's top-left corner
// or at the cell inset from it.
std::optional<TextItem> textAt(const PageEngine &engine, int page, const QRectF &designed) {
    for (const TextItem &text : textsOn(engine, page)) {
        if (text.x >= designed.x() - Tolerance &&
            text.x <= designed.x() + BodyLayout::CellInset + Tolerance &&
            std::abs(text.y - designed.y()) <= Tolerance && !text.text.trimmed().isEmpty())
            return text;
    }
    return std::nullopt;
}

bool near(const QRectF &a, const QRectF &b) {
    return std::abs(a.left() - b.left()) <= Tolerance && std::abs(a.top() - b.top()) <= Tolerance &&
           std::abs(a.right() - b.right()) <= Tolerance &&
           std::abs(a.bottom() - b.bottom()) <= Tolerance;
}

} // namespace

void DesignAgreementTest::agreement_data() {
    QTest::addColumn<QString>("extension");
    QTest::addColumn<QString>("logoSize");
    QTest::addColumn<bool>("logoFirst"); // the picture chosen before the logo box is placed
    for (const char *extension : {".cst", ".cov", ".sum"}) {
        QTest::addRow("%s, logo chosen first, 100%%", extension)
            << QString(extension) << QString("mnuLogo100") << true;
        QTest::addRow("%s, logo chosen last, 50%%", extension)
            << QString(extension) << QString("mnuLogo50") << false;
    }
}

void DesignAgreementTest::agreement() {
    QFETCH(QString, extension);
    QFETCH(QString, logoSize);
    QFETCH(bool, logoFirst);
    auto session = openDesigner("Untitled" + extension);
    QVERIFY(session);
    frmCustomLayout &window = *session->window;
    DesignCanvas *canvas = window.canvas();
    const TemplateKind kind = window.document().kind();
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    const QString logo = testsupport::writePicture(session->dir.filePath("logo.png"), {200, 100},
                                                   QColor(200, 220, 255));
    if (logoFirst) {
        m_prompter.queueFile(logo);
        QVERIFY(window.dispatch("mnuEditLogo"));
    }
    QVERIFY(window.dispatch(logoSize));
    const int logoSlot =
        drop(window, NewBoxRequest::Type::Logo, "Logo", Container::header(), {0, 0});
    QVERIFY(logoSlot != TemplateLayout::NoFreeBoxSlot);
    if (!logoFirst) {
        // Selected by a click, then Tool > Choose Logo Picture...
        QTest::mouseClick(canvas, Qt::LeftButton, {},
                          canvas->widgetRect(canvas->boxPageRect(logoSlot)).center());
        m_prompter.queueFile(logo);
        QVERIFY(window.dispatch("mnuEditLogo"));
    }
    QVERIFY(drop(window, NewBoxRequest::Type::Field, "Report Date", Container::header(),
                 {6000, 120}) != TemplateLayout::NoFreeBoxSlot);
    QVERIFY(drop(window, NewBoxRequest::Type::Field, "Page n of  m", Container::footer(),
                 {6000, 0}) != TemplateLayout::NoFreeBoxSlot);
    QVERIFY(drop(window, NewBoxRequest::Type::Note, "Thank you", Container::footer(), {0, 0}) !=
            TemplateLayout::NoFreeBoxSlot);

    int framed = 0; // the box the rectangle goes round
    if (kind == TemplateKind::Custom) {
        qint32 left = 0;
        for (const char *caption :
             {"Part Number", "Part Description", "Qty", "List$", "EXT List$"}) {
            QVERIFY2(drop(window, NewBoxRequest::Type::Field, caption, Container::mainPort(),
                          {left, 0}) != TemplateLayout::NoFreeBoxSlot,
                     caption);
            left += caption == QLatin1String("Part Description") ? 3000 : 1500;
        }
        QVERIFY(addLine(window, {0, 360}, 7200));
        framed = drop(window, NewBoxRequest::Type::Field, "Total List$", Container::mainPort(),
                      {5400, 1440});
    } else {
        QVERIFY(drop(window, NewBoxRequest::Type::Note, "Prepared for you", Container::mainPort(),
                     {0, 600}) != TemplateLayout::NoFreeBoxSlot);
        QVERIFY(addLine(window, {0, 1200}, 6000));
        framed = drop(window, NewBoxRequest::Type::Note, "With our compliments",
                      Container::mainPort(), {1440, 2400});
    }
    QVERIFY(framed != TemplateLayout::NoFreeBoxSlot);
    {
        const BoxInfo &box = window.document().layout().box(framed);
        QVERIFY(addRectangleAround(window,
                                   QRect(box.left - 120, box.top - 120, 4320, box.height + 240)));
    }

    const QString path = session->dir.filePath("Agree" + extension);
    m_prompter.queueFile(path);
    QVERIFY(window.dispatch("mnuSaveAs"));
    QVERIFY(window.document().isSaved());
    QVERIFY2(m_prompter.messages().isEmpty(), qPrintable(m_prompter.messages().join('\n')));

    const TemplateLayout &layout = window.document().layout();
    PageEngine engine;
    print(*session, kind, path, engine);
    QVERIFY(engine.PageCount() >= 1);
    const QString shots = qEnvironmentVariable("TAVREL_AGREEMENT_SHOTS");
    if (!shots.isEmpty() && !logoFirst) {
        // The canvas and the printed first and last pages, to compare by eye.
        const QString name = shots + "/agreement" + QString(extension).replace('.', '-');
        canvas->resize(canvas->sizeHint());
        canvas->grab().save(name + "-canvas.png");
        renderPageImage(engine, 1, 96).save(name + "-page1.png");
        renderPageImage(engine, engine.PageCount(), 96).save(name + "-last-page.png");
    }

    // The totals move down with the rows; their elements keep their designed distances.
    double shift = 0;
    int totalsPage = 1;
    const QRect framedRect = canvas->boxPageRect(framed);
    if (kind == TemplateKind::Custom) {
        totalsPage = engine.PageCount();
        bool found = false;
        for (const TextItem &text : textsOn(engine, totalsPage)) {
            if (std::abs(text.x - framedRect.x()) <= Tolerance && text.text.startsWith('$')) {
                shift = text.y - framedRect.y();
                found = true;
            }
        }
        QVERIFY2(found, "the total box printed nowhere");
        QVERIFY2(totalsPage > 1, "the demo job's rows fill more than one page");
    }

    // Every element is checked; the test reports all that disagree.
    QStringList problems;
    const auto expect = [&problems](bool ok, const QString &problem) {
        if (!ok)
            problems.append(problem);
    };
    // Boxes.
    for (int slot = 1; slot <= TemplateLayout::BoxCapacity; ++slot) {
        const BoxInfo &box = layout.box(slot);
        if (!box.placed)
            continue;
        QRectF designed = canvas->boxPageRect(slot);
        const int page = box.total ? totalsPage : 1;
        if (box.total)
            designed.translate(0, shift);
        if (box.logo) {
            expect(box.logoFile == logo, "the logo box has no picture file");
            std::optional<PictureItem> picture;
            for (const PageItem &item : engine.page(1).items)
                if (const auto *p = std::get_if<PictureItem>(&item); p && p->path == logo)
                    picture = *p;
            expect(picture.has_value(), "the logo printed nowhere");
            if (!picture)
                continue;
            const QRectF printed(picture->x, picture->y, picture->width, picture->height);
            expect(near(printed, designed),
                   "logo printed at " + describe(printed) + ", designed at " + describe(designed));
            continue;
        }
        const std::optional<TextItem> text = textAt(engine, page, designed);
        expect(text.has_value(), QString("\"%1\" printed nowhere near its designed %2")
                                     .arg(box.caption, describe(designed)));
        // The text stays within the box's width.
        if (text)
            expect(text->x + text->width <= designed.right() + Tolerance,
                   QString("\"%1\" runs past its box").arg(box.caption));
    }

    // Lines: a bar as thick as its height, through its middle.
    for (int slot = 1; slot <= TemplateLayout::LineCapacity; ++slot) {
        if (!layout.line(slot).placed)
            continue;
        const QRectF designed = canvas->linePageRect(slot);
        bool found = false;
        for (const PageItem &item : engine.page(1).items) {
            if (const auto *line = std::get_if<LineItem>(&item)) {
                const QRectF printed(line->x1, line->y1 - line->penWidth / 2, line->x2 - line->x1,
                                     line->penWidth);
                found = found || near(printed, designed);
            }
        }
        expect(found, "no line printed at " + describe(designed));
    }

    // Rectangles: where they frame what they framed in the design.
    for (int slot = 1; slot <= TemplateLayout::RectCapacity; ++slot) {
        if (!layout.rect(slot).rectVisible)
            continue;
        const QRectF designed = QRectF(canvas->rectPageRect(slot)).translated(0, shift);
        QVERIFY(designed.contains(QRectF(framedRect).translated(0, shift)));
        std::vector<QRectF> printed;
        for (int page = 1; page <= engine.PageCount(); ++page) {
            for (const PageItem &item : engine.page(page).items) {
                if (const auto *r = std::get_if<RectItem>(&item);
                    r && r->penColor == ColorNumber(layout.rect(slot).rectColor & 0xFFFFFF) &&
                    r->brushStyle != BrushStyles::Solid)
                    printed.push_back(QRectF(QPointF(r->left, r->top + page * 1e6),
                                             QPointF(r->right, r->bottom + page * 1e6)));
            }
        }
        // Once, on the page of what it frames.
        expect(printed.size() == 1, QString("the rectangle printed %1 times").arg(printed.size()));
        const QRectF expected = designed.translated(0, totalsPage * 1e6);
        const bool placed = std::any_of(printed.begin(), printed.end(),
                                        [&](const QRectF &r) { return near(r, expected); });
        expect(placed, "no rectangle printed at " + describe(designed) + " on page " +
                           QString::number(totalsPage));
    }
    QVERIFY2(problems.isEmpty(), qPrintable(problems.join("; ")));
}

void DesignAgreementTest::logoOnClassicBodyTemplateKeepsCaptionsFree() {
    QTemporaryDir folder;
    const QString copy = folder.filePath("Classic Customer.cst");
    QVERIFY(QFile::copy(testsupport::sourcePath("resources/Print Templates/Classic Customer.cst"),
                        copy));
    auto session = openDesigner(copy);
    QVERIFY(session);
    frmCustomLayout &window = *session->window;
    DesignCanvas *canvas = window.canvas();
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const qint32 headerBefore = canvas->bandHeight(Container::header());

    // A logo box dropped on the header's last grid row, below the file title, then its
    // 200 x 100 picture chosen.
    QVERIFY2(drop(window, NewBoxRequest::Type::Logo, "Logo", Container::header(),
                  {0, headerBefore - 60}) != TemplateLayout::NoFreeBoxSlot,
             qPrintable(window.statusText()));
    int slot = 0;
    for (int s = 1; s <= TemplateLayout::BoxCapacity; ++s)
        if (window.document().layout().box(s).placed && window.document().layout().box(s).logo)
            slot = s;
    QVERIFY(slot != 0);
    const QString logo = testsupport::writePicture(session->dir.filePath("logo.png"), {200, 100},
                                                   QColor(255, 220, 200));
    // Selected through a click on the canvas, then Tool > Choose Logo Picture...
    QTest::mouseClick(canvas, Qt::LeftButton, {},
                      canvas->widgetRect(canvas->boxPageRect(slot)).center());
    QCOMPARE(window.document().selection().boxes, QList<int>{slot});
    m_prompter.queueFile(logo);
    QVERIFY(window.dispatch("mnuEditLogo"));
    // 200 x 100 pixels at 96 dpi, on the canvas and in the box's own size.
    QCOMPARE(canvas->boxPageRect(slot).size(), QSize(3000, 1500));
    QCOMPARE(QSize(window.document().layout().box(slot).width,
                   window.document().layout().box(slot).height),
             QSize(3000, 1500));
    QVERIFY(window.dispatch("mnuSave"));

    PageEngine engine;
    print(*session, TemplateKind::Custom, copy, engine);
    std::optional<PictureItem> picture;
    for (const PageItem &item : engine.page(1).items)
        if (const auto *p = std::get_if<PictureItem>(&item); p && p->path == logo)
            picture = *p;
    QVERIFY(picture);
    const QRect designed = canvas->boxPageRect(slot);
    QCOMPARE(QRectF(picture->x, picture->y, picture->width, picture->height), QRectF(designed));
    // The caption row prints below the logo, where the canvas shows it.
    for (int s = 1; s <= TemplateLayout::BoxCapacity; ++s) {
        const BoxInfo &box = window.document().layout().box(s);
        if (!box.placed || !box.body || box.container != Container::mainPort())
            continue;
        const QRect column = canvas->boxPageRect(s);
        QVERIFY(column.top() >= designed.bottom());
        for (const TextItem &text : textsOn(engine, 1)) {
            if (std::abs(text.x - (column.x() + BodyLayout::CellInset)) <= Tolerance &&
                std::abs(text.y - column.y()) <= Tolerance)
                QVERIFY2(text.y >= picture->y + picture->height,
                         qPrintable(text.text + " is under the logo"));
        }
    }
}

void DesignAgreementTest::logoChosenBeforeItsBoxIsKept() {
    auto session = openDesigner("Untitled.cov");
    QVERIFY(session);
    frmCustomLayout &window = *session->window;
    const QString logo = testsupport::writePicture(session->dir.filePath("early.png"), {120, 60},
                                                   QColor(220, 255, 220));
    m_prompter.queueFile(logo);
    QVERIFY(window.dispatch("mnuEditLogo"));
    const int slot = drop(window, NewBoxRequest::Type::Logo, "Logo", Container::header(), {0, 0});
    QVERIFY(slot != TemplateLayout::NoFreeBoxSlot);
    QCOMPARE(window.document().layout().box(slot).logoFile, logo);
    // The canvas shows the picture at its printed size.
    QCOMPARE(window.canvas()->boxPageRect(slot).size(), QSize(1800, 900));
    const QString path = session->dir.filePath("Early.cov");
    m_prompter.queueFile(path);
    QVERIFY(window.dispatch("mnuSaveAs"));
    ScriptedPrompter quiet;
    const TemplateLayout saved = TemplateReader::load(path, quiet);
    bool kept = false;
    for (int s = 1; s <= TemplateLayout::BoxCapacity; ++s)
        kept = kept || (saved.box(s).placed && saved.box(s).logo && saved.box(s).logoFile == logo);
    QVERIFY(kept);
}

void DesignAgreementTest::boxesPastThePrintableAreaAreFlaggedAndKeptIn() {
    auto session = openDesigner("Untitled.cst");
    QVERIFY(session);
    frmCustomLayout &window = *session->window;
    DesignCanvas *canvas = window.canvas();
    const PageArea area = canvas->pageArea();
    // Below the drop strip of the empty header.
    const int wide = drop(window, NewBoxRequest::Type::Field, "Part Description",
                          Container::mainPort(), {2880, 600});
    const int narrow =
        drop(window, NewBoxRequest::Type::Field, "Qty", Container::mainPort(), {0, 1200});
    QVERIFY2(wide != TemplateLayout::NoFreeBoxSlot, qPrintable(window.statusText()));
    QVERIFY2(narrow != TemplateLayout::NoFreeBoxSlot, qPrintable(window.statusText()));
    // The reference box reaches the right edge of the printable area.
    {
        TemplateLayout layout = window.document().layout();
        layout.box(wide).width = area.printableWidth() - 2880;
        window.document().change(layout, "test");
    }
    QVERIFY(canvas->outOfBounds().isEmpty());
    // Rights, then Same Width: the second box would end past the edge.
    window.document().selectBoxes({wide, narrow});
    QVERIFY(window.dispatch("mnuRights"));
    QVERIFY(window.dispatch("mnuWidth"));
    const BoxInfo &aligned = window.document().layout().box(narrow);
    QVERIFY2(aligned.left + aligned.width <= area.printableWidth(),
             qPrintable(QString("ends at %1 of %2")
                            .arg(aligned.left + aligned.width)
                            .arg(area.printableWidth())));
    QVERIFY(canvas->outOfBounds().isEmpty());
    // Duplicating a box at the right edge keeps the copy inside.
    window.document().selectBoxes({wide});
    QVERIFY(window.dispatch("mnuDuplicate"));
    const QList<int> copies = window.document().selection().boxes;
    QCOMPARE(copies.size(), 1);
    QVERIFY(copies.first() != wide);
    const QRect copy = canvas->boxPageRect(copies.first());
    QVERIFY(copy.x() + copy.width() <= area.marginLeft + area.printableWidth());
    // The arrow keys refuse to push a box out.
    window.document().selectBoxes({copies.first()});
    const qint32 before = window.document().layout().box(copies.first()).left;
    QTest::keyClick(canvas, Qt::Key_Right);
    QCOMPARE(window.document().layout().box(copies.first()).left, before);

    // A box that prints past the edge (a template made elsewhere) is flagged on the canvas and
    // in the status line.
    {
        TemplateLayout layout = window.document().layout();
        layout.box(narrow).left = area.printableWidth() - 600;
        layout.box(narrow).width = 1440;
        window.document().change(layout, "test");
    }
    QCOMPARE(canvas->outOfBounds(), QList<int>{narrow});
    QVERIFY2(window.statusText().contains("outside the printable area"),
             qPrintable(window.statusText()));
    QVERIFY(window.statusText().contains("\"Qty\""));
    canvas->resize(canvas->sizeHint());
    const QImage shot = canvas->grab().toImage();
    if (!qEnvironmentVariableIsEmpty("TAVREL_AGREEMENT_SHOTS"))
        shot.save(qEnvironmentVariable("TAVREL_AGREEMENT_SHOTS") + "/flagged.png");
    const QRect flagged = canvas->widgetRect(canvas->boxPageRect(narrow));
    int red = 0;
    const QRect visible = flagged.intersected(shot.rect());
    for (int y = visible.top(); y <= visible.bottom(); ++y) {
        for (int x = visible.left(); x <= visible.right(); ++x) {
            const QColor pixel = shot.pixelColor(x, y);
            red += pixel.red() > 180 && pixel.green() < 120 && pixel.blue() < 120 ? 1 : 0;
        }
    }
    QVERIFY2(red > visible.width(), "the box past the edge has no red outline");
}

TAVREL_TEST(DesignAgreementTest)
#include "DesignAgreementTest.moc"
