#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <QStringView>

namespace tavrel {

// The per-page HTML files of one export. The raw fragments the output helpers append while a
// page is drawn (and while it is overlaid later) are collected per page in drawing order; at the
// end every page becomes one file: a small page frame around the top navigation bar, the page's
// fragments and, where one was set for the page, the bottom navigation bar.
//
// Naming follows the export file "folder/base.htm": one page is written as "base.htm"; more
// pages as "base1.htm", "base2.htm", ... and a "base.htm" left from an earlier export is deleted.
class HtmlPageSet {
public:
    explicit HtmlPageSet(QString exportFile);

    const QString &exportFile() const { return m_exportFile; }

    // The navigation bar template copied into the top of every page (ExportNavBar 0).
    void setTopBar(const QString &barTemplate) { m_topBar = barTemplate; }
    // The bar template placed after the fragments of one page (ExportNavBar 1, set while that
    // page's fields are overlaid). Pages are numbered from 1; throws RuntimeError 9 when the
    // page does not exist.
    void setBottomBar(int page, const QString &barTemplate);

    // Style rules of our own for one page's frame (written into its head), such as the sizes of
    // its horizontal rules; the fragments themselves are left as they are. Throws RuntimeError 9
    // when the page does not exist.
    void setPageStyle(int page, const QString &rules);

    // Starts the next page and returns its number; later fragments go there.
    int addPage();
    // Appends to the last page, starting page 1 when there is none yet.
    void append(const QString &fragment);
    // Appends to an earlier page (an overlay); throws RuntimeError 9 for a page that does not
    // exist.
    void append(int page, const QString &fragment);

    int pageCount() const { return int(m_pages.size()); }

    // The file a page is written to, by the naming rule above.
    QString filePath(int page) const;
    // The complete text of a page file, before encoding.
    QString pageText(int page) const;

    // Writes every page (Windows-1252) and deletes the unnumbered file when there are several
    // pages. Returns the written paths in page order; nothing is written for a document without
    // pages. Throws RuntimeError as TextFile::writeAtomically does, and 75 when the set cannot
    // be swapped in.
    //
    // The set is replaced as a whole: the pages are first written into a fresh folder beside
    // the target, so a failure (a full disk) leaves the old set as it was; then, holding the
    // folder's lock file for this base name, they are renamed over the old pages and the old
    // set's other pages (numbered files beyond the new count, the unnumbered file) are deleted.
    // Two exports into one folder therefore never interleave their pages: the last to take the
    // lock leaves its whole set.
    QStringList write() const;

    // The lock file that guards the swap of the page set of exportFile ("base.htm").
    static QString lockFilePath(const QString &exportFile);

    // Fills a navigation bar template the way the engine's formatting does: each "%s" takes the
    // next of links, each "%d" the next of numbers (nothing when they run out), "%%" becomes "%";
    // everything else is copied.
    static QString fillTemplate(QStringView barTemplate, const QStringList &links,
                                const QList<int> &numbers);

    // Windows-1252 bytes for the page text; characters the code page lacks become "&#NNNN;".
    static QByteArray encode(QStringView text);

private:
    struct Page {
        QString fragments;
        QString bottomBar;
        QString style;
    };

    Page &page(int number);
    const Page &page(int number) const;
    QString linkAttribute(int page) const;
    QString filledBar(const QString &barTemplate, int page) const;

    QString m_exportFile;
    QString m_base; // the export file without its ".htm"
    QString m_topBar;
    QList<Page> m_pages;
};

} // namespace tavrel
