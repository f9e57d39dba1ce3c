#include "render/PdfNavigation.h"

#include "base/CheckedWrites.h"
#include "base/RuntimeError.h"
#include "render/PageAnchors.h"

#include <QFile>
#include <QFileInfo>
#include <QIODevice>
#include <QTemporaryFile>

// qpdf 11: the std::shared_ptr interface only, without its transition warning.
#define POINTERHOLDER_TRANSITION 4
#include <qpdf/Pipeline.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFObjectHandle.hh>
#include <qpdf/QPDFPageDocumentHelper.hh>
#include <qpdf/QPDFWriter.hh>

#include <algorithm>
#include <exception>
#include <map>
#include <vector>

namespace tavrel {

namespace {

// Writes all of data into device; a device that takes less is a full disk.
void writeAll(QIODevice &device, const char *data, qint64 length) {
    if (device.write(data, length) != length)
        throw RuntimeError(ErrorNumber::DiskFull,
                           QStringLiteral("Disk full (%1)").arg(device.errorString()));
}

// qpdf's output straight into the device of the atomic save.
class DevicePipeline : public Pipeline {
public:
    explicit DevicePipeline(QIODevice &device)
        : Pipeline("tavrel device", nullptr)
        , m_device(device) {}
    void write(unsigned char const *data, size_t length) override {
        writeAll(m_device, reinterpret_cast<const char *>(data), qint64(length));
    }
    void finish() override {}

private:
    QIODevice &m_device;
};

QPDFObjectHandle unicode(const QString &text) {
    return QPDFObjectHandle::newUnicodeString(text.toStdString());
}

// A destination at the anchor: its page, scrolled to put y at the top, the zoom left as it is.
QPDFObjectHandle destination(QPDFPageObjectHelper &page, double y) {
    QPDFObjectHandle box = page.getMediaBox();
    double top = 792;
    if (box.isArray() && box.getArrayNItems() == 4 && box.getArrayItem(3).isNumber())
        top = box.getArrayItem(3).getNumericValue();
    QPDFObjectHandle dest = QPDFObjectHandle::newArray();
    dest.appendItem(page.getObjectHandle());
    dest.appendItem(QPDFObjectHandle::newName("/XYZ"));
    dest.appendItem(QPDFObjectHandle::newNull());
    dest.appendItem(QPDFObjectHandle::newReal(top - y / 20, 2));
    dest.appendItem(QPDFObjectHandle::newNull());
    return dest;
}

// Links the items as the children of parent: /First, /Last, /Prev, /Next, /Parent and /Count
// (children shown open).
void linkChildren(QPDFObjectHandle parent, const std::vector<QPDFObjectHandle> &children,
                  int visibleDescendants) {
    if (children.empty())
        return;
    for (std::size_t i = 0; i < children.size(); ++i) {
        QPDFObjectHandle item = children[i];
        item.replaceKey("/Parent", parent);
        if (i > 0)
            item.replaceKey("/Prev", children[i - 1]);
        if (i + 1 < children.size())
            item.replaceKey("/Next", children[i + 1]);
    }
    parent.replaceKey("/First", children.front());
    parent.replaceKey("/Last", children.back());
    parent.replaceKey("/Count", QPDFObjectHandle::newInteger(visibleDescendants));
}

// The pages in order, of which only those the anchors point at need to be read. Qt writes the
// pages as one flat list under the root of the page tree, taken here as it is; getAllPages would
// read, check and repair the whole tree, half a second on a large report. Any other tree is left
// to it.
std::vector<QPDFPageObjectHelper> pagesOf(QPDF &pdf, const std::vector<PageAnchor> &anchors) {
    QPDFObjectHandle tree = pdf.getRoot().getKey("/Pages");
    QPDFObjectHandle kids = tree.getKey("/Kids");
    QPDFObjectHandle count = tree.getKey("/Count");
    if (!kids.isArray() || !count.isInteger() || count.getIntValue() != kids.getArrayNItems())
        return QPDFPageDocumentHelper(pdf).getAllPages();
    std::vector<QPDFPageObjectHelper> pages;
    for (QPDFObjectHandle kid : kids.aitems()) {
        if (!kid.isIndirect())
            return QPDFPageDocumentHelper(pdf).getAllPages();
        pages.emplace_back(kid);
    }
    for (const PageAnchor &anchor : anchors) {
        if (anchor.page >= 1 && anchor.page <= int(pages.size()) &&
            !pages[std::size_t(anchor.page - 1)].getObjectHandle().isDictionaryOfType("/Page"))
            return QPDFPageDocumentHelper(pdf).getAllPages();
    }
    return pages;
}

// The objects the navigation adds to the file, in the order made: an incremental update writes
// them after Qt's bytes. They are numbered from the trailer's /Size on, the numbers the file does
// not use: qpdf's makeIndirectObject would find the next free number itself, but by reading every
// object of the file, which costs a second on a large report.
struct NewObjects {
    QPDF &pdf;
    int next = 0; // 0: the trailer gave no /Size; qpdf finds the numbers
    std::vector<QPDFObjectHandle> made;

    QPDFObjectHandle make(QPDFObjectHandle object) {
        if (next <= 0) {
            made.push_back(pdf.makeIndirectObject(object));
            return made.back();
        }
        while (!pdf.getObject(next, 0).isNull())
            ++next; // not a number past the end after all
        const QPDFObjGen number(next++, 0);
        pdf.replaceObject(number, object);
        made.push_back(pdf.getObject(number));
        return made.back();
    }
};

void addOutline(NewObjects &objects, std::vector<QPDFPageObjectHelper> &pages,
                const std::vector<PageAnchor> &anchors) {
    struct Section {
        QPDFObjectHandle item;
        std::vector<QPDFObjectHandle> children;
    };
    std::vector<Section> sections;
    int visible = 0;
    for (const PageAnchor &anchor : anchors) {
        if (anchor.page < 1 || anchor.page > int(pages.size()))
            continue;
        QPDFObjectHandle item = objects.make(QPDFObjectHandle::newDictionary());
        item.replaceKey("/Title", unicode(anchor.title));
        item.replaceKey("/Dest", destination(pages[std::size_t(anchor.page - 1)], anchor.y));
        if (anchor.level > 1 && !sections.empty())
            sections.back().children.push_back(item);
        else
            sections.push_back({item, {}});
        ++visible;
    }
    if (sections.empty())
        return;
    QPDFObjectHandle root = objects.make(QPDFObjectHandle::newDictionary());
    root.replaceKey("/Type", QPDFObjectHandle::newName("/Outlines"));
    std::vector<QPDFObjectHandle> top;
    for (Section &section : sections) {
        linkChildren(section.item, section.children, int(section.children.size()));
        top.push_back(section.item);
    }
    linkChildren(root, top, visible);
    QPDFObjectHandle catalog = objects.pdf.getRoot();
    catalog.replaceKey("/Outlines", root);
    catalog.replaceKey("/PageMode", QPDFObjectHandle::newName("/UseOutlines"));
}

void addInformation(NewObjects &objects, const DocumentNavigation &navigation) {
    QPDFObjectHandle trailer = objects.pdf.getTrailer();
    QPDFObjectHandle info = trailer.getKey("/Info");
    if (!info.isDictionary()) {
        info = objects.make(QPDFObjectHandle::newDictionary());
        trailer.replaceKey("/Info", info);
    }
    if (!navigation.author.isEmpty())
        info.replaceKey("/Author", unicode(navigation.author));
    if (!navigation.subject.isEmpty())
        info.replaceKey("/Subject", unicode(navigation.subject));
}

// The offset of the last cross-reference section of the file, read from its final
// "startxref"; -1 when the end of the file does not say.
qint64 lastStartXref(QFile &file) {
    constexpr qint64 Tail = 1024;
    const qint64 size = file.size();
    if (!file.seek(std::max<qint64>(0, size - Tail)))
        return -1;
    const QByteArray tail = file.read(Tail);
    const qsizetype at = tail.lastIndexOf("startxref");
    if (at < 0)
        return -1;
    const QByteArray rest = tail.mid(at + 9).trimmed();
    qsizetype digits = 0;
    while (digits < rest.size() && rest[digits] >= '0' && rest[digits] <= '9')
        ++digits;
    bool ok = false;
    const qint64 offset = rest.left(digits).toLongLong(&ok);
    if (!ok || offset <= 0 || offset >= size || !rest.mid(digits).trimmed().startsWith("%%EOF"))
        return -1;
    return offset;
}

// The navigation as an incremental update: Qt's bytes copied as they are, then the new objects,
// the catalog and the document information in their new versions, a cross-reference section
// for just those and a trailer that points back at Qt's. Rewriting the whole file instead costs
// time and memory that grow with the report. Answers false, having written nothing, when Qt's
// file is not one to append to (a cross-reference stream, or an end qpdf had to repair); the
// caller then rewrites it.
bool appendUpdate(QIODevice &device, QFile &plain, QPDF &pdf, QPDFObjectHandle oldTrailer,
                  const std::vector<QPDFObjectHandle> &made) {
    if (pdf.anyWarnings() || oldTrailer.hasKey("/Type") || oldTrailer.hasKey("/XRefStm") ||
        oldTrailer.hasKey("/Encrypt") || !oldTrailer.getKey("/Size").isInteger())
        return false;
    const long long oldSize = oldTrailer.getKey("/Size").getIntValue();
    const qint64 previous = lastStartXref(plain);
    if (previous < 0)
        return false;
    QPDFObjectHandle catalog = pdf.getRoot();
    QPDFObjectHandle trailer = pdf.getTrailer().shallowCopy();
    QPDFObjectHandle info = trailer.getKey("/Info");
    std::map<int, QPDFObjectHandle> changed; // by object number: the xref lists them in order
    changed[catalog.getObjectID()] = catalog;
    if (info.isIndirect())
        changed[info.getObjectID()] = info;
    long long size = oldSize;
    for (QPDFObjectHandle object : made) {
        if (object.getObjectID() < oldSize)
            return false; // would overwrite an object of Qt's
        changed[object.getObjectID()] = object;
        size = std::max<long long>(size, object.getObjectID() + 1LL);
    }
    if (catalog.getObjectID() <= 0 || catalog.getObjectID() >= oldSize)
        return false;

    if (!plain.seek(0))
        return false;
    const qint64 plainSize = plain.size();
    constexpr qint64 Chunk = 1024 * 1024;
    QByteArray chunk(Chunk, Qt::Uninitialized);
    char last = '\n';
    for (qint64 copied = 0; copied < plainSize;) {
        const qint64 read = plain.read(chunk.data(), std::min(Chunk, plainSize - copied));
        if (read <= 0)
            throw RuntimeError(
                ErrorNumber::PathFileAccessError,
                QStringLiteral("Cannot read %1 (%2)").arg(plain.fileName(), plain.errorString()));
        writeAll(device, chunk.constData(), read);
        last = chunk[read - 1];
        copied += read;
    }

    QByteArray update;
    if (last != '\n' && last != '\r')
        update += '\n';
    std::vector<std::pair<int, qint64>> offsets; // object number, where it starts
    for (auto &[number, object] : changed) {
        offsets.emplace_back(number, plainSize + update.size());
        update += QByteArray::number(number) + ' ' + QByteArray::number(object.getGeneration()) +
                  " obj\n";
        update += QByteArray::fromStdString(object.unparseResolved());
        update += "\nendobj\n";
    }
    const qint64 xref = plainSize + update.size();
    update += "xref\n";
    for (std::size_t i = 0; i < offsets.size();) {
        // One subsection per run of consecutive numbers.
        std::size_t end = i + 1;
        while (end < offsets.size() && offsets[end].first == offsets[end - 1].first + 1)
            ++end;
        update += QByteArray::number(offsets[i].first) + ' ' + QByteArray::number(end - i) + '\n';
        for (; i < end; ++i) {
            const int generation = changed[offsets[i].first].getGeneration();
            update += QByteArray::number(offsets[i].second).rightJustified(10, '0') + ' ' +
                      QByteArray::number(generation).rightJustified(5, '0') + " n \n";
        }
    }
    trailer.replaceKey("/Size", QPDFObjectHandle::newInteger(size));
    trailer.replaceKey("/Prev", QPDFObjectHandle::newInteger(previous));
    update += "trailer\n" + QByteArray::fromStdString(trailer.unparse()) + "\nstartxref\n" +
              QByteArray::number(xref) + "\n%%EOF\n";
    writeAll(device, update.constData(), update.size());
    return true;
}

} // namespace

namespace PdfNavigation {

void write(QIODevice &device, const QString &path, const DocumentNavigation &navigation,
           const std::function<void(QIODevice &pdf)> &writePdf) {
    QTemporaryFile plain(QFileInfo(path).absoluteFilePath() + QStringLiteral(".XXXXXX"));
    // Unbuffered, so that a short write shows at once (QTemporaryFile hides open(flags)).
    if (!static_cast<QFile &>(plain).open(QIODevice::ReadWrite | QIODevice::Unbuffered))
        throw RuntimeError(ErrorNumber::PathFileAccessError,
                           QStringLiteral("Cannot write %1 (%2)").arg(path, plain.errorString()));
    // Qt's writer ignores failed writes: a full disk is reported as one, not as a damaged PDF
    // qpdf cannot read.
    CheckedWrites checked(plain);
    writePdf(checked);
    if (checked.shortWrite() || !plain.flush())
        throw RuntimeError(ErrorNumber::DiskFull,
                           QStringLiteral("Disk full (%1)").arg(plain.errorString()));
    try {
        QPDF pdf;
        pdf.setSuppressWarnings(true);
        // Lazy: reads the cross-reference table, and of the objects only those asked for.
        pdf.processFile(QFile::encodeName(plain.fileName()).constData());
        QPDFObjectHandle oldTrailer = pdf.getTrailer().shallowCopy();
        std::vector<QPDFPageObjectHelper> pages = pagesOf(pdf, navigation.anchors);
        QPDFObjectHandle size = oldTrailer.getKey("/Size");
        NewObjects objects{pdf, size.isInteger() ? int(size.getIntValue()) : 0, {}};
        addOutline(objects, pages, navigation.anchors);
        // The report numbers its pages 1 to the page count over all its sections.
        QPDFObjectHandle labels = QPDFObjectHandle::parse("<< /Nums [ 0 << /S /D >> ] >>");
        pdf.getRoot().replaceKey("/PageLabels", labels);
        addInformation(objects, navigation);
        if (appendUpdate(device, plain, pdf, oldTrailer, objects.made))
            return;
        DevicePipeline output(device);
        QPDFWriter writer(pdf);
        // Qt's streams are copied as they are: nothing to gain from decoding and recompressing
        // every page again, and the time would grow with the report.
        writer.setStreamDataMode(qpdf_s_preserve);
        writer.setOutputPipeline(&output);
        writer.write();
    } catch (const RuntimeError &) {
        throw;
    } catch (const std::exception &error) {
        throw RuntimeError(ErrorNumber::PathFileAccessError,
                           QStringLiteral("Cannot add the PDF outline (%1)")
                               .arg(QString::fromLocal8Bit(error.what())));
    }
}

} // namespace PdfNavigation

} // namespace tavrel
