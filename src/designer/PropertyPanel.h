#pragma once

#include <QWidget>

class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QFontComboBox;
class QLabel;
class QSpinBox;

namespace tavrel {

class DesignerDocument;
struct BoxInfo;

// The properties of the selected box (the first of a multiple selection): position and size in
// inches, font, colours, text alignment and the label flag. Font, alignment and label apply to
// the whole selection; position and size to the first box. Edits go through the undo stack,
// one step per field while it keeps the focus.
class PropertyPanel : public QWidget {
    Q_OBJECT

public:
    explicit PropertyPanel(DesignerDocument &document, QWidget *parent = nullptr);

    QDoubleSpinBox *leftBox() const { return m_left; }
    QDoubleSpinBox *topBox() const { return m_top; }
    QDoubleSpinBox *widthBox() const { return m_width; }
    QDoubleSpinBox *heightBox() const { return m_height; }
    QDoubleSpinBox *codeWidthBox() const { return m_codeWidth; }
    QSpinBox *fontSizeBox() const { return m_fontSize; }
    QCheckBox *labelBox() const { return m_label; }

signals:
    void commandWanted(const QString &command);

private:
    void refresh();
    void applyCodeWidth();
    void applyGeometry();
    void applyToSelection(const QString &text, const std::function<void(BoxInfo &)> &edit);
    QDoubleSpinBox *inchBox();

    DesignerDocument &m_document;
    bool m_refreshing = false;
    int m_mergeId = 0;
    QLabel *m_caption = nullptr;
    QDoubleSpinBox *m_left = nullptr;
    QDoubleSpinBox *m_top = nullptr;
    QDoubleSpinBox *m_width = nullptr;
    QDoubleSpinBox *m_height = nullptr;
    QDoubleSpinBox *m_codeWidth = nullptr;
    QFontComboBox *m_fontName = nullptr;
    QSpinBox *m_fontSize = nullptr;
    QCheckBox *m_bold = nullptr;
    QCheckBox *m_italic = nullptr;
    QCheckBox *m_underline = nullptr;
    QComboBox *m_align = nullptr;
    QCheckBox *m_label = nullptr;
    QWidget *m_editors = nullptr;
};

} // namespace tavrel
