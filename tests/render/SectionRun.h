#pragma once

#include "base/ScriptedPrompter.h"
#include "render/OutputHelpers.h"
#include "render/PageEngine.h"
#include "render/PrintJob.h"
#include "render/ReportData.h"
#include "render/ReportSections.h"
#include "render/SummaryRendererBase.h"
#include "templates/TemplateReader.h"
#include "templates/TemplateWriter.h"

#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <optional>

// A cover or summary template built box by box, the inputs its renderer reads, and an engine
// to lay it out on, with lookups of the texts it drew.
template <class Renderer> struct SectionRun {
    static constexpr double Margin = 720;

    QTemporaryDir dir;
    QString extension; // ".cov" or ".sum"
    tavrel::TemplateLayout layout;
    tavrel::SpecData spec;
    tavrel::OrderData order;
    tavrel::ReportData data;
    tavrel::ScriptedPrompter prompter;
    tavrel::PageEngine engine;
    tavrel::JobState job;
    tavrel::PrintSettings settings;
    std::unique_ptr<Renderer> renderer;

    explicit SectionRun(QString templateExtension)
        : extension(std::move(templateExtension)) {
        data.spec = &spec;
        data.order = &order;
        settings.marginLeft = settings.marginRight = Margin;
        settings.marginTop = settings.marginBottom = Margin;
    }

    tavrel::BoxInfo &box(const QString &caption, int left, int top, int width, int height,
                         qint16 level = 1,
                         const QString &container = tavrel::Container::mainPort()) {
        const int slot = layout.freeBoxSlot();
        tavrel::BoxInfo &box = layout.box(slot);
        box.index = qint16(slot);
        box.placed = box.visible = true;
        box.caption = caption;
        box.container = container;
        box.header = container == tavrel::Container::header();
        box.footer = container == tavrel::Container::footer();
        box.fontName = QStringLiteral("Arial");
        box.fontSize = 10;
        box.left = left;
        box.top = top;
        box.width = width;
        box.height = height;
        box.level = level;
        return box;
    }

    // Writes the template and prints it as the only section of a job, reading the file back
    // and reporting what the renderer met as the report job does.
    void render(bool pageFields = true) {
        const QString path = dir.filePath(QStringLiteral("test") + extension);
        tavrel::TemplateWriter::write(path, layout, QString());
        renderer = std::make_unique<Renderer>(tavrel::TemplateReader::load(path, prompter), data);
        tavrel::OutputHelpers out(engine, job);
        tavrel::printSectionOnly(out, job, settings, *renderer, pageFields);
        tavrel::reportDiagnostics(prompter, renderer->diagnostics());
    }

    std::vector<tavrel::TextItem> texts(int page = 1) const {
        std::vector<tavrel::TextItem> items;
        for (const tavrel::PageItem &item : engine.page(page).items)
            if (const auto *text = std::get_if<tavrel::TextItem>(&item))
                items.push_back(*text);
        return items;
    }

    // The first text item on the page that shows exactly text.
    std::optional<tavrel::TextItem> find(const QString &text, int page = 1) const {
        for (const tavrel::TextItem &item : texts(page))
            if (item.text == text)
                return item;
        return std::nullopt;
    }
    // The item showing text, or one far off the page when there is none, so that a missing
    // text fails the comparison instead of the test.
    tavrel::TextItem at(const QString &text, int page = 1) const {
        tavrel::TextItem missing;
        missing.x = missing.y = -1e9;
        return find(text, page).value_or(missing);
    }

    // Measures in a box's font (Arial 10 unless told otherwise).
    static double width(const QString &text, int size = 10) {
        tavrel::PageEngine measuring;
        measuring.setFontName(QStringLiteral("Arial"));
        measuring.setFontSize(size);
        return measuring.TextWidth(text);
    }
    static double lineHeight(int size = 10) {
        tavrel::PageEngine measuring;
        measuring.setFontName(QStringLiteral("Arial"));
        measuring.setFontSize(size);
        measuring.CalcParagraph(QStringLiteral("W"), 0);
        return measuring.TextHeight();
    }
};

// Compares a rendered page with its reviewed picture; with TAVREL_UPDATE_GOLDEN=1 the picture
// is written instead. A page that fails is saved in the working folder for a look.
inline void compareWithGoldenImage(const QImage &image, const QString &golden) {
    if (qEnvironmentVariableIntValue("TAVREL_UPDATE_GOLDEN") == 1) {
        QDir().mkpath(QFileInfo(golden).absolutePath());
        QVERIFY(image.save(golden));
        return;
    }
    const QImage expected(golden);
    QVERIFY2(!expected.isNull(), qPrintable(golden));
    const QImage x = image.convertToFormat(QImage::Format_RGB32);
    const QImage y = expected.convertToFormat(QImage::Format_RGB32);
    // Font rasterising may move a few edge pixels between machines; layout changes move many.
    int differing = x.size() == y.size() ? 0 : x.width() * x.height();
    for (int row = 0; x.size() == y.size() && row < x.height(); ++row) {
        const auto *p = reinterpret_cast<const QRgb *>(x.constScanLine(row));
        const auto *q = reinterpret_cast<const QRgb *>(y.constScanLine(row));
        for (int col = 0; col < x.width(); ++col) {
            if (qAbs(qGray(p[col]) - qGray(q[col])) > 64)
                ++differing;
        }
    }
    if (differing > 40)
        image.save(QDir::current().filePath(QFileInfo(golden).fileName()));
    QVERIFY2(differing <= 40, qPrintable(QStringLiteral("%1 pixels differ").arg(differing)));
}
