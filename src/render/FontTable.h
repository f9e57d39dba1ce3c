#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QHash>
#include <QString>

#include <memory>
#include <vector>

namespace tavrel {

// The engine's font state: name and whole points as the templates give them.
struct FontSpec {
    QString name;
    int size = 8;
    bool bold = false;
    bool italic = false;
    bool underline = false;

    friend bool operator==(const FontSpec &, const FontSpec &) = default;
};

size_t qHash(const FontSpec &spec, size_t seed = 0);

// A font ready for measuring and drawing. Sizes are pixels of a 1440-dpi space, so one pixel is
// one twip; hinting is off, so the advances are the font's design advances on every device and
// what is measured is exactly what is drawn.
struct FontEntry {
    FontSpec spec;
    QFont font;
    QFontMetricsF metrics;
    double ascent = 0;
    double lineSpacing = 0;
    double narrowestAdvance = 0; // of the printable ASCII characters, blank included
};

// The fonts of one document, by index. Display-list items refer to fonts by index, so a page
// of a thousand text boxes holds one copy of each font.
class FontTable {
public:
    static constexpr int TwipsPerPoint = 20;

    int indexOf(const FontSpec &spec);
    const FontEntry &at(int index) const { return *m_entries[std::size_t(index)]; }
    int size() const { return int(m_entries.size()); }
    void clear();

    // The Qt font for a font spec: family resolved through fontconfig ("Arial" gives
    // Liberation Sans), pixel size in twips, no hinting.
    static QFont makeFont(const FontSpec &spec);

private:
    std::vector<std::unique_ptr<FontEntry>> m_entries;
    QHash<FontSpec, int> m_index;
};

} // namespace tavrel
