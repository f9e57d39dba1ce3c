#include "render/PdfNavigation.h"

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

#include <exception>
#include <vector>

namespace tavrel {

namespace {

// qpdf's output straight into the device of the atomic save.
class DevicePipeline : public Pipeline {
public:
    explicit DevicePipeline(QIODevice &device)
        : Pipeline("tavrel device", nullptr)
        , m_device(device) {}
    void write(unsigned char const *data, size_t length) override {
        m_device.write(reinterpret_cast<const char *>(data), qint64(length));
    }
    void finish() override {}

private:
    QIODevice &m_device;
};

// Qt's writer ignores failed writes; this device remembers them, so that a full disk is reported
// as one instead of as a damaged PDF qpdf cannot read.
class CheckedFile : public QIODevice {
public:
    explicit CheckedFile(QFile &file)
        : m_file(file) {
        QIODevice::open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    }
    bool shortWrite() const { return m_short; }
    bool isSequential() const override { return true; }

protected:
    qint64 readData(char *, qint64) override { return -1; }
    qint64 writeData(const char *data, qint64 length) override {
        if (m_short || m_file.write(data, length) != length) {
            m_short = true;
            return -1;
        }
        return length;
    }

private:
    QFile &m_file;
    bool m_short = false;
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

void addOutline(QPDF &pdf, std::vector<QPDFPageObjectHelper> &pages,
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
        QPDFObjectHandle item = pdf.makeIndirectObject(QPDFObjectHandle::newDictionary());
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
    QPDFObjectHandle root = pdf.makeIndirectObject(QPDFObjectHandle::newDictionary());
    root.replaceKey("/Type", QPDFObjectHandle::newName("/Outlines"));
    std::vector<QPDFObjectHandle> top;
    for (Section &section : sections) {
        linkChildren(section.item, section.children, int(section.children.size()));
        top.push_back(section.item);
    }
    linkChildren(root, top, visible);
    QPDFObjectHandle catalog = pdf.getRoot();
    catalog.replaceKey("/Outlines", root);
    catalog.replaceKey("/PageMode", QPDFObjectHandle::newName("/UseOutlines"));
}

void addInformation(QPDF &pdf, const DocumentNavigation &navigation) {
    QPDFObjectHandle trailer = pdf.getTrailer();
    QPDFObjectHandle info = trailer.getKey("/Info");
    if (!info.isDictionary()) {
        info = pdf.makeIndirectObject(QPDFObjectHandle::newDictionary());
        trailer.replaceKey("/Info", info);
    }
    if (!navigation.author.isEmpty())
        info.replaceKey("/Author", unicode(navigation.author));
    if (!navigation.subject.isEmpty())
        info.replaceKey("/Subject", unicode(navigation.subject));
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
    CheckedFile checked(plain);
    writePdf(checked);
    if (checked.shortWrite() || !plain.flush())
        throw RuntimeError(ErrorNumber::DiskFull,
                           QStringLiteral("Disk full (%1)").arg(plain.errorString()));
    try {
        QPDF pdf;
        pdf.setSuppressWarnings(true);
        pdf.processFile(QFile::encodeName(plain.fileName()).constData());
        std::vector<QPDFPageObjectHelper> pages = QPDFPageDocumentHelper(pdf).getAllPages();
        addOutline(pdf, pages, navigation.anchors);
        // The report numbers its pages 1 to the page count over all its sections.
        QPDFObjectHandle labels = QPDFObjectHandle::parse("<< /Nums [ 0 << /S /D >> ] >>");
        pdf.getRoot().replaceKey("/PageLabels", labels);
        addInformation(pdf, navigation);
        DevicePipeline output(device);
        QPDFWriter writer(pdf);
        // Qt's streams are copied as they are: nothing to gain from decoding and recompressing
        // every page again, and the time would grow with the report.
        writer.setStreamDataMode(qpdf_s_preserve);
        writer.setOutputPipeline(&output);
        writer.write();
    } catch (const std::exception &error) {
        throw RuntimeError(ErrorNumber::PathFileAccessError,
                           QStringLiteral("Cannot add the PDF outline (%1)")
                               .arg(QString::fromLocal8Bit(error.what())));
    }
}

} // namespace PdfNavigation

} // namespace tavrel
