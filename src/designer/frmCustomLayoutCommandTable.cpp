#include "designer/frmCustomLayout.h"

#include "designer/DesignerActions.h"

#include <QUndoStack>

// The designer's command table, first half: the File, Edit, Format and Align menus. The Tool,
// Preferences, View and Help menus are in frmCustomLayoutToolCommands.cpp, the menus and tool
// bars built from the table in frmCustomLayoutMenus.cpp, and what the commands do in
// frmCustomLayoutCommands.cpp, frmCustomLayoutTools.cpp and frmCustomLayoutFiles.cpp.

namespace tavrel {

namespace {

using Command = CommandTable::Command;

} // namespace

bool frmCustomLayout::dispatch(const QString &command) {
    return m_commands.dispatch(command);
}

void frmCustomLayout::buildCommands() {
    addFileCommands();
    addEditCommands();
    addFormatCommands();
    addAlignCommands();
    addToolCommands();
    addWindowCommands();
}

void frmCustomLayout::addFileCommands() {
    m_commands.add(CommandTable::command(QStringLiteral("mnuNew"), QStringLiteral("&New"),
                                         [this] { newTemplate(); },
                                         {QKeySequence(QKeySequence::New)}));
    m_commands.add(CommandTable::command(QStringLiteral("mnuOpen"), QStringLiteral("&Open..."),
                                         [this] { openTemplate(); },
                                         {QKeySequence(QKeySequence::Open)}));
    m_commands.add(CommandTable::command(QStringLiteral("mnuSave"), QStringLiteral("&Save"),
                                         [this] { saveTemplate(); },
                                         {QKeySequence(QKeySequence::Save)}));
    m_commands.add(CommandTable::command(QStringLiteral("mnuSaveAs"), QStringLiteral("Save &As..."),
                                         [this] { saveTemplateAs(); }));
    m_commands.add(CommandTable::command(QStringLiteral("mnuCopyHeaderFooter"),
                                         QStringLiteral("Copy &Header/Footer From..."),
                                         [this] { copyHeaderFooter(); }));
    m_commands.add(CommandTable::command(QStringLiteral("mnuPrintPreview"),
                                         QStringLiteral("Print Pre&view"),
                                         [this] { previewOrPrint(false); }));
    m_commands.add(CommandTable::command(QStringLiteral("mnuPrint"), QStringLiteral("&Print"),
                                         [this] { previewOrPrint(true); },
                                         {QKeySequence(QKeySequence::Print)}));
    m_commands.add(CommandTable::command(QStringLiteral("mnuExit"), QStringLiteral("E&xit"),
                                         [this] { close(); }));
}

void frmCustomLayout::addEditCommands() {
    QUndoStack &stack = m_document.undoStack();
    m_commands.add(CommandTable::command(QStringLiteral("mnuUndo"), QStringLiteral("&Undo"),
                                         [&stack] { stack.undo(); },
                                         {QKeySequence(QKeySequence::Undo)})
                       .enabledWhen([&stack] { return stack.canUndo(); }));
    m_commands.add(CommandTable::command(QStringLiteral("mnuRedo"), QStringLiteral("&Redo"),
                                         [&stack] { stack.redo(); },
                                         {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z)})
                       .enabledWhen([&stack] { return stack.canRedo(); }));
    m_commands.add(CommandTable::command(QStringLiteral("mnuCopy"), QStringLiteral("&Copy"),
                                         [this] { copyBoxes(); },
                                         {QKeySequence(QKeySequence::Copy)}));
    m_commands.add(CommandTable::command(QStringLiteral("mnuPaste"), QStringLiteral("&Paste"),
                                         [this] { pasteBoxes(false); },
                                         {QKeySequence(QKeySequence::Paste)}));
    m_commands.add(CommandTable::command(QStringLiteral("mnuDuplicate"),
                                         QStringLiteral("D&uplicate"), [this] { pasteBoxes(true); },
                                         {QKeySequence(Qt::CTRL | Qt::Key_D)}));
    m_commands.add(CommandTable::command(QStringLiteral("mnuDeleteBox"),
                                         QStringLiteral("&Delete Field"),
                                         [this] { deleteBoxes(); }));
    m_commands.add(CommandTable::command(
        QStringLiteral("mnuSelectAll"), QStringLiteral("Select &All"), [this] { selectAllBoxes(); },
        {QKeySequence(QKeySequence::SelectAll)}));
    m_commands.add(CommandTable::command(QStringLiteral("mnuEditNotes"),
                                         QStringLiteral("Edit &Note Text..."),
                                         [this] { editNotes(); }));
    m_commands.add(CommandTable::command(QStringLiteral("mnuDisplayLabel"),
                                         QStringLiteral("Print Field &Label"),
                                         [this] { toggleDisplayLabel(); })
                       .checkedWhen([this] {
                           const QList<int> &picked = m_document.selection().boxes;
                           return !picked.isEmpty() &&
                                  m_document.layout().box(picked.first()).displayLabel;
                       }));
}

void frmCustomLayout::addFormatCommands() {
    // A style shows checked when every selected text box has it.
    const auto allHave = [this](bool BoxInfo::*style) {
        return [this, style] {
            const TemplateLayout &layout = m_document.layout();
            bool any = false;
            for (int slot : m_document.selection().boxes) {
                const BoxInfo &box = layout.box(slot);
                if (isPictureBox(box))
                    continue;
                if (!(box.*style))
                    return false;
                any = true;
            }
            return any;
        };
    };
    m_commands.add(CommandTable::command(QStringLiteral("mnuFont"), QStringLiteral("&Font..."),
                                         [this] { chooseFont(); }));
    m_commands.add(CommandTable::command(QStringLiteral("mnuFontBold"), QStringLiteral("&Bold"),
                                         [this] { toggleFontStyle(FontStyle::Bold); },
                                         {QKeySequence::Bold})
                       .checkedWhen(allHave(&BoxInfo::fontBold))
                       .withIconText(QStringLiteral("B")));
    m_commands.add(CommandTable::command(QStringLiteral("mnuFontItalic"), QStringLiteral("&Italic"),
                                         [this] { toggleFontStyle(FontStyle::Italic); },
                                         {QKeySequence::Italic})
                       .checkedWhen(allHave(&BoxInfo::fontItalic))
                       .withIconText(QStringLiteral("I")));
    m_commands.add(CommandTable::command(
                       QStringLiteral("mnuFontUnderline"), QStringLiteral("&Underline"),
                       [this] { toggleFontStyle(FontStyle::Underline); }, {QKeySequence::Underline})
                       .checkedWhen(allHave(&BoxInfo::fontUnderLine))
                       .withIconText(QStringLiteral("U")));
    m_commands.add(CommandTable::command(QStringLiteral("mnuForeColor"),
                                         QStringLiteral("&Text Colour..."),
                                         [this] { chooseColor(false); }));
    m_commands.add(CommandTable::command(QStringLiteral("mnuBackColor"),
                                         QStringLiteral("Bac&kground Colour..."),
                                         [this] { chooseColor(true); }));
    // The font tools on the tool bar.
    m_commands.add(
        CommandTable::withoutAction(QStringLiteral("mnuFontName"), [this] { setFontFromTool(); }));
    m_commands.add(CommandTable::withoutAction(QStringLiteral("mnuFontSize"),
                                               [this] { setFontSizeFromTool(); }));

    m_commands.add(CommandTable::command(QStringLiteral("mnuLeftJustify"),
                                         QStringLiteral("Align Text &Left"),
                                         [this] { alignText(TextAlign::Left); })
                       .withIconText(QStringLiteral("Left")));
    m_commands.add(CommandTable::command(QStringLiteral("mnuCenterJustify"),
                                         QStringLiteral("Align Text &Centre"),
                                         [this] { alignText(TextAlign::Center); })
                       .withIconText(QStringLiteral("Centre")));
    m_commands.add(CommandTable::command(QStringLiteral("mnuRightJustify"),
                                         QStringLiteral("Align Text &Right"),
                                         [this] { alignText(TextAlign::Right); })
                       .withIconText(QStringLiteral("Right")));
    m_commands.add(CommandTable::command(QStringLiteral("mnuJustify"),
                                         QStringLiteral("&Justify Text"),
                                         [this] { alignText(TextAlign::Justify); }));
}

void frmCustomLayout::addAlignCommands() {
    const auto several = [this] { return m_document.selection().boxes.size() > 1; };
    const QString reference = QStringLiteral("Uses the first box you selected as the reference");
    const auto align = [&](const QString &name, const QString &text, AlignCommand command) {
        m_commands.add(CommandTable::command(name, text, [this, command] { alignBoxes(command); })
                           .enabledWhen(several)
                           .withToolTip(reference));
    };
    align(QStringLiteral("mnuLefts"), QStringLiteral("&Lefts"), AlignCommand::Lefts);
    align(QStringLiteral("mnuRights"), QStringLiteral("&Rights"), AlignCommand::Rights);
    align(QStringLiteral("mnuTops"), QStringLiteral("&Tops"), AlignCommand::Tops);
    align(QStringLiteral("mnuBottoms"), QStringLiteral("&Bottoms"), AlignCommand::Bottoms);
    align(QStringLiteral("mnuWidth"), QStringLiteral("Same &Width"), AlignCommand::Width);
    align(QStringLiteral("mnuHeight"), QStringLiteral("Same &Height"), AlignCommand::Height);
    align(QStringLiteral("mnuBoth"), QStringLiteral("Same &Size"), AlignCommand::Both);
    align(QStringLiteral("mnuSameColor"), QStringLiteral("Same &Colours"), AlignCommand::SameColor);
    m_commands.add(CommandTable::command(QStringLiteral("mnuUndoAlign"),
                                         QStringLiteral("&Undo Last Alignment"),
                                         [this] { undoAlign(); })
                       .enabledWhen([this] { return !m_document.lastAlignment().isEmpty(); })
                       .withToolTip(reference));
}

} // namespace tavrel
