#include "templates/TemplateWriter.h"

#include "base/Prompter.h"
#include "base/RuntimeError.h"
#include "base/TextFile.h"
#include "templates/TemplateKeys.h"

#include <QFileInfo>
#include <QLocale>

namespace tavrel {

namespace {

template <typename Element>
void appendKeys(QStringList &lines, const QString &prefix, int slot, const Element &element,
                const QList<TemplateKey<Element>> &keys) {
    const QString stem = prefix + QString::number(slot);
    for (const TemplateKey<Element> &key : keys)
        lines.append(stem + key.suffix + QLatin1Char('=') +
                     TemplateKeys::formatValue(element, key.member));
}

void appendPair(QStringList &lines, const QString &firstKey, float first, const QString &secondKey,
                float second) {
    if (first == 0.0f && second == 0.0f)
        return;
    lines.append(firstKey + QLatin1Char('=') + TemplateKeys::formatSingle(first));
    lines.append(secondKey + QLatin1Char('=') + TemplateKeys::formatSingle(second));
}

void appendOtherInfo(QStringList &lines, const OtherInfo &other) {
    lines.append(QStringLiteral("[Other Info]"));
    lines.append(QStringLiteral("LogoSize=") + other.logoSize);
    lines.append(QStringLiteral("ImageSize=") +
                 (other.imageSize.isEmpty() ? QStringLiteral("100%") : other.imageSize));
    lines.append(QStringLiteral("Landscape=") + TemplateKeys::formatBool(other.landscape));
    appendPair(lines, QStringLiteral("RealONNWidth"), other.realONNWidth,
               QStringLiteral("RealODWidth"), other.realODWidth);
    appendPair(lines, QStringLiteral("RealANNWidth"), other.realANNWidth,
               QStringLiteral("RealADWidth"), other.realADWidth);
}

} // namespace

QString TemplateWriter::titleLine(TemplateKind kind, const QDateTime &when) {
    if (kind == TemplateKind::Unknown)
        return {};
    return templateTitleText(kind) +
           QLocale::c().toString(when, QStringLiteral("M/d/yyyy h:mm:ss AP"));
}

QStringList TemplateWriter::lines(const TemplateLayout &layout, const QString &titleLine) {
    QStringList lines{titleLine, QString()};
    appendOtherInfo(lines, layout.other);

    lines << QString() << QStringLiteral("[Box Info]");
    for (int slot = 1; slot <= TemplateLayout::BoxCapacity; ++slot) {
        const BoxInfo &box = layout.box(slot);
        if (box.placed || box.visible)
            appendKeys(lines, QStringLiteral("Box_"), slot, box, TemplateKeys::boxKeys());
    }

    lines << QString() << QStringLiteral("[Line Info]");
    for (int slot = 1; slot <= TemplateLayout::LineCapacity; ++slot) {
        const LineInfo &line = layout.line(slot);
        if (line.placed)
            appendKeys(lines, QStringLiteral("Line_"), slot, line, TemplateKeys::lineKeys());
    }

    lines << QString() << QStringLiteral("[Rectangle Info]");
    for (int slot = 1; slot <= TemplateLayout::RectCapacity; ++slot) {
        const PrintRect &rect = layout.rect(slot);
        if (!rect.rectVisible)
            continue;
        appendKeys(lines, QStringLiteral("Rect_"), slot, rect, TemplateKeys::rectKeys());
        lines.append(QStringLiteral("Rect_%1_Location=%2")
                         .arg(slot)
                         .arg(PrintRect::locationForTop(rect.top)));
    }
    return lines;
}

QByteArray TemplateWriter::bytes(const TemplateLayout &layout, const QString &titleLine) {
    return TextFile::encodeCrLf(lines(layout, titleLine));
}

void TemplateWriter::write(const QString &path, const TemplateLayout &layout,
                           const QString &titleLine) {
    const QByteArray content = bytes(layout, titleLine);
    TextFile::writeAtomically(path, content);
}

void TemplateWriter::save(const QString &path, const TemplateLayout &layout, Prompter &prompter) {
    prompter.status(QStringLiteral("Save Template. Please wait..."));
    try {
        write(path, layout, titleLine(templateKindOfPath(path), QDateTime::currentDateTime()));
    } catch (const RuntimeError &) {
        prompter.status(QString());
        throw;
    }
    prompter.status(QString());
}

} // namespace tavrel
