#include "designer/PropertyPanel.h"

#include "designer/DesignerDocument.h"
#include "templates/TemplateLayout.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFontComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <cmath>

namespace tavrel {

PropertyPanel::PropertyPanel(DesignerDocument &document, QWidget *parent)
    : QWidget(parent)
    , m_document(document) {
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(4, 4, 4, 4);
    m_caption = new QLabel(this);
    m_caption->setWordWrap(true);
    outer->addWidget(m_caption);
    m_editors = new QWidget(this);
    auto *form = new QFormLayout(m_editors);
    form->setContentsMargins(0, 0, 0, 0);
    m_left = inchBox();
    m_top = inchBox();
    m_width = inchBox();
    m_height = inchBox();
    form->addRow(QStringLiteral("Left (in)"), m_left);
    form->addRow(QStringLiteral("Top (in)"), m_top);
    form->addRow(QStringLiteral("Width (in)"), m_width);
    form->addRow(QStringLiteral("Height (in)"), m_height);
    // Option and note pairs print a code and, beside it, its description: the split is one
    // width for the whole template.
    m_codeWidth = inchBox();
    m_codeWidth->setToolTip(
        QStringLiteral("Width of the code; the description takes the rest of the box"));
    form->addRow(QStringLiteral("Code width (in)"), m_codeWidth);
    m_fontName = new QFontComboBox(m_editors);
    m_fontName->setMaximumWidth(160);
    form->addRow(QStringLiteral("Font"), m_fontName);
    m_fontSize = new QSpinBox(m_editors);
    m_fontSize->setRange(4, 72);
    form->addRow(QStringLiteral("Size"), m_fontSize);
    m_bold = new QCheckBox(QStringLiteral("Bold"), m_editors);
    m_italic = new QCheckBox(QStringLiteral("Italic"), m_editors);
    m_underline = new QCheckBox(QStringLiteral("Underline"), m_editors);
    form->addRow(QString(), m_bold);
    form->addRow(QString(), m_italic);
    form->addRow(QString(), m_underline);
    m_align = new QComboBox(m_editors);
    // Index order matches the alignment codes stored in template files.
    m_align->addItems({QStringLiteral("Left"), QStringLiteral("Right"), QStringLiteral("Centre"),
                       QStringLiteral("Justify")});
    form->addRow(QStringLiteral("Text"), m_align);
    auto *fore = new QPushButton(QStringLiteral("Text Colour..."), m_editors);
    auto *back = new QPushButton(QStringLiteral("Background..."), m_editors);
    form->addRow(QString(), fore);
    form->addRow(QString(), back);
    m_label = new QCheckBox(QStringLiteral("Print field label"), m_editors);
    form->addRow(QString(), m_label);
    outer->addWidget(m_editors);
    outer->addStretch(1);

    for (QDoubleSpinBox *box : {m_left, m_top, m_width, m_height}) {
        connect(box, &QDoubleSpinBox::valueChanged, this, &PropertyPanel::applyGeometry);
        connect(box, &QDoubleSpinBox::editingFinished, this, [this] { m_mergeId = 0; });
    }
    connect(m_codeWidth, &QDoubleSpinBox::valueChanged, this, &PropertyPanel::applyCodeWidth);
    connect(m_fontName, &QFontComboBox::currentFontChanged, this, [this](const QFont &font) {
        applyToSelection(QStringLiteral("Font"), [&](BoxInfo &b) { b.fontName = font.family(); });
    });
    connect(m_fontSize, &QSpinBox::valueChanged, this, [this](int size) {
        applyToSelection(QStringLiteral("Font Size"),
                         [&](BoxInfo &b) { b.fontSize = qint16(size); });
    });
    connect(m_bold, &QCheckBox::toggled, this, [this](bool on) {
        applyToSelection(QStringLiteral("Bold"), [&](BoxInfo &b) { b.fontBold = on; });
    });
    connect(m_italic, &QCheckBox::toggled, this, [this](bool on) {
        applyToSelection(QStringLiteral("Italic"), [&](BoxInfo &b) { b.fontItalic = on; });
    });
    connect(m_underline, &QCheckBox::toggled, this, [this](bool on) {
        applyToSelection(QStringLiteral("Underline"), [&](BoxInfo &b) { b.fontUnderLine = on; });
    });
    connect(m_align, &QComboBox::activated, this, [this](int index) {
        applyToSelection(QStringLiteral("Align Text"), [&](BoxInfo &b) { b.textAlign = index; });
    });
    connect(m_label, &QCheckBox::toggled, this, [this](bool on) {
        applyToSelection(QStringLiteral("Print Label"), [&](BoxInfo &b) { b.displayLabel = on; });
    });
    connect(fore, &QPushButton::clicked, this,
            [this] { emit commandWanted(QStringLiteral("mnuForeColor")); });
    connect(back, &QPushButton::clicked, this,
            [this] { emit commandWanted(QStringLiteral("mnuBackColor")); });
    connect(&m_document, &DesignerDocument::selectionChanged, this, &PropertyPanel::refresh);
    connect(&m_document, &DesignerDocument::layoutChanged, this, &PropertyPanel::refresh);
    refresh();
}

QDoubleSpinBox *PropertyPanel::inchBox() {
    auto *box = new QDoubleSpinBox(m_editors);
    box->setRange(0, 11);
    box->setDecimals(4); // a ten-thousandth of an inch: every twip can be typed
    box->setSingleStep(1.0 / 24);
    box->setKeyboardTracking(false);
    return box;
}

void PropertyPanel::refresh() {
    const QList<int> &picked = m_document.selection().boxes;
    m_editors->setEnabled(!picked.isEmpty());
    if (picked.isEmpty()) {
        m_caption->setText(QStringLiteral("Select a box to see its properties."));
        return;
    }
    const BoxInfo &box = m_document.layout().box(picked.first());
    m_refreshing = true;
    m_caption->setText(picked.size() == 1
                           ? QStringLiteral("<b>%1</b>").arg(box.caption.toHtmlEscaped())
                           : QStringLiteral("<b>%1</b> and %2 more (the first is the reference)")
                                 .arg(box.caption.toHtmlEscaped())
                                 .arg(picked.size() - 1));
    m_left->setValue(box.left / 1440.0);
    m_top->setValue(box.top / 1440.0);
    m_width->setValue(box.width / 1440.0);
    m_height->setValue(box.height / 1440.0);
    const std::optional<PairWidthFields> pair = pairWidthFields(box.caption);
    m_codeWidth->setEnabled(pair.has_value());
    m_codeWidth->setValue(pair ? double(m_document.layout().other.*pair->code) / 1440.0 : 0);
    m_fontName->setCurrentFont(QFont(box.fontName));
    m_fontSize->setValue(box.fontSize);
    m_bold->setChecked(box.fontBold);
    m_italic->setChecked(box.fontItalic);
    m_underline->setChecked(box.fontUnderLine);
    m_align->setCurrentIndex(std::clamp<int>(box.textAlign, 0, 3));
    m_label->setChecked(box.displayLabel);
    m_refreshing = false;
}

void PropertyPanel::applyGeometry() {
    const QList<int> &picked = m_document.selection().boxes;
    if (m_refreshing || picked.isEmpty())
        return;
    if (m_mergeId == 0)
        m_mergeId = m_document.newMergeId();
    TemplateLayout layout = m_document.layout();
    BoxInfo &box = layout.box(picked.first());
    const auto twips = [](double inches) { return qint32(std::lround(inches * 1440)); };
    box.left = twips(m_left->value());
    box.top = twips(m_top->value());
    const qint32 width = std::max(120, twips(m_width->value()));
    const qint32 height = std::max(120, twips(m_height->value()));
    if (width != box.width || height != box.height) {
        box.width = width;
        box.height = height;
        box.resized = true;
        box.resizedWidth = width;
        box.resizedHeight = height;
        OtherInfo &other = layout.other;
        if (const std::optional<PairWidthFields> pair = pairWidthFields(box.caption);
            pair && other.*pair->code > 0)
            other.*pair->description =
                float(std::max<qint32>(0, width - qint32(other.*pair->code)));
    }
    LayoutEdits::assignLevels(layout);
    m_document.change(layout, QStringLiteral("Properties"), m_mergeId);
}

void PropertyPanel::applyCodeWidth() {
    const QList<int> &picked = m_document.selection().boxes;
    if (m_refreshing || picked.isEmpty())
        return;
    TemplateLayout layout = m_document.layout();
    const BoxInfo &box = layout.box(picked.first());
    const std::optional<PairWidthFields> pair = pairWidthFields(box.caption);
    if (!pair)
        return;
    const qint32 code = std::min(box.width, qint32(std::lround(m_codeWidth->value() * 1440)));
    layout.other.*pair->code = float(code);
    layout.other.*pair->description = float(box.width - code);
    m_document.change(layout, QStringLiteral("Code Width"), m_document.newMergeId());
}

void PropertyPanel::applyToSelection(const QString &text,
                                     const std::function<void(BoxInfo &)> &edit) {
    if (m_refreshing || m_document.selection().boxes.isEmpty())
        return;
    TemplateLayout layout = m_document.layout();
    for (int slot : m_document.selection().boxes)
        edit(layout.box(slot));
    m_document.change(layout, text);
}

} // namespace tavrel
