#include "render/SpreadsheetExport.h"

#include "base/BasicFormat.h"
#include "base/RuntimeError.h"
#include "base/TextFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QTemporaryFile>

#include <xlsxwriter.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <memory>

namespace tavrel {

namespace {

// Column widths in characters: room for the longest text, within reason.
constexpr int MinimumColumnWidth = 6;
constexpr int MaximumColumnWidth = 50;

QString cellText(const QString &text) {
    // The specification joins lines with carriage returns; spreadsheets break lines at LF.
    QString result = text;
    result.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    result.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return result;
}

QByteArray utf8(const QString &text) {
    return text.toUtf8();
}

[[noreturn]] void cannotWrite(const QString &path, const QString &reason) {
    throw RuntimeError(ErrorNumber::PathFileAccessError,
                       QStringLiteral("Cannot write %1 (%2)").arg(path, reason));
}

// One workbook being written: its formats made once per (number format, bold).
class XlsxWriter {
public:
    XlsxWriter(const QString &tempPath, const QString &folder)
        : m_folder(utf8(folder)) {
        lxw_workbook_options options{};
        // Rows go to disk as they are finished, so a job of any size takes little memory; the
        // library's own temporary files go beside the target rather than to a small /tmp.
        options.constant_memory = LXW_TRUE;
        options.tmpdir = m_folder.data();
        options.use_zip64 = LXW_TRUE;
        m_book = workbook_new_opt(utf8(tempPath).constData(), &options);
    }
    ~XlsxWriter() {
        if (m_book)
            workbook_close(m_book); // only after a failure: the temporary file is discarded
    }
    XlsxWriter(const XlsxWriter &) = delete;
    XlsxWriter &operator=(const XlsxWriter &) = delete;

    bool isOpen() const { return m_book != nullptr; }

    void setProperties(const SpreadsheetProperties &properties) {
        const QByteArray title = utf8(properties.title);
        const QByteArray author = utf8(properties.author);
        const QByteArray subject = utf8(properties.subject);
        lxw_doc_properties doc{};
        doc.title = const_cast<char *>(title.constData());
        doc.author = const_cast<char *>(author.constData());
        doc.subject = const_cast<char *>(subject.constData());
        workbook_set_properties(m_book, &doc);
    }

    void addSheet(const SheetTable &table) {
        lxw_worksheet *sheet = workbook_add_worksheet(m_book, utf8(table.name).constData());
        if (!sheet)
            throw RuntimeError(ErrorNumber::PathFileAccessError,
                               QStringLiteral("Cannot add the sheet %1").arg(table.name));
        // The item above its folded lines carries the fold's button.
        worksheet_outline_settings(sheet, LXW_TRUE, LXW_FALSE, LXW_TRUE, LXW_FALSE);
        setColumnWidths(sheet, table);
        // Printed, the sheet reads like the body pages: across the page, captions on each.
        worksheet_set_landscape(sheet);
        worksheet_fit_to_pages(sheet, 1, 0);
        lxw_row_t rowNumber = 0;
        table.forEachRow([&](const SheetRow &row) {
            if (rowNumber == 0 && row.kind == SheetRowKind::Caption) {
                worksheet_freeze_panes(sheet, 1, 0);
                worksheet_repeat_rows(sheet, 0, 0);
            }
            // A row of several-line texts is made tall enough for them: not every reader
            // grows a row for its wrapped cells.
            qsizetype lines = 1;
            for (const SheetCell &cell : row.cells) {
                if (!cell.number)
                    lines = std::max(lines, cellText(cell.text).count(QLatin1Char('\n')) + 1);
            }
            if (row.outlineLevel() > 0 || lines > 1) {
                lxw_row_col_options options{};
                options.level = uint8_t(row.outlineLevel());
                worksheet_set_row_opt(sheet, rowNumber, LXW_DEF_ROW_HEIGHT * double(lines), nullptr,
                                      &options);
            }
            lxw_col_t column = 0;
            for (const SheetCell &cell : row.cells) {
                writeCell(sheet, rowNumber, column, cell, row.bold());
                ++column;
            }
            ++rowNumber;
        });
    }

    lxw_error close() {
        lxw_workbook *book = m_book;
        m_book = nullptr;
        return workbook_close(book);
    }

private:
    void writeCell(lxw_worksheet *sheet, lxw_row_t row, lxw_col_t column, const SheetCell &cell,
                   bool bold) {
        if (cell.number) {
            worksheet_write_number(sheet, row, column, *cell.number,
                                   format(SpreadsheetExport::numberFormat(cell), bold));
        } else if (!cell.text.isEmpty()) {
            // Always a string cell: the text is shown as it is, never read as a formula. A text
            // of several lines wraps, so its lines stand under one another.
            const QString text = cellText(cell.text);
            worksheet_write_string(sheet, row, column, utf8(text).constData(),
                                   format(QString(), bold, text.contains(QLatin1Char('\n'))));
        } else if (bold) {
            worksheet_write_blank(sheet, row, column, format(QString(), bold));
        }
    }

    lxw_format *format(const QString &numberFormat, bool bold, bool wrap = false) {
        if (numberFormat.isEmpty() && !bold && !wrap)
            return nullptr;
        const QString key = QString(bold ? QLatin1Char('b') : QLatin1Char('n')) +
                            (wrap ? QLatin1Char('w') : QLatin1Char('n')) + numberFormat;
        if (lxw_format *known = m_formats.value(key))
            return known;
        lxw_format *made = workbook_add_format(m_book);
        if (!numberFormat.isEmpty())
            format_set_num_format(made, utf8(numberFormat).constData());
        if (bold)
            format_set_bold(made);
        if (wrap)
            format_set_text_wrap(made);
        m_formats.insert(key, made);
        return made;
    }

    static void setColumnWidths(lxw_worksheet *sheet, const SheetTable &table) {
        // A pass of its own over the rows: the widths go before the rows in the file.
        std::vector<int> widths(std::size_t(std::max(table.columnCount, 1)), MinimumColumnWidth);
        table.forEachRow([&widths](const SheetRow &row) {
            for (std::size_t c = 0; c < row.cells.size() && c < widths.size(); ++c) {
                int longest = 0;
                for (const QStringView line : QStringView(row.cells[c].text).split(u'\r'))
                    longest = std::max(longest, int(line.size()));
                widths[c] = std::max(widths[c], std::min(longest + 2, MaximumColumnWidth));
            }
        });
        for (std::size_t c = 0; c < widths.size(); ++c)
            worksheet_set_column(sheet, lxw_col_t(c), lxw_col_t(c), widths[c], nullptr);
    }

    QByteArray m_folder;
    lxw_workbook *m_book = nullptr;
    QHash<QString, lxw_format *> m_formats;
};

// The decimal text of a CSV number: the body's pattern without currency sign, grouping, blanks
// and percent sign (the percentage as the figure the body prints).
QString csvNumber(const SheetCell &cell) {
    if (cell.pattern.isEmpty())
        return QString::number(*cell.number, 'g', 15);
    QString pattern = cell.pattern;
    double value = *cell.number;
    if (pattern.contains(QLatin1Char('%')))
        value *= 100;
    pattern.remove(QLatin1Char('$'));
    pattern.remove(QLatin1Char(','));
    pattern.remove(QLatin1Char(' '));
    pattern.remove(QLatin1Char('%'));
    return basicFormat(value, pattern);
}

bool startsFormula(const QString &text) {
    if (text.isEmpty())
        return false;
    const QChar first = text.front();
    return first == u'=' || first == u'+' || first == u'-' || first == u'@' || first == u'\t' ||
           first == u'\r';
}

QString csvField(const SheetCell &cell) {
    if (cell.number)
        return csvNumber(cell);
    QString text = cell.text;
    // Kept as text by the one mark spreadsheets agree on, whatever follows.
    const bool guard = startsFormula(text);
    if (guard)
        text.prepend(QLatin1Char('\''));
    text = cellText(text);
    if (!guard && !text.contains(QLatin1Char(',')) && !text.contains(QLatin1Char('"')) &&
        !text.contains(QLatin1Char('\n')))
        return text;
    text.replace(QLatin1Char('"'), QLatin1String("\"\""));
    return QLatin1Char('"') + text + QLatin1Char('"');
}

// The CSV text of a table, handed to out a row at a time.
void writeCsvRows(const SheetTable &table, const std::function<void(const QByteArray &)> &out) {
    // With the mark, Excel reads the file as UTF-8 instead of the system's code page, where
    // accented names would come out garbled; LibreOffice and CSV libraries skip it.
    out(QByteArrayLiteral("\xEF\xBB\xBF"));
    QString line;
    table.forEachRow([&](const SheetRow &row) {
        line.clear();
        const int count = std::max(table.columnCount, int(row.cells.size()));
        for (int c = 0; c < count; ++c) {
            if (c > 0)
                line += QLatin1Char(',');
            if (c < int(row.cells.size()))
                line += csvField(row.cells[std::size_t(c)]);
        }
        line += QLatin1String("\r\n");
        out(line.toUtf8());
    });
}

} // namespace

namespace SpreadsheetExport {

QString numberFormat(const SheetCell &cell) {
    if (cell.pattern.isEmpty())
        return QStringLiteral("General");
    if (cell.signed_)
        return QLatin1Char('+') + cell.pattern + QLatin1String(";-") + cell.pattern +
               QLatin1Char(';') + cell.pattern;
    return cell.pattern;
}

void writeXlsx(const QString &path, const std::vector<SheetTable> &sheets,
               const SpreadsheetProperties &properties) {
    const QFileInfo target(path);
    if (path.isEmpty())
        throw RuntimeError(ErrorNumber::BadFileName);
    if (target.isDir())
        cannotWrite(path, QStringLiteral("it is a folder"));
    if (!target.absoluteDir().exists())
        throw RuntimeError(ErrorNumber::PathNotFound);
    // Named as every atomic save of the program names its temporary file, so that one left by
    // a killed run is cleared by the next save.
    QTemporaryFile temporary(target.absoluteFilePath() + QStringLiteral(".XXXXXX"));
    if (!temporary.open())
        cannotWrite(path, temporary.errorString());
    temporary.close();
    {
        XlsxWriter writer(temporary.fileName(), target.absolutePath());
        if (!writer.isOpen())
            cannotWrite(path, QStringLiteral("the workbook cannot be created"));
        writer.setProperties(properties);
        for (const SheetTable &sheet : sheets)
            writer.addSheet(sheet);
        const lxw_error error = writer.close();
        if (error != LXW_NO_ERROR)
            cannotWrite(path, QString::fromUtf8(lxw_strerror(error)));
    }
    // A temporary file is private to its owner; the export is an ordinary document.
    temporary.setPermissions(target.exists() ? target.permissions()
                                             : QFile::ReadOwner | QFile::WriteOwner |
                                                   QFile::ReadGroup | QFile::ReadOther);
    // rename(2) replaces the target in one step; QFile::rename would refuse an existing file.
    if (std::rename(QFile::encodeName(temporary.fileName()).constData(),
                    QFile::encodeName(target.absoluteFilePath()).constData()) != 0)
        cannotWrite(path, QStringLiteral("the finished file cannot replace it"));
    temporary.setAutoRemove(false);
    TextFile::removeLeftovers(path);
}

QByteArray csvText(const SheetTable &table) {
    QByteArray bytes;
    writeCsvRows(table, [&bytes](const QByteArray &piece) { bytes += piece; });
    return bytes;
}

void writeCsv(const QString &path, const SheetTable &table) {
    // Row by row into the file, in blocks: the text of a big job's table is not made whole
    // first. A short write shows in the atomic save's own check.
    TextFile::writeAtomically(path, [&table](QIODevice &file) {
        QByteArray block;
        writeCsvRows(table, [&](const QByteArray &piece) {
            block += piece;
            if (block.size() >= 256 * 1024) {
                file.write(block);
                block.clear();
            }
        });
        file.write(block);
    });
}

} // namespace SpreadsheetExport

} // namespace tavrel
