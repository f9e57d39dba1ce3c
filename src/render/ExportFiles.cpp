#include "render/ExportFiles.h"

#include "render/HtmlPageSet.h"
#include "render/PageEngine.h"
#include "render/RtfWriter.h"

namespace tavrel {

namespace ExportFiles {

QStringList writeHtml(const PageEngine &engine) {
    HtmlPageSet pages(engine.ExportFile());
    pages.setTopBar(engine.ExportNavBar(0));
    const int count = int(engine.pages().size());
    for (int number = 1; number <= count; ++number) {
        pages.addPage();
        pages.append(engine.page(number).exportRaw);
        const QString bottomBar = engine.pageNavBar(number);
        if (!bottomBar.isEmpty())
            pages.setBottomBar(number, bottomBar);
    }
    return pages.write();
}

void writeRtf(const PageEngine &engine, const QString &fontName, int fontSize) {
    QString raw;
    for (const Page &page : engine.pages())
        raw += page.exportRaw;
    RtfWriter::writeDocument(engine.ExportFile(), raw, fontName, fontSize);
}

QString firstHtmlPage(const QString &exportFile, int pageCount) {
    HtmlPageSet pages(exportFile);
    for (int number = 0; number < pageCount; ++number)
        pages.addPage();
    return pages.filePath(1);
}

} // namespace ExportFiles

} // namespace tavrel
