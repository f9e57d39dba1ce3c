#include "templates/TemplateReader.h"

#include "base/IniFile.h"
#include "base/Prompter.h"
#include "base/TextFile.h"
#include "base/Windows1252.h"
#include "templates/TemplateKeys.h"

#include <QFileInfo>

namespace tavrel {

namespace {

const QString &boxSection() {
    static const QString name = QStringLiteral("Box Info");
    return name;
}

template <typename Element>
void readKeys(const IniFile &ini, const QString &section, const QString &stem, Element &element,
              const QList<TemplateKey<Element>> &keys) {
    for (const TemplateKey<Element> &key : keys)
        TemplateKeys::parseValue(element, key.member, ini.value(section, stem + key.suffix));
}

void readOtherInfo(const IniFile &ini, OtherInfo &other) {
    const QString section = QStringLiteral("Other Info");
    other.logoSize = ini.value(section, QStringLiteral("LogoSize"));
    other.imageSize = ini.value(section, QStringLiteral("ImageSize"));
    other.landscape = ParseIniBool(ini.value(section, QStringLiteral("Landscape")));
    const auto single = [&](const char *key, float &target) {
        if (const auto value = TemplateKeys::parseSingle(ini.value(section, QLatin1String(key))))
            target = *value;
    };
    single("RealONNWidth", other.realONNWidth);
    single("RealODWidth", other.realODWidth);
    single("RealANNWidth", other.realANNWidth);
    single("RealADWidth", other.realADWidth);
}

void ranOutOfIndex(Prompter &prompter) {
    prompter.message(QStringLiteral("Ran out of index"), QString(), MessageIcon::Critical);
}

bool readBoxes(const IniFile &ini, TemplateLayout &layout, Prompter &prompter) {
    for (int n = 1; n <= TemplateLayout::BoxCapacity; ++n) {
        const QString stem = QStringLiteral("Box_%1").arg(n);
        if (!ParseIniBool(ini.value(boxSection(), stem + QStringLiteral("_Placed"))))
            continue;
        const int slot = layout.freeBoxSlot();
        if (slot == TemplateLayout::NoFreeBoxSlot) {
            ranOutOfIndex(prompter);
            return false;
        }
        BoxInfo &box = layout.box(slot);
        readKeys(ini, boxSection(), stem, box, TemplateKeys::boxKeys());
        box.index = qint16(slot);
        box.placed = true;
        box.visible = true; // a placed box is shown, whatever its saved flag said
        box.container = Container::normalized(box.container);
        box.headerText = BoxInfo::headerTextForCaption(box.caption);
    }
    return true;
}

bool readLines(const IniFile &ini, TemplateLayout &layout, Prompter &prompter) {
    const QString section = QStringLiteral("Line Info");
    for (int n = 1; n <= TemplateLayout::LineCapacity; ++n) {
        const QString stem = QStringLiteral("Line_%1").arg(n);
        if (!ParseIniBool(ini.value(section, stem + QStringLiteral("_Placed"))))
            continue;
        // The reader looks for a line that is not placed: the designer's own finder for new
        // lines stops at the same slots.
        const int slot = layout.freeLineSlot();
        if (slot == TemplateLayout::NoFreeLineSlot) {
            ranOutOfIndex(prompter);
            return false;
        }
        LineInfo &line = layout.line(slot);
        readKeys(ini, section, stem, line, TemplateKeys::lineKeys());
        line.index = qint16(slot);
        line.placed = true;
    }
    return true;
}

void readRectangles(const IniFile &ini, TemplateLayout &layout) {
    const QString section = QStringLiteral("Rectangle Info");
    for (int n = 1; n <= TemplateLayout::RectCapacity; ++n) {
        const QString stem = QStringLiteral("Rect_%1").arg(n);
        if (!ParseIniBool(ini.value(section, stem + QStringLiteral("_Visible"))))
            continue;
        PrintRect &rect = layout.rect(n);
        readKeys(ini, section, stem, rect, TemplateKeys::rectKeys());
        rect.rectIndex = qint16(n);
        rect.rectVisible = true;
        rect.rectPlaced = true;
        rect.rectRight = rect.rectLeft + rect.rectWidth;
        rect.rectBottom = rect.rectTop + rect.rectHeight;
        rect.rectLocation = PrintRect::locationForTop(rect.top);
    }
}

} // namespace

TemplateReader::Result TemplateReader::read(const QString &path, TemplateLayout &layout,
                                            Prompter &prompter) {
    if (path.isEmpty() || !QFileInfo::exists(path))
        return Result::Missing;
    return readBytes(TextFile::readBytes(path), layout, prompter);
}

TemplateReader::Result TemplateReader::readBytes(const QByteArray &bytes, TemplateLayout &layout,
                                                 Prompter &prompter) {
    return readIni(IniFile::fromText(fromWindows1252(bytes)), layout, prompter);
}

TemplateReader::Result TemplateReader::readIni(const IniFile &ini, TemplateLayout &layout,
                                               Prompter &prompter) {
    readOtherInfo(ini, layout.other);
    if (!readBoxes(ini, layout, prompter) || !readLines(ini, layout, prompter))
        return Result::RanOutOfIndex;
    readRectangles(ini, layout);
    return Result::Complete;
}

TemplateLayout TemplateReader::load(const QString &path, Prompter &prompter) {
    TemplateLayout layout;
    read(path, layout, prompter);
    return layout;
}

} // namespace tavrel
