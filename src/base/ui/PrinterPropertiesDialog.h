#pragma once

#include "base/Prompter.h"

#include <QDialog>

class QComboBox;
class QDialogButtonBox;
class QRadioButton;
class QSpinBox;

namespace tavrel {

// Printer Properties: the printer to print on, the number of copies and the page orientation.
// The sheet is not offered: the report is laid out on Letter paper whatever the printer holds,
// and the dialog says so.
class PrinterPropertiesDialog : public QDialog {
    Q_OBJECT

public:
    explicit PrinterPropertiesDialog(const PrinterSetup &initial, QWidget *parent = nullptr);

    PrinterSetup setup() const;

    QComboBox *printerList() const { return m_printer; }
    QSpinBox *copiesBox() const { return m_copies; }
    QRadioButton *orientationButton(OrientationChoice choice) const;
    QDialogButtonBox *buttons() const { return m_buttons; }

private:
    PrinterSetup m_initial;
    QComboBox *m_printer = nullptr;
    QSpinBox *m_copies = nullptr;
    QRadioButton *m_fromTemplates = nullptr;
    QRadioButton *m_portrait = nullptr;
    QRadioButton *m_landscape = nullptr;
    QDialogButtonBox *m_buttons = nullptr;
};

} // namespace tavrel
