#include "designer/frmCustomLayout.h"

#include "base/ErrorReport.h"
#include "base/Prompter.h"
#include "base/RuntimeError.h"
#include "designer/DesignCanvas.h"
#include "designer/DesignerActions.h"
#include "designer/LivePreviewPane.h"

#include <QComboBox>
#include <QDockWidget>
#include <QFontComboBox>
#include <QUndoStack>

namespace tavrel {

namespace {

const QStringList &standardSizes() {
    static const QStringList sizes{QStringLiteral("25%"), QStringLiteral("50%"),
                                   QStringLiteral("75%"), QStringLiteral("100%")};
    return sizes;
}

bool isPictureCaption(const QString &caption) {
    return caption == QLatin1String("Image") || caption == QLatin1String("Complete");
}

} // namespace

bool frmCustomLayout::dispatch(const QString &command) {
    if (command == QLatin1String("mnuAbout"))
        m_designerActions.about();
    else if (command == QLatin1String("mnuHelpTopic"))
        m_designerActions.help();
    else if (dispatchFormat(command))
        return true;
    else if (command == QLatin1String("mnuPrintPreview"))
        previewOrPrint(false);
    else if (command == QLatin1String("mnuPrint"))
        previewOrPrint(true);
    else if (command == QLatin1String("mnuOpen"))
        openTemplate();
    else if (command == QLatin1String("mnuNew"))
        newTemplate();
    else if (command == QLatin1String("mnuFile") || command == QLatin1String("mnuTool") ||
             command == QLatin1String("mnuPreference") || command == QLatin1String("mnuView"))
        updateChecks();
    else if (command == QLatin1String("mnuViewLivePreview"))
        m_previewDock->setVisible(!m_previewDock->isVisible());
    else if (command == QLatin1String("mnuRefreshPreview"))
        m_livePreview->refresh();
    else if (command == QLatin1String("mnuSave"))
        saveTemplate();
    else if (command == QLatin1String("mnuSaveAs"))
        saveTemplateAs();
    else if (command == QLatin1String("mnuExit"))
        close();
    else if (command == QLatin1String("mnuShowLabel"))
        togglePreference(DesignerSwitch::ShowLabel);
    else if (command == QLatin1String("mnuShowColor"))
        togglePreference(DesignerSwitch::ShowColor);
    else if (command == QLatin1String("mnuSubTotalOptions"))
        togglePreference(DesignerSwitch::ShowSubTotalOptions);
    else if (command == QLatin1String("mnuCopyHeaderFooter"))
        copyHeaderFooter();
    else if (command == QLatin1String("mnuFieldLength"))
        openFieldLengths();
    else if (dispatchElements(command) || dispatchSizes(command))
        return true;
    else if (command == QLatin1String("mnuUndo"))
        m_document.undoStack().undo();
    else if (command == QLatin1String("mnuRedo"))
        m_document.undoStack().redo();
    else if (command == QLatin1String("mnuCopy"))
        copyBoxes();
    else if (command == QLatin1String("mnuPaste"))
        pasteBoxes(false);
    else if (command == QLatin1String("mnuDuplicate"))
        pasteBoxes(true);
    else
        return false;
    return true;
}

bool frmCustomLayout::dispatchFormat(const QString &command) {
    if (command == QLatin1String("mnuFont")) {
        chooseFont();
    } else if (command == QLatin1String("mnuFontName")) {
        const QString name = m_fontName->currentFont().family();
        editSelectedBoxes(
            QStringLiteral("Font"), [&](BoxInfo &box) { box.fontName = name; }, true);
    } else if (command == QLatin1String("mnuFontSize")) {
        const qint16 size = qint16(std::clamp(m_fontSize->currentText().toInt(), 1, 400));
        editSelectedBoxes(
            QStringLiteral("Font Size"), [&](BoxInfo &box) { box.fontSize = size; }, true);
    } else if (command == QLatin1String("mnuFontBold") ||
               command == QLatin1String("mnuFontItalic") ||
               command == QLatin1String("mnuFontUnderline")) {
        const QList<int> &picked = m_document.selection().boxes;
        if (picked.isEmpty())
            return true;
        // The reference box decides whether the attribute goes on or off for all.
        const BoxInfo &reference = m_document.layout().box(picked.first());
        if (command == QLatin1String("mnuFontBold")) {
            const bool on = !reference.fontBold;
            editSelectedBoxes(
                QStringLiteral("Bold"), [&](BoxInfo &b) { b.fontBold = on; }, true);
        } else if (command == QLatin1String("mnuFontItalic")) {
            const bool on = !reference.fontItalic;
            editSelectedBoxes(
                QStringLiteral("Italic"), [&](BoxInfo &b) { b.fontItalic = on; }, true);
        } else {
            const bool on = !reference.fontUnderLine;
            editSelectedBoxes(
                QStringLiteral("Underline"), [&](BoxInfo &b) { b.fontUnderLine = on; }, true);
        }
    } else if (command == QLatin1String("mnuForeColor")) {
        chooseColor(false);
    } else if (command == QLatin1String("mnuBackColor")) {
        chooseColor(true);
    } else if (command == QLatin1String("mnuSelectAll")) {
        QList<int> picked;
        for (int slot = 1; slot <= TemplateLayout::BoxCapacity; ++slot) {
            if (m_document.layout().box(slot).placed)
                picked.append(slot);
        }
        m_document.selectBoxes(picked);
    } else if (command == QLatin1String("mnuLeftJustify")) {
        editSelectedBoxes(QStringLiteral("Align Text"),
                          [](BoxInfo &b) { b.textAlign = TextAlign::Left; });
    } else if (command == QLatin1String("mnuCenterJustify")) {
        editSelectedBoxes(QStringLiteral("Align Text"),
                          [](BoxInfo &b) { b.textAlign = TextAlign::Center; });
    } else if (command == QLatin1String("mnuRightJustify")) {
        editSelectedBoxes(QStringLiteral("Align Text"),
                          [](BoxInfo &b) { b.textAlign = TextAlign::Right; });
    } else if (command == QLatin1String("mnuJustify")) {
        editSelectedBoxes(QStringLiteral("Align Text"),
                          [](BoxInfo &b) { b.textAlign = TextAlign::Justify; });
    } else {
        return false;
    }
    return true;
}

bool frmCustomLayout::dispatchElements(const QString &command) {
    static const QHash<QString, AlignCommand> alignments{
        {QStringLiteral("mnuLefts"), AlignCommand::Lefts},
        {QStringLiteral("mnuRights"), AlignCommand::Rights},
        {QStringLiteral("mnuTops"), AlignCommand::Tops},
        {QStringLiteral("mnuBottoms"), AlignCommand::Bottoms},
        {QStringLiteral("mnuWidth"), AlignCommand::Width},
        {QStringLiteral("mnuHeight"), AlignCommand::Height},
        {QStringLiteral("mnuBoth"), AlignCommand::Both},
        {QStringLiteral("mnuSameColor"), AlignCommand::SameColor}};
    static const QHash<QString, LineStyle> styles{
        {QStringLiteral("mnuSolid"), LineStyle::Solid},
        {QStringLiteral("mnuDash"), LineStyle::Dash},
        {QStringLiteral("mnuDot"), LineStyle::Dot},
        {QStringLiteral("mnuDashDot"), LineStyle::DashDot},
        {QStringLiteral("mnuDashDotDot"), LineStyle::DashDotDot}};
    if (alignments.contains(command))
        alignBoxes(alignments.value(command));
    else if (styles.contains(command))
        setLineStyle(styles.value(command));
    else if (command == QLatin1String("mnuUndoAlign"))
        undoAlign();
    else if (command == QLatin1String("mnuDeleteBox"))
        deleteBoxes();
    else if (command == QLatin1String("mnuDisplayLabel")) {
        const QList<int> &picked = m_document.selection().boxes;
        if (picked.isEmpty())
            return true;
        const bool on = !m_document.layout().box(picked.first()).displayLabel;
        editSelectedBoxes(QStringLiteral("Print Label"), [&](BoxInfo &b) { b.displayLabel = on; });
    } else if (command == QLatin1String("mnuEditNotes"))
        editNotes();
    else if (command == QLatin1String("mnuEditLogo"))
        editLogo();
    else if (command == QLatin1String("mnuRectangleColor"))
        chooseRectangleColor();
    else if (command == QLatin1String("mnuCopyRectangle"))
        copyRectangle();
    else if (command == QLatin1String("mnuPastRectangle"))
        pasteRectangle();
    else if (command == QLatin1String("mnuDeleteRectangle"))
        deleteRectangle();
    else if (command == QLatin1String("mnuClearAllRectangle"))
        clearAllRectangles();
    else if (command == QLatin1String("mnuBorderColor"))
        chooseLineColor();
    else if (command == QLatin1String("mnuDeleteLine"))
        deleteLine();
    else if (command == QLatin1String("mnuClearAllLine"))
        clearAllLines();
    else
        return false;
    return true;
}

bool frmCustomLayout::dispatchSizes(const QString &command) {
    for (const QString &size : standardSizes()) {
        const QString number = size.chopped(1);
        if (command == QStringLiteral("mnuLogo") + number) {
            setLogoSize(size);
            return true;
        }
        if (command == QStringLiteral("mnuImg") + number) {
            setImageSize(size);
            return true;
        }
    }
    if (command == QLatin1String("mnuUserDefine"))
        askUserSize(true);
    else if (command == QLatin1String("mnuUserDefinedImg"))
        askUserSize(false);
    else if (command == QLatin1String("mnuImgSize") || command == QLatin1String("mnuImageSize"))
        updateChecks();
    else
        return false;
    return true;
}

void frmCustomLayout::editSelectedBoxes(const QString &text,
                                        const std::function<void(BoxInfo &)> &edit,
                                        bool skipPictures) {
    TemplateLayout layout = m_document.layout();
    for (int slot : m_document.selection().boxes) {
        BoxInfo &box = layout.box(slot);
        if (skipPictures && isPictureCaption(box.caption))
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
    const std::optional<FontChoice> font =
        m_prompter.font({reference.fontName, reference.fontSize, reference.fontBold,
                         reference.fontItalic, reference.fontUnderLine});
    if (!font)
        return;
    editSelectedBoxes(
        QStringLiteral("Font"),
        [&](BoxInfo &box) {
            box.fontName = font->name;
            box.fontSize = qint16(font->size);
            box.fontBold = font->bold;
            box.fontItalic = font->italic;
            box.fontUnderLine = font->underline;
        },
        true);
}

void frmCustomLayout::chooseColor(bool background) {
    const QList<int> &picked = m_document.selection().boxes;
    if (picked.isEmpty())
        return;
    const BoxInfo &reference = m_document.layout().box(picked.first());
    const std::optional<quint32> color = m_prompter.color(
        quint32(background ? (reference.changeBackcolor ? reference.custBkColor : WhiteColor)
                           : reference.foreColor));
    if (!color)
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
    const std::optional<QString> text =
        m_prompter.input(QStringLiteral("Enter the text of the note or label."),
                         QStringLiteral("Edit Notes"), box.notesName);
    if (!text || text->isEmpty())
        return;
    TemplateLayout layout = m_document.layout();
    BoxInfo &edited = layout.box(picked.first());
    edited.caption = *text;
    edited.notesName = *text;
    edited.toolTipText = *text;
    edited.editCaption = true;
    m_document.change(layout, QStringLiteral("Edit Note"));
}

void frmCustomLayout::editLogo() {
    FileDialogRequest request;
    request.title = QStringLiteral("Select Logo Picture");
    request.filter = QStringLiteral("Pictures (*.bmp;*.jpg;*.gif;*.png)|*.bmp;*.jpg;*.gif;*.png|"
                                    "All Files  (*.*)|*.*");
    request.folder = m_environment.templateFolder;
    const std::optional<QString> path = m_prompter.openFile(request);
    if (!path)
        return;
    TemplateLayout layout = m_document.layout();
    for (int slot = 1; slot <= TemplateLayout::BoxCapacity; ++slot) {
        BoxInfo &box = layout.box(slot);
        if (box.placed && box.logo)
            box.logoFile = *path;
    }
    m_document.change(layout, QStringLiteral("Logo Picture"));
}

void frmCustomLayout::setLogoSize(const QString &size) {
    TemplateLayout layout = m_document.layout();
    layout.other.logoSize = size;
    m_document.change(layout, QStringLiteral("Logo Size"));
    updateChecks();
}

void frmCustomLayout::setImageSize(const QString &size) {
    TemplateLayout layout = m_document.layout();
    layout.other.imageSize = size;
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
        const DesignerPreferences prefs = m_environment.job->designerPreferences();
        const bool current = which == DesignerSwitch::ShowLabel   ? prefs.showLabel
                             : which == DesignerSwitch::ShowColor ? prefs.showColor
                                                                  : prefs.showSubTotalOptions;
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

void frmCustomLayout::updateChecks() {
    const auto check = [this](const char *command, bool on) {
        if (QAction *action = m_actions.value(QLatin1String(command)))
            action->setChecked(on);
    };
    const OtherInfo &other = m_document.layout().other;
    check("mnuLogo25", other.logoSize == QLatin1String("25%"));
    check("mnuLogo50", other.logoSize == QLatin1String("50%"));
    check("mnuLogo75", other.logoSize == QLatin1String("75%"));
    check("mnuLogo100", other.logoSize == QLatin1String("100%"));
    const bool userLogo = !other.logoSize.isEmpty() && !standardSizes().contains(other.logoSize);
    check("mnuUserDefine", userLogo);
    m_actions.value(QStringLiteral("mnuUserDefine"))
        ->setText(userLogo ? QStringLiteral("User Define ") + other.logoSize
                           : QStringLiteral("User Define..."));
    check("mnuImg25", other.imageSize == QLatin1String("25%"));
    check("mnuImg50", other.imageSize == QLatin1String("50%"));
    check("mnuImg75", other.imageSize == QLatin1String("75%"));
    check("mnuImg100", other.imageSize == QLatin1String("100%"));
    const bool userImage = !other.imageSize.isEmpty() && !standardSizes().contains(other.imageSize);
    check("mnuUserDefinedImg", userImage);
    m_actions.value(QStringLiteral("mnuUserDefinedImg"))
        ->setText(userImage ? QStringLiteral("User Define ") + other.imageSize
                            : QStringLiteral("User Define..."));
    const DesignerPreferences prefs =
        m_environment.job ? m_environment.job->designerPreferences() : DesignerPreferences();
    check("mnuShowLabel", prefs.showLabel);
    check("mnuShowColor", prefs.showColor);
    check("mnuSubTotalOptions", prefs.showSubTotalOptions);
    check("mnuViewLivePreview", m_previewDock && m_previewDock->isVisible());
    check("mnuSolid", m_lineStyle == qint16(LineStyle::Solid));
    check("mnuDash", m_lineStyle == qint16(LineStyle::Dash));
    check("mnuDot", m_lineStyle == qint16(LineStyle::Dot));
    check("mnuDashDot", m_lineStyle == qint16(LineStyle::DashDot));
    check("mnuDashDotDot", m_lineStyle == qint16(LineStyle::DashDotDot));

    const DesignerSelection &selection = m_document.selection();
    const bool boxes = !selection.boxes.isEmpty();
    const bool several = selection.boxes.size() > 1;
    check("mnuDisplayLabel",
          boxes && m_document.layout().box(selection.boxes.first()).displayLabel);
    for (const char *command : {"mnuLefts", "mnuRights", "mnuTops", "mnuBottoms", "mnuWidth",
                                "mnuHeight", "mnuBoth", "mnuSameColor"})
        m_actions.value(QLatin1String(command))->setEnabled(several);
    m_actions.value(QStringLiteral("mnuUndoAlign"))
        ->setEnabled(!m_document.lastAlignment().isEmpty());
    m_actions.value(QStringLiteral("mnuUndo"))->setEnabled(m_document.undoStack().canUndo());
    m_actions.value(QStringLiteral("mnuRedo"))->setEnabled(m_document.undoStack().canRedo());
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
    m_document.change(layout, duplicate ? QStringLiteral("Duplicate") : QStringLiteral("Paste"));
    m_document.selectBoxes(picked);
}

} // namespace tavrel
