#include "designer/frmCustomLayout.h"

#include "base/ui/UserGuide.h"

#include "designer/DesignCanvas.h"
#include "designer/DesignerActions.h"
#include "designer/LivePreviewPane.h"
#include "designer/RulerScrollArea.h"

#include <QDockWidget>

// The designer's command table, second half: the Tool, Preferences, View and Help menus, and
// the menus whose opening brings their check marks up to date.

namespace tavrel {

const QStringList &frmCustomLayout::standardSizes() {
    static const QStringList sizes{QStringLiteral("25%"), QStringLiteral("50%"),
                                   QStringLiteral("75%"), QStringLiteral("100%")};
    return sizes;
}

bool frmCustomLayout::isUserSize(const QString &size) {
    return !size.isEmpty() && !standardSizes().contains(size);
}

void frmCustomLayout::addToolCommands() {
    m_commands.add(CommandTable::command(QStringLiteral("mnuEditLogo"),
                                         QStringLiteral("Choose &Logo Picture..."),
                                         [this] { editLogo(); }));
    // "mnuLogo25" .. "mnuLogo100" and "mnuImg25" .. "mnuImg100".
    for (const QString &size : standardSizes()) {
        const QString number = size.chopped(1);
        m_commands.add(
            CommandTable::command(QStringLiteral("mnuLogo") + number, size, [this, size] {
                setLogoSize(size);
            }).checkedWhen([this, size] { return m_document.layout().other.logoSize == size; }));
    }
    m_commands.add(
        CommandTable::command(QStringLiteral("mnuUserDefine"), QStringLiteral("User Define..."),
                              [this] { askUserSize(true); })
            .checkedWhen([this] { return isUserSize(m_document.layout().other.logoSize); }));
    for (const QString &size : standardSizes()) {
        const QString number = size.chopped(1);
        m_commands.add(
            CommandTable::command(QStringLiteral("mnuImg") + number, size, [this, size] {
                setImageSize(size);
            }).checkedWhen([this, size] { return m_document.layout().other.imageSize == size; }));
    }
    m_commands.add(
        CommandTable::command(QStringLiteral("mnuUserDefinedImg"), QStringLiteral("User Define..."),
                              [this] { askUserSize(false); })
            .checkedWhen([this] { return isUserSize(m_document.layout().other.imageSize); }));

    m_commands.add(CommandTable::command(QStringLiteral("mnuBorderColor"),
                                         QStringLiteral("Line &Colour..."),
                                         [this] { chooseLineColor(); }));
    const auto style = [this](const QString &name, const QString &text, LineStyle lineStyle) {
        m_commands.add(
            CommandTable::command(name, text, [this, lineStyle] {
                setLineStyle(lineStyle);
            }).checkedWhen([this, lineStyle] { return m_lineStyle == qint16(lineStyle); }));
    };
    style(QStringLiteral("mnuSolid"), QStringLiteral("&Solid"), LineStyle::Solid);
    style(QStringLiteral("mnuDash"), QStringLiteral("&Dash"), LineStyle::Dash);
    style(QStringLiteral("mnuDot"), QStringLiteral("D&ot"), LineStyle::Dot);
    style(QStringLiteral("mnuDashDot"), QStringLiteral("Dash-Do&t"), LineStyle::DashDot);
    style(QStringLiteral("mnuDashDotDot"), QStringLiteral("Dash-Dot-Dot"), LineStyle::DashDotDot);
    m_commands.add(CommandTable::command(QStringLiteral("mnuDeleteLine"),
                                         QStringLiteral("Delete Line"), [this] { deleteLine(); }));
    m_commands.add(CommandTable::command(QStringLiteral("mnuClearAllLine"),
                                         QStringLiteral("Clear All Lines"),
                                         [this] { clearAllLines(); }));

    m_commands.add(CommandTable::command(QStringLiteral("mnuDeleteRectangle"),
                                         QStringLiteral("Delete Rectangle"),
                                         [this] { deleteRectangle(); }));
    m_commands.add(CommandTable::command(QStringLiteral("mnuClearAllRectangle"),
                                         QStringLiteral("Clear All Rectangles"),
                                         [this] { clearAllRectangles(); }));
    m_commands.add(CommandTable::command(QStringLiteral("mnuPastRectangle"),
                                         QStringLiteral("Paste Rectangle"),
                                         [this] { pasteRectangle(); }));
    m_commands.add(CommandTable::command(QStringLiteral("mnuCopyRectangle"),
                                         QStringLiteral("Copy Rectangle"),
                                         [this] { copyRectangle(); }));
    m_commands.add(CommandTable::command(QStringLiteral("mnuRectangleColor"),
                                         QStringLiteral("Rectangle Colour..."),
                                         [this] { chooseRectangleColor(); }));
    m_commands.add(CommandTable::command(QStringLiteral("mnuFieldLength"),
                                         QStringLiteral("&Field Lengths..."),
                                         [this] { openFieldLengths(); }));
}

void frmCustomLayout::addWindowCommands() {
    const auto preference = [this](const QString &name, const QString &text, DesignerSwitch which) {
        m_commands.add(CommandTable::command(name, text, [this, which] {
                           togglePreference(which);
                       }).checkedWhen([this, which] { return preferenceOn(which); }));
    };
    preference(QStringLiteral("mnuShowLabel"), QStringLiteral("Show &Labels"),
               DesignerSwitch::ShowLabel);
    preference(QStringLiteral("mnuShowColor"), QStringLiteral("Show &Colours"),
               DesignerSwitch::ShowColor);
    preference(QStringLiteral("mnuSubTotalOptions"), QStringLiteral("Show &Subtotal Options"),
               DesignerSwitch::ShowSubTotalOptions);

    m_commands.add(
        CommandTable::command(QStringLiteral("mnuViewLivePreview"), QStringLiteral("&Live Preview"),
                              [this] { m_previewDock->setVisible(!m_previewDock->isVisible()); },
                              {QKeySequence(Qt::Key_F5)})
            .checkedWhen([this] { return m_previewDock && m_previewDock->isVisible(); }));
    m_commands.add(CommandTable::command(
        QStringLiteral("mnuRefreshPreview"), QStringLiteral("&Refresh Preview"),
        [this] { m_livePreview->refresh(); }, {QKeySequence(Qt::CTRL | Qt::Key_R)}));

    // Zoom as PDF readers do it: Ctrl+0 the whole page, Ctrl+1 actual size, Ctrl+2 the width.
    m_commands.add(CommandTable::command(
                       QStringLiteral("mnuZoomIn"), QStringLiteral("Zoom &In"),
                       [this] { m_scroll->zoomKeepingCentre(m_canvas->zoom() * 1.25); },
                       {QKeySequence(QKeySequence::ZoomIn), QKeySequence(Qt::CTRL | Qt::Key_Equal)})
                       .withIconText(QStringLiteral("+")));
    m_commands.add(
        CommandTable::command(QStringLiteral("mnuZoomOut"), QStringLiteral("Zoom &Out"),
                              [this] { m_scroll->zoomKeepingCentre(m_canvas->zoom() / 1.25); },
                              {QKeySequence(QKeySequence::ZoomOut)})
            .withIconText(QString(QChar(0x2212))));
    m_commands.add(CommandTable::command(
        QStringLiteral("mnuZoom100"), QStringLiteral("&Actual Size"),
        [this] { m_scroll->zoomKeepingCentre(1.0); }, {QKeySequence(Qt::CTRL | Qt::Key_1)}));
    m_commands.add(CommandTable::command(
                       QStringLiteral("mnuZoomFitPage"), QStringLiteral("Zoom to Fit &Page"),
                       [this] { m_scroll->zoomToFitPage(); }, {QKeySequence(Qt::CTRL | Qt::Key_0)})
                       .withIconText(QStringLiteral("Fit Page")));
    m_commands.add(CommandTable::command(
                       QStringLiteral("mnuZoomFitWidth"), QStringLiteral("Zoom to Fit &Width"),
                       [this] { m_scroll->zoomToFitWidth(); }, {QKeySequence(Qt::CTRL | Qt::Key_2)})
                       .withIconText(QStringLiteral("Fit Width")));

    m_commands.add(UserGuide::command([this] { m_designerActions.help(); }));
    m_commands.add(CommandTable::command(QStringLiteral("mnuAbout"), QStringLiteral("&About..."),
                                         [this] { m_designerActions.about(); }));

    // Opening these menus brings their check marks up to date.
    for (const QString &menu :
         {QStringLiteral("mnuFile"), QStringLiteral("mnuTool"), QStringLiteral("mnuPreference"),
          QStringLiteral("mnuView"), QStringLiteral("mnuImgSize"), QStringLiteral("mnuImageSize")})
        m_commands.add(CommandTable::withoutAction(menu, [this] { updateChecks(); }));
}

} // namespace tavrel
