#include "base/ui/PrinterPropertiesDialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include <algorithm>

namespace tavrel {

namespace {

// More copies than anyone prints of a specification; the spooler takes any number.
constexpr int MaxCopies = 999;

} // namespace

PrinterPropertiesDialog::PrinterPropertiesDialog(const PrinterSetup &initial, QWidget *parent)
    : QDialog(parent)
    , m_initial(initial) {
    setObjectName(QStringLiteral("frmPrinterProperties"));
    setWindowTitle(QStringLiteral("Printer Properties"));

    m_printer = new QComboBox(this);
    m_printer->setObjectName(QStringLiteral("cmbPrinter"));
    m_printer->addItems(initial.printers);
    // A stored printer that is not installed (any more) is still shown as chosen.
    if (!initial.printer.isEmpty() && m_printer->findText(initial.printer) < 0)
        m_printer->addItem(initial.printer);
    m_printer->setCurrentIndex(m_printer->findText(initial.printer));
    m_printer->setMinimumContentsLength(24);
    if (m_printer->count() == 0) {
        m_printer->setPlaceholderText(QStringLiteral("No printer is installed"));
        m_printer->setEnabled(false);
    }

    m_copies = new QSpinBox(this);
    m_copies->setObjectName(QStringLiteral("txtCopies"));
    m_copies->setRange(1, MaxCopies);
    m_copies->setValue(std::clamp(initial.copies, 1, MaxCopies));

    auto *orientation = new QGroupBox(QStringLiteral("Orientation"), this);
    m_fromTemplates =
        new QRadioButton(QStringLiteral("As the &templates are designed"), orientation);
    m_fromTemplates->setObjectName(QStringLiteral("optFromTemplates"));
    m_portrait = new QRadioButton(QStringLiteral("&Portrait"), orientation);
    m_portrait->setObjectName(QStringLiteral("optPortrait"));
    m_landscape = new QRadioButton(QStringLiteral("&Landscape"), orientation);
    m_landscape->setObjectName(QStringLiteral("optLandscape"));
    auto *orientationLayout = new QVBoxLayout(orientation);
    orientationLayout->addWidget(m_fromTemplates);
    orientationLayout->addWidget(m_portrait);
    orientationLayout->addWidget(m_landscape);
    orientationButton(initial.orientation)->setChecked(true);

    auto *paper = new QLabel(QStringLiteral("Paper: Letter, 8.5 x 11 in. The report is laid out "
                                            "for Letter paper on every printer; the preview, "
                                            "print and PDF use the orientation chosen here."),
                             this);
    paper->setObjectName(QStringLiteral("lblPaper"));
    paper->setWordWrap(true);

    m_buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto *form = new QFormLayout;
    form->addRow(QStringLiteral("P&rinter:"), m_printer);
    form->addRow(QStringLiteral("&Copies:"), m_copies);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(orientation);
    layout->addWidget(paper);
    layout->addWidget(m_buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

QRadioButton *PrinterPropertiesDialog::orientationButton(OrientationChoice choice) const {
    switch (choice) {
    case OrientationChoice::Portrait:
        return m_portrait;
    case OrientationChoice::Landscape:
        return m_landscape;
    case OrientationChoice::FromTemplates:
        break;
    }
    return m_fromTemplates;
}

PrinterSetup PrinterPropertiesDialog::setup() const {
    PrinterSetup result = m_initial;
    result.printer = m_printer->currentText();
    result.copies = m_copies->value();
    result.orientation = m_portrait->isChecked()    ? OrientationChoice::Portrait
                         : m_landscape->isChecked() ? OrientationChoice::Landscape
                                                    : OrientationChoice::FromTemplates;
    return result;
}

} // namespace tavrel
