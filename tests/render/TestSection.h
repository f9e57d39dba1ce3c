#pragma once

#include "render/OutputHelpers.h"
#include "render/PageEngine.h"
#include "render/SectionRenderer.h"

#include <QStringList>

// A section renderer for the print-job tests: draws a given number of pages, each with one
// line of text, and puts its page field where it is told.
class TestSection : public tavrel::SectionRenderer {
public:
    TestSection(QString name, int pages, tavrel::PageFieldFlags fields, QStringList *log)
        : m_name(std::move(name))
        , m_pages(pages)
        , m_fields(fields)
        , m_log(log) {}

    void render(tavrel::OutputHelpers &out) override {
        m_log->append(m_name + QStringLiteral(" render"));
        for (int page = 1; page <= m_pages; ++page) {
            if (page > 1)
                out.engine().NewPage();
            out.PrintTextBox(1440, 1440, 6000, QStringLiteral("%1 page %2").arg(m_name).arg(page));
        }
    }
    int pageCount() const override { return m_pages; }
    tavrel::PageFieldFlags pageFields() const override { return m_fields; }
    void drawPageFieldBand(tavrel::OutputHelpers &out, Band band, int pageNumber,
                           int pageTotal) override {
        m_log->append(QStringLiteral("%1 %2 %3")
                          .arg(m_name, band == Band::Header ? QStringLiteral("header")
                                                            : QStringLiteral("footer"))
                          .arg(pageNumber));
        out.PrintAlignedTextBox(1, tavrel::pageOfText(pageNumber, pageTotal), 720,
                                band == Band::Header ? 360 : 15000, 10800);
    }

private:
    QString m_name;
    int m_pages;
    tavrel::PageFieldFlags m_fields;
    QStringList *m_log;
};

// A list of texts from plain literals (the build forbids implicit const char * conversions).
inline QStringList strings(std::initializer_list<const char *> items) {
    QStringList list;
    for (const char *item : items)
        list << QString::fromUtf8(item);
    return list;
}
