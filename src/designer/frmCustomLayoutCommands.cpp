#include "designer/frmCustomLayout.h"

#include "base/ErrorReport.h"
#include "base/Prompter.h"
#include "base/RuntimeError.h"
#include "designer/DesignCanvas.h"
#include "designer/DesignerActions.h"
#include "designer/LivePreviewPane.h"

#include <QAction>
#include <QComboBox>
#include <QDockWidget>
#include <QFileInfo>
#include <QFontComboBox>
#include <QRegularExpression>
#include <QSignalBlocker>
#include <QUndoStack>

namespace tavrel {

bool frmCustomLayout::isPictureBox(const BoxInfo &box) {
    return box.caption == QLatin1String("Image") || box.caption == QLatin1String("Complete");
}

void frmCustomLayout::setFontFromTool() {
    const QString name = m_fontName->currentFont().family();
    if (name.isEmpty())
        return;
    editSelectedBoxes(
        QStringLiteral("Font"), [&](BoxInfo &box) { box.fontName = name; }, true);
}

void frmCustomLayout::setFontSizeFromTool() {
    bool number = false;
    m_fontSize->currentText().toInt(&number);
    if (!number)
        return;
    const qint16 size = qint16(std::clamp(m_fontSize->currentText().toInt(), 1, 400));
    editSelectedBoxes(
        QStringLiteral("Font Size"), [&](BoxInfo &box) { box.fontSize = size; }, true);
}

void frmCustomLayout::toggleFontStyle(FontStyle style) {
    const QList<int> &picked = m_document.selection().boxes;
    if (picked.isEmpty())
        return;
    // As the tool shows it: on for all unless every selected box has it already.
    const auto toggle = [this](const QString &text, bool BoxInfo::*member) {
        bool all = true;
        for (int slot : m_document.selection().boxes) {
            const BoxInfo &box = m_document.layout().box(slot);
            if (!isPictureBox(box) && !(box.*member))
                all = false;
        }
        editSelectedBoxes(
            text, [&](BoxInfo &b) { b.*member = !all; }, true);
    };
    switch (style) {
    case FontStyle::Bold:
        toggle(QStringLiteral("Bold"), &BoxInfo::fontBold);
        break;
    case FontStyle::Italic:
        toggle(QStringLiteral("Italic"), &BoxInfo::fontItalic);
        break;
    case FontStyle::Underline:
        toggle(QStringLiteral("Underline"), &BoxInfo::fontUnderLine);
        break;
    }
}

void frmCustomLayout::updateFormatTools() {
    if (!m_fontName || !m_fontSize)
        return;
    // The font tools show the selection's family and size, and stay empty when the selected
    // boxes differ; with nothing selected they keep the last choice.
    QStringList families;
    QList<int> sizes;
    for (int slot : m_document.selection().boxes) {
        const BoxInfo &box = m_document.layout().box(slot);
        if (isPictureBox(box))
            continue;
        if (!families.contains(box.fontName, Qt::CaseInsensitive))
            families << box.fontName;
        if (!sizes.contains(box.fontSize))
            sizes << box.fontSize;
    }
    const QSignalBlocker nameBlocker(m_fontName);
    const QSignalBlocker sizeBlocker(m_fontSize);
    if (families.size() == 1) {
        m_fontName->setCurrentFont(QFont(families.first()));
        // The box's own name, also where it is not installed here and prints in a substitute.
        m_fontName->setEditText(families.first());
    } else if (families.size() > 1) {
        m_fontName->setCurrentIndex(-1);
        m_fontName->setEditText(QString());
    }
    if (sizes.size() == 1) {
        m_fontSize->setCurrentText(QString::number(sizes.first()));
    } else if (sizes.size() > 1) {
        m_fontSize->setCurrentIndex(-1);
        m_fontSize->setEditText(QString());
    }
}

void frmCustomLayout::selectAllBoxes() {
    QList<int> picked;
    for (int slot = 1; slot <= TemplateLayout::BoxCapacity; ++slot) {
        if (m_document.layout().box(slot).placed)
            picked.append(slot);
    }
    m_document.selectBoxes(picked);
}

void frmCustomLayout::alignText(qint32 align) {
    editSelectedBoxes(QStringLiteral("Align Text"), [align](BoxInfo &b) { b.textAlign = align; });
}

void frmCustomLayout::toggleDisplayLabel() {
    const QList<int> &picked = m_document.selection().boxes;
    if (picked.isEmpty())
        return;
    const bool on = !m_document.layout().box(picked.first()).displayLabel;
    editSelectedBoxes(QStringLiteral("Print Label"), [&](BoxInfo &b) { b.displayLabel = on; });
}

void frmCustomLayout::editSelectedBoxes(const QString &text,
                                        const std::function<void(BoxInfo &)> &edit,
                                        bool skipPictures) {
    TemplateLayout layout = m_document.layout();
    for (int slot : m_document.selection().boxes) {
        BoxInfo &box = layout.box(slot);
        if (skipPictures && isPictureBox(box))
            continue;
        edit(box);
    }
    m_document.change(layout, text);
}

void frmCustomLayout::chooseFont() {
    const QList<int> &picked = m_document.selection().boxes;
    if (picked.isEmpty())
        return;
    const BoxInfo &reference = m_document.layout().box(picked.first());
    const FontChoice initial{reference.fontName, reference.fontSize, reference.fontBold,
                             reference.fontItalic, reference.fontUnderLine};
    const std::optional<FontChoice> font = m_prompter.font(initial);
    if (!font)
        return;
    // Only what the user changed in the dialog goes onto the boxes: with several boxes
    // selected, a new size keeps each box's own family and styles.
    const bool name = font->name.compare(initial.name, Qt::CaseInsensitive) != 0;
    const bool size = font->size != initial.size;
    const bool bold = font->bold != initial.bold;
    const bool italic = font->italic != initial.italic;
    const bool underline = font->underline != initial.underline;
    if (!name && !size && !bold && !italic && !underline)
        return;
    editSelectedBoxes(
        QStringLiteral("Font"),
        [&](BoxInfo &box) {
            if (name)
                box.fontName = font->name;
            if (size)
                box.fontSize = qint16(std::clamp(font->size, 1, 400));
            if (bold)
                box.fontBold = font->bold;
            if (italic)
                box.fontItalic = font->italic;
            if (underline)
                box.fontUnderLine = font->underline;
        },
        true);
}

void frmCustomLayout::chooseColor(bool background) {
    const QList<int> &picked = m_document.selection().boxes;
    if (picked.isEmpty())
        return;
    const BoxInfo &reference = m_document.layout().box(picked.first());
    const auto initial =
        quint32(background ? (reference.changeBackcolor ? reference.custBkColor : WhiteColor)
                           : reference.foreColor);
    const std::optional<quint32> color = m_prompter.color(initial);
    // OK on the colour the dialog started at changes nothing: the other boxes keep theirs.
    if (!color || *color == initial)
        return;
    const auto value = qint32(*color);
    if (background) {
        editSelectedBoxes(QStringLiteral("Background Colour"), [&](BoxInfo &box) {
            box.backColor = value;
            box.custBkColor = value;
            box.changeBackcolor = true;
        });
    } else {
        editSelectedBoxes(QStringLiteral("Text Colour"),
                          [&](BoxInfo &box) { box.foreColor = value; });
    }
}

void frmCustomLayout::alignBoxes(AlignCommand command) {
    TemplateLayout layout = m_document.layout();
    const QList<BoxGeometry> before =
        LayoutEdits::align(layout, m_document.selection().boxes, command);
    // An alignment never pushes a box off the printable area.
    if (!LayoutEdits::clampBoxes(layout, m_document.selection().boxes, m_canvas->pageArea(),
                                 m_canvas->pictures())
             .isEmpty())
        showStatus(QStringLiteral("Kept inside the printable area."));
    if (command != AlignCommand::SameColor && !before.isEmpty())
        m_document.setLastAlignment(before);
    m_document.change(layout, command == AlignCommand::SameColor ? QStringLiteral("Same Colours")
                                                                 : QStringLiteral("Align"));
}

void frmCustomLayout::undoAlign() {
    if (m_document.lastAlignment().isEmpty())
        return;
    TemplateLayout layout = m_document.layout();
    LayoutEdits::restoreGeometry(layout, m_document.lastAlignment());
    m_document.change(layout, QStringLiteral("Undo Alignment"));
}

void frmCustomLayout::deleteBoxes() {
    const QList<int> picked = m_document.selection().boxes;
    if (picked.isEmpty())
        return;
    if (m_prompter.message(QStringLiteral("Are you sure you want to delete this field?"), QString(),
                           MessageIcon::None, MessageButtons::YesNo,
                           MessageAnswer::No) != MessageAnswer::Yes)
        return;
    TemplateLayout layout = m_document.layout();
    for (int slot : picked)
        LayoutEdits::clearBox(layout, slot);
    LayoutEdits::assignLevels(layout);
    m_document.change(layout, QStringLiteral("Delete"));
}

void frmCustomLayout::editNotes() {
    const QList<int> &picked = m_document.selection().boxes;
    if (picked.isEmpty() || !m_document.layout().box(picked.first()).notes)
        return;
    const BoxInfo &box = m_document.layout().box(picked.first());
    const std::optional<QString> answer =
        m_prompter.multiLineInput(QStringLiteral("Enter the text of the note or label.\n"
                                                 "It wraps at the width of its box as it prints."),
                                  QStringLiteral("Edit Notes"), box.notesName);
    if (!answer)
        return;
    // A template keeps a note on one line of its file: line breaks become blanks and the report
    // wraps the text at the box's width.
    const QString text =
        answer->split(QRegularExpression(QStringLiteral("\\s*[\\r\\n]+\\s*")), Qt::SkipEmptyParts)
            .join(QLatin1Char(' '))
            .trimmed();
    if (text.isEmpty() || text == box.notesName)
        return;
    TemplateLayout layout = m_document.layout();
    BoxInfo &edited = layout.box(picked.first());
    edited.caption = text;
    edited.notesName = text;
    edited.toolTipText = text;
    edited.editCaption = true;
    m_document.change(layout, QStringLiteral("Edit Note"));
}

void frmCustomLayout::editLogo() {
    FileDialogRequest request;
    request.title = QStringLiteral("Select Logo Picture");
    request.filter = QStringLiteral("Pictures (*.bmp;*.jpg;*.gif;*.png)|*.bmp;*.jpg;*.gif;*.png|"
                                    "All Files  (*.*)|*.*");
    request.folder = m_environment.templateFolder;
    // The dialog opens where the current picture is.
    for (int slot = 1; slot <= TemplateLayout::BoxCapacity; ++slot) {
        const BoxInfo &box = m_document.layout().box(slot);
        if (box.placed && box.logo && !box.logoFile.isEmpty()) {
            const QFileInfo current(box.logoFile);
            if (current.dir().exists()) {
                request.folder = current.absolutePath();
                request.fileName = current.fileName();
            }
            break;
        }
    }
    const std::optional<QString> path = m_prompter.openFile(request);
    if (!path)
        return;
    // Kept for a logo box placed later as well as given to those on the page.
    m_document.setLogoFile(*path);
    TemplateLayout layout = m_document.layout();
    for (int slot = 1; slot <= TemplateLayout::BoxCapacity; ++slot) {
        BoxInfo &box = layout.box(slot);
        if (box.placed && box.logo)
            box.logoFile = *path;
    }
    LayoutEdits::fitPictureBoxes(layout, m_canvas->pictures());
    m_document.change(layout, QStringLiteral("Logo Picture"));
}

void frmCustomLayout::setLogoSize(const QString &size) {
    TemplateLayout layout = m_document.layout();
    layout.other.logoSize = size;
    LayoutEdits::fitPictureBoxes(layout, m_canvas->pictures());
    m_document.change(layout, QStringLiteral("Logo Size"));
    updateChecks();
}

void frmCustomLayout::setImageSize(const QString &size) {
    TemplateLayout layout = m_document.layout();
    layout.other.imageSize = size;
    LayoutEdits::fitPictureBoxes(layout, m_canvas->pictures());
    m_document.change(layout, QStringLiteral("Image Size"));
    updateChecks();
}

void frmCustomLayout::askUserSize(bool logo) {
    const std::optional<QString> answer =
        logo
            ? m_prompter.input(QStringLiteral("Enter a Logo Size."), QStringLiteral("Logo Size"))
            : m_prompter.input(QStringLiteral("Enter a Image Size."), QStringLiteral("Image Size"));
    if (!answer || answer->trimmed().isEmpty())
        return;
    QString size = answer->trimmed();
    if (!size.contains(QLatin1Char('%')))
        size += QLatin1Char('%');
    if (logo)
        setLogoSize(size);
    else
        setImageSize(size);
}

void frmCustomLayout::togglePreference(DesignerSwitch which) {
    if (m_environment.job) {
        const bool current = preferenceOn(which);
        remember([which, current](JobFile &job) { job.writeDesignerSwitch(which, !current); });
    }
    updateChecks();
}

void frmCustomLayout::remember(const std::function<void(JobFile &)> &write) {
    if (!m_environment.job)
        return;
    try {
        write(*m_environment.job);
    } catch (const RuntimeError &error) {
        reportError(m_prompter, QStringLiteral("Save Preference."), error);
    }
}

bool frmCustomLayout::preferenceOn(DesignerSwitch which) const {
    const DesignerPreferences prefs =
        m_environment.job ? m_environment.job->designerPreferences() : DesignerPreferences();
    return which == DesignerSwitch::ShowLabel   ? prefs.showLabel
           : which == DesignerSwitch::ShowColor ? prefs.showColor
                                                : prefs.showSubTotalOptions;
}

void frmCustomLayout::updateChecks() {
    m_commands.refresh();
    updateFormatTools();
    // A size of the user's own shows in its item.
    const OtherInfo &other = m_document.layout().other;
    const auto userText = [](const QString &size) {
        return isUserSize(size) ? QStringLiteral("User Define ") + size
                                : QStringLiteral("User Define...");
    };
    if (QAction *logo = m_commands.action(QStringLiteral("mnuUserDefine")))
        logo->setText(userText(other.logoSize));
    if (QAction *image = m_commands.action(QStringLiteral("mnuUserDefinedImg")))
        image->setText(userText(other.imageSize));
}

void frmCustomLayout::copyBoxes() {
    m_copiedBoxes.clear();
    for (int slot : m_document.selection().boxes)
        m_copiedBoxes.append(m_document.layout().box(slot));
}

void frmCustomLayout::pasteBoxes(bool duplicate) {
    if (duplicate)
        copyBoxes();
    if (m_copiedBoxes.isEmpty())
        return;
    TemplateLayout layout = m_document.layout();
    const QList<int> picked = LayoutEdits::duplicateBoxes(layout, m_copiedBoxes, 240, 240);
    if (picked.isEmpty()) {
        showStatus(QStringLiteral("Ran out of index"));
        return;
    }
    // A copy that would land past the edge is kept inside the printable area.
    LayoutEdits::clampBoxes(layout, picked, m_canvas->pageArea(), m_canvas->pictures());
    m_document.change(layout, duplicate ? QStringLiteral("Duplicate") : QStringLiteral("Paste"));
    m_document.selectBoxes(picked);
}

} // namespace tavrel
