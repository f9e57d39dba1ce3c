#pragma once

#include "base/ui/CommandTable.h"
#include "designer/DesignerDocument.h"
#include "templates/TemplateKind.h"

#include "shell/JobFile.h"
#include <QHash>

#include <QMainWindow>

#include <functional>

#include <optional>

class QAction;
class QComboBox;
class QDockWidget;
class QFontComboBox;
class QLabel;
class QMenu;
class QToolButton;

namespace tavrel {

class DesignCanvas;
class DesignerActions;
class FieldLengths;
class FieldList;
class LivePreviewPane;
class PropertyPanel;
class RulerScrollArea;
class Prompter;

// What the designer needs from the program around it.
struct DesignerEnvironment {
    JobFile *job = nullptr; // where the drawing choices and preferences are remembered
    QString templateFolder; // where the file dialogs start
    QString documentName;   // the parent's document, shown in the caption
    qint32 marginLeft = 0;  // page margins in twips
    qint32 marginTop = 0;
    qint32 marginRight = 0;
    qint32 marginBottom = 0;
    QString fontName = QStringLiteral("Arial"); // font of new boxes
    qint16 fontSize = 8;
    FieldLengths *fieldLengths = nullptr; // for the field length editor; none: command does nothing
};

// The page designer window: one template of one kind at a time. Its commands are one table
// (frmCustomLayoutCommandTable.cpp, frmCustomLayoutToolCommands.cpp) that builds the menus,
// tool bars and pop-up menus; shortcuts, tools and tests all reach them through dispatch().
class frmCustomLayout : public QMainWindow {
    Q_OBJECT

public:
    frmCustomLayout(DesignerEnvironment environment, Prompter &prompter, DesignerActions &actions,
                    QWidget *parent = nullptr);
    ~frmCustomLayout() override;

    // Opens the designer on a template path; a path that does not exist (such as
    // "Untitled.cst") starts a new template of that path's kind.
    void openOn(const QString &templatePath);

    // Runs the command named like its menu item ("mnuSave", "mnuLefts", ...). Returns false for
    // an unknown name.
    bool dispatch(const QString &command);

    DesignerDocument &document() { return m_document; }
    DesignCanvas *canvas() const { return m_canvas; }
    FieldList *fieldList() const { return m_fields; }
    PropertyPanel *propertyPanel() const { return m_properties; }
    LivePreviewPane *livePreview() const { return m_livePreview; }
    QDockWidget *livePreviewDock() const { return m_previewDock; }
    QAction *action(const QString &command) const { return m_commands.action(command); }
    const CommandTable &commands() const { return m_commands; }
    QMenu *popupMenu(const QString &name) const;
    QToolButton *lineTool() const { return m_lineTool; }
    QToolButton *rectangleTool() const { return m_rectTool; }
    QString statusText() const;
    QString warningText() const;
    QFontComboBox *fontNameBox() const { return m_fontName; }
    QComboBox *fontSizeBox() const { return m_fontSize; }

    quint32 lineColor() const { return m_lineColor; }
    quint32 rectangleColor() const { return m_rectColor; }
    qint16 lineStyle() const { return m_lineStyle; }

protected:
    void closeEvent(QCloseEvent *event) override;
    void showEvent(QShowEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    // Window building (frmCustomLayout.cpp).
    void buildUi();

    // The command table (frmCustomLayoutCommandTable.cpp, frmCustomLayoutToolCommands.cpp).
    void buildCommands();
    void addFileCommands();
    void addEditCommands();
    void addFormatCommands();
    void addAlignCommands();
    void addToolCommands();
    void addWindowCommands();
    static const QStringList &standardSizes();
    static bool isUserSize(const QString &size);

    // Menus and tool bars from the table (frmCustomLayoutMenus.cpp).
    void buildMenus();
    void buildToolBars();
    QMenu *addMenu(QMenu *parent, const QString &title, const QString &command);

    void updateCaption();
    void keepRoomForThePage();
    void updateChecks();
    void updateWarning();
    void showStatus(const QString &text);
    void showContextMenu(const QString &element, QPoint globalPos);
    void loadRememberedChoices();

    // Commands (frmCustomLayoutCommands.cpp).
    enum class FontStyle { Bold, Italic, Underline };
    void setFontFromTool();
    void setFontSizeFromTool();
    void toggleFontStyle(FontStyle style);
    // The font tools of the tool bar follow the selection.
    void updateFormatTools();
    static bool isPictureBox(const BoxInfo &box);
    void selectAllBoxes();
    void alignText(qint32 align); // a TextAlign code
    void toggleDisplayLabel();
    void editSelectedBoxes(const QString &text, const std::function<void(BoxInfo &)> &edit,
                           bool skipPictures = false);
    void chooseFont();
    void chooseColor(bool background);
    void alignBoxes(AlignCommand command);
    void undoAlign();
    void deleteBoxes();
    void editNotes();
    void editLogo();
    void setLogoSize(const QString &size);
    void setImageSize(const QString &size);
    void askUserSize(bool logo);
    void togglePreference(DesignerSwitch which);
    bool preferenceOn(DesignerSwitch which) const;
    // Remembers a drawing choice in the job; a failed write is reported and the choice stays.
    void remember(const std::function<void(JobFile &)> &write);
    void copyBoxes();
    void pasteBoxes(bool duplicate);

    // Lines and rectangles (frmCustomLayoutTools.cpp).
    void toolPressed(bool rectangle, Qt::MouseButton button, QPoint globalPos);
    void addLine();
    void addRectangle();
    void chooseRectangleColor();
    void chooseLineColor();
    void setLineStyle(LineStyle style);
    void deleteRectangle();
    void clearAllRectangles();
    void copyRectangle();
    void pasteRectangle();
    void deleteLine();
    void clearAllLines();

    // Files (frmCustomLayoutFiles.cpp).
    void newTemplate();
    void openTemplate();
    bool saveTemplate();
    bool saveTemplateAs();
    bool writeTo(const QString &path);
    void loadFile(const QString &path);
    void copyHeaderFooter();
    void previewOrPrint(bool print);
    void openFieldLengths();

    DesignerEnvironment m_environment;
    Prompter &m_prompter;
    DesignerActions &m_designerActions;
    DesignerDocument m_document;
    DesignCanvas *m_canvas = nullptr;
    RulerScrollArea *m_scroll = nullptr;
    FieldList *m_fields = nullptr;
    PropertyPanel *m_properties = nullptr;
    LivePreviewPane *m_livePreview = nullptr;
    QDockWidget *m_previewDock = nullptr;
    CommandTable m_commands{this};
    QMenu *m_popRectangle = nullptr;
    QMenu *m_popLine = nullptr;
    QMenu *m_popBox = nullptr;
    QToolButton *m_lineTool = nullptr;
    QToolButton *m_rectTool = nullptr;
    QFontComboBox *m_fontName = nullptr;
    QComboBox *m_fontSize = nullptr;
    QLabel *m_status = nullptr;
    QLabel *m_warning = nullptr;

    quint32 m_lineColor = 0;
    quint32 m_rectColor = 0;
    qint16 m_lineStyle = 0;
    std::optional<PrintRect> m_copiedRect;
    QList<BoxInfo> m_copiedBoxes;
};

} // namespace tavrel
